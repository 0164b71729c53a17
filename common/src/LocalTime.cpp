#include "LocalTime.hpp"

#include <Poco/Timezone.h>

#include <array>
#include <ctime>

namespace Zorv {
namespace {

constexpr std::uint64_t nanosPerSecond = 1000000000;
constexpr std::uint64_t nanosPerMillisecond = 1000000;
constexpr std::int64_t secondsPerDay = 86400;
constexpr long secondsPerHour = 3600;
constexpr long secondsPerMinute = 60;

/// Writes a number with leading zeros. @return behind it
char* digits(char* place, std::int64_t number, int count)
{
    for (int i = count; i > 0; --i, number /= 10) {
        place[i - 1] = static_cast<char>('0' + number % 10);
    }
    return place + count;
}

char* character(char* place, char value)
{
    *place = value;
    return place + 1;
}

/// The day of the proleptic Gregorian calendar; years are counted from March, so that the leap day is the last.
/// @param days since 1970-01-01.
char* date(char* place, std::int64_t days)
{
    constexpr std::int64_t daysOf400Years = 146097;
    const std::int64_t day = days + 719468;  // since 0000-03-01
    const std::int64_t era = day / daysOf400Years;
    const std::int64_t dayOfEra = day % daysOf400Years;
    const std::int64_t year = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * year + year / 4 - year / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;  // 0: March
    place = digits(place, era * 400 + year + (month >= 10 ? 1 : 0), 4);
    place = digits(character(place, '-'), month < 10 ? month + 3 : month - 9, 2);
    return digits(character(place, '-'), dayOfYear - (153 * month + 2) / 5 + 1, 2);
}

/// One thread's memory: the zone, and the seconds that were written last. No destructor: the library may be unloaded.
class Writer {
public:
    void append(std::string& text, std::uint64_t nanos)
    {
        if (zoneMayHaveChanged()) {
            written = {};
        }
        const auto second = static_cast<std::time_t>(nanos / nanosPerSecond);
        Written& place = written[nanos / nanosPerSecond % written.size()];
        if (second != place.second) {
            write(second, place);
        }
        digits(place.text.data() + millisecondPlace,
               static_cast<std::int64_t>(nanos % nanosPerSecond / nanosPerMillisecond), 3);
        text.append(place.text.data(), place.text.size());
    }

private:
    static constexpr std::size_t millisecondPlace = 20;

    struct Written {
        std::time_t second = -1;
        std::array<char, sizeof("2026-03-29T03:00:00.000+02:00") - 1> text{};
    };

    /// What POSIX tzset leaves behind of a zone.
    struct Zone {
        long offset = 0;
        const char* names[2] = {nullptr, nullptr};

        bool operator==(const Zone& other) const
        {
            return offset == other.offset && names[0] == other.names[0] && names[1] == other.names[1];
        }
    };

    static Zone presentZone() { return {timezone, {tzname[0], tzname[1]}}; }

    /// True once a second, and when somebody has set another zone.
    bool zoneMayHaveChanged()
    {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
        if (now.tv_sec == lookedAt && presentZone() == zone) {
            return false;
        }
        Poco::Timezone::utcOffset();  // looks at it under the lock that everybody in the process shares
        lookedAt = now.tv_sec;
        return true;
    }

    void write(std::time_t second, Written& target)
    {
        tm broken{};
        localtime_r(&second, &broken);
        const long offset = -timezone + (broken.tm_isdst == 1 ? secondsPerHour : 0);
        const std::int64_t local = static_cast<std::int64_t>(second) + offset;
        const std::int64_t days = (local >= 0 ? local : local - secondsPerDay + 1) / secondsPerDay;
        const std::int64_t time = local - days * secondsPerDay;
        char* place = character(date(target.text.data(), days), 'T');
        place = character(digits(place, time / secondsPerHour, 2), ':');
        place = character(digits(place, time / secondsPerMinute % secondsPerMinute, 2), ':');
        place = character(digits(place, time % secondsPerMinute, 2), '.');
        place = character(place + 3, offset >= 0 ? '+' : '-');
        const long distance = offset >= 0 ? offset : -offset;
        place = character(digits(place, distance / secondsPerHour, 2), ':');
        digits(place, distance % secondsPerHour / secondsPerMinute, 2);
        target.second = second;
        zone = presentZone();  // that of this second
    }

    std::time_t lookedAt = -1;
    Zone zone;
    std::array<Written, 4> written{};  // a report has several times, and the next one some of them again
};

}  // namespace

void appendLocalTime(std::string& text, std::uint64_t nanos)
{
    thread_local Writer writer;
    writer.append(text, nanos);
}

std::string localTimeText()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return localTimeText(static_cast<std::uint64_t>(now.tv_sec) * nanosPerSecond +
                         static_cast<std::uint64_t>(now.tv_nsec));
}

}  // namespace Zorv
