/// Local times in central Europe, reckoned without the C library's time zones.
#pragma once

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <iterator>
#include <string>

namespace ZorvTest {

/// When summer time begins and ends, 2026 to 2029, in seconds of universal time.
inline constexpr std::uint64_t summers[][2] = {
    {1774746000, 1792890000}, {1806195600, 1824944400}, {1837645200, 1856394000}, {1869094800, 1887843600}};

/// As a node there writes a time that is given in nanoseconds since 1970.
inline std::string localText(std::uint64_t time)
{
    const std::uint64_t second = time / 1000000000;
    const bool isSummer = std::any_of(std::begin(summers), std::end(summers),
                                      [&](const auto& summer) { return second >= summer[0] && second < summer[1]; });
    const auto local = static_cast<std::time_t>(second + (isSummer ? 7200 : 3600));
    std::tm fields{};
    gmtime_r(&local, &fields);
    char text[40];
    const std::size_t length = std::strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S", &fields);
    const auto milliseconds = std::to_string(1000 + time / 1000000 % 1000).substr(1);
    return std::string(text, length) + "." + milliseconds + (isSummer ? "+02:00" : "+01:00");
}

}  // namespace ZorvTest
