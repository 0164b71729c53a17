/// The process's time zone in the hands of a test.
///
/// Threads: while no other thread formats times.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace ZorvFm {

/// Sets the zone, and puts back what was there.
class TimeZone {
public:
    /// @param zone as in the environment variable TZ: "UTC0", "CET-1CEST,M3.5.0,M10.5.0/3".
    explicit TimeZone(const char* zone)
    {
        if (const char* present = std::getenv("TZ")) {
            before = present;
        }
        setenv("TZ", zone, 1);
        tzset();
    }

    ~TimeZone()
    {
        if (before) {
            setenv("TZ", before->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::optional<std::string> before;
};

}  // namespace ZorvFm
