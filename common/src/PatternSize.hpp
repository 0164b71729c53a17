/// How large a regular expression becomes when its counted repetitions are written out, which is what compiling does with
/// them and what it costs. Found out by looking it over once.
///
/// Threads:   any; no state.
/// Failure:   none; what is no expression at all has some size too.
#pragma once

#include <cstddef>
#include <string>

namespace Zorv {

/// In characters and at most this; `(ab){1,3}` is as large as `ababab` and its parentheses.
constexpr std::size_t largestPatternSize = 1000000;
std::size_t patternSize(const std::string& pattern);

}  // namespace Zorv
