/// Texts made like printf makes them, of any length.
#pragma once

#include <cstdarg>
#include <string>

namespace Zorv {

/// The text that format and arguments give; the format itself when they do not go together.
std::string formatText(const char* format, va_list arguments) __attribute__((format(printf, 1, 0)));

}  // namespace Zorv
