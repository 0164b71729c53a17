#include "TimeText.hpp"

#include <Poco/DateTimeFormat.h>
#include <Poco/DateTimeFormatter.h>
#include <Poco/DateTimeParser.h>
#include <Poco/LocalDateTime.h>
#include <re2/re2.h>

#include <chrono>

#include "files/InputError.hpp"

namespace ZorvCtl {

using ZorvInput::ValueError;

namespace {

/// The parser alone would take a great deal more for a time.
const char* const timePattern =
    "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}([.][0-9]+)?(Z|[+-][0-9]{2}:[0-9]{2})";

}  // namespace

std::string timeText(std::uint64_t time)
{
    if (time == 0) {
        return "-";
    }
    const Poco::Timestamp timestamp(static_cast<Poco::Timestamp::TimeVal>(time / 1000));
    return Poco::DateTimeFormatter::format(Poco::LocalDateTime(Poco::DateTime(timestamp)), "%Y-%m-%dT%H:%M:%S.%i%z");
}

std::uint64_t parseTime(const std::string& text)
{
    int zone = 0;
    Poco::DateTime time;
    if (!re2::RE2::FullMatch(text, timePattern) ||
        !Poco::DateTimeParser::tryParse(Poco::DateTimeFormat::ISO8601_FRAC_FORMAT, text, time, zone)) {
        throw ValueError("not a time like 2024-05-01T06:00:00Z", text);
    }
    time.makeUTC(zone);
    const auto microseconds = time.timestamp().epochMicroseconds();
    if (microseconds < 0) {
        throw ValueError("before 1970", text);
    }
    return static_cast<std::uint64_t>(microseconds) * 1000;
}

std::uint64_t timeNow()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

}  // namespace ZorvCtl
