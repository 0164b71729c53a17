/// Times for people, and from people.
///
/// Failure: ValueError.
#pragma once

#include <cstdint>
#include <string>

namespace ZorvCtl {

/// Local time with milliseconds and zone; "-" for 0. @param time ns since 1970-01-01 UTC.
std::string timeText(std::uint64_t time);

/// The reverse, from a time like 2024-05-01T06:00:00Z, with a fraction or a zone if need be.
std::uint64_t parseTime(const std::string& text);

/// Now, ns since 1970-01-01 UTC.
std::uint64_t timeNow();

}  // namespace ZorvCtl
