/// Unsigned numbers from configuration texts, strictly: nothing before the number, nothing after it.
///
/// Threads:   any; no state.
/// Failure:   one exception for each kind of wrong text; the target is then unchanged.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace Zorv {

/// The number is larger than the target can hold.
class ValueRangeException : public std::exception {
public:
    const char* what() const noexcept override { return "Value range exception"; }
};

/// Empty, beginning with white space, not a number, or with characters behind the number.
class InvalidStringException : public std::exception {
public:
    const char* what() const noexcept override { return "Invalid string exception"; }
};

/// The number is negative.
class UnsignedIntExpectedException : public std::exception {
public:
    const char* what() const noexcept override { return "UnsignedInt Expected Exception"; }
};

/// Reads an unsigned base-10 number of type std::uint32_t or std::uint64_t. Always true; throws otherwise.
template <class NumberT>
bool toInt(const std::string& text, NumberT& out);

extern template bool toInt<std::uint32_t>(const std::string& text, std::uint32_t& out);
extern template bool toInt<std::uint64_t>(const std::string& text, std::uint64_t& out);

}  // namespace Zorv
