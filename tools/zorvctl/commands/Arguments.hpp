/// Texts of the command line as values.
///
/// Failure: ValueError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZorvCtl {

struct AlarmType {
    std::uint32_t major = 0;
    std::optional<std::uint32_t> minor;
};

/// MAJOR or MAJOR/MINOR.
AlarmType parseType(const std::string& text);

/// MAJOR/MINOR.
AlarmType parseFullType(const std::string& text);

/// A name in any case, or a number.
std::int32_t parseSeverity(const std::string& text);

/// Names, separated by commas; the same in capitals.
std::string parseSeverityNames(const std::string& text);

/// NAME=VALUE.
std::pair<std::string, std::string> parsePair(const std::string& text);

/// Nanoseconds since 1970-01-01 UTC, or a time like 2024-05-01T06:00:00Z.
std::uint64_t parseEventTime(const std::string& text);

/// The id of an alarm, a number.
std::string parseAlarmId(const std::string& text);

/// A name on the node: neither empty nor with a "/".
std::string parseName(const std::string& text);

/// STATEFUL.STATELESS.
std::string parsePlace(const std::string& text);

}  // namespace ZorvCtl
