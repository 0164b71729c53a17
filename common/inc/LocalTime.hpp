/// Times for people: local, with milliseconds and zone, "2026-03-29T03:00:00.000+02:00".
///
/// What Poco::DateTimeFormatter makes of a Poco::LocalDateTime with the pattern "%Y-%m-%dT%H:%M:%S.%i%z", to the letter;
/// but the system's zone is looked at once a second at most, and a second that was just written is not worked out again.
///
/// Threads: any.
#pragma once

#include <cstdint>
#include <string>

namespace Zorv {

/// @param nanos since 1970-01-01 UTC; what is less than a millisecond is cut off.
void appendLocalTime(std::string& text, std::uint64_t nanos);

inline std::string localTimeText(std::uint64_t nanos)
{
    std::string text;
    appendLocalTime(text, nanos);
    return text;
}

/// Now.
std::string localTimeText();

}  // namespace Zorv
