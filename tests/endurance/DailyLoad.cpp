#include "DailyLoad.hpp"

namespace ZorvTest {

namespace {

constexpr std::uint64_t day = 86400;
constexpr std::uint64_t morning = std::uint64_t{6} * 3600;
constexpr std::uint64_t evening = std::uint64_t{20} * 3600;
constexpr std::uint64_t pauseByDay = 120;  // s, on average
constexpr std::uint64_t pauseByNight = 400;
constexpr std::uint64_t flapping = std::uint64_t{14} * 3600;
constexpr std::uint64_t flaps = 60;  // s
constexpr std::uint64_t flapTime = 5;
constexpr std::uint64_t firstPort = 100000;  // no name is part of another one
constexpr std::uint64_t ports = 500;
const char* const flappingPort = "ManagedElement=1,Port=flapping";

}  // namespace

std::vector<Occurrence> DailyLoad::at(std::uint64_t second)
{
    std::vector<Occurrence> happening;
    const std::uint64_t time = second % day;
    if (time >= flapping && time < flapping + flaps && time % flapTime == 0) {
        happening.push_back({flappingPort, alarmType, time / flapTime % 2 == 0});
    }
    if (second >= next) {
        const std::uint64_t pause = time >= morning && time < evening ? pauseByDay : pauseByNight;
        next = second + 1 + random() % (2 * pause);
        happening.push_back(anything());
    }
    return happening;
}

Occurrence DailyLoad::anything()
{
    const std::uint64_t kind = random() % 10;
    if (kind == 0) {
        return {"ManagedElement=1", alertType, true};
    }
    if (active.size() < mostActive && (active.empty() || kind < 6)) {
        active.push_back("ManagedElement=1,Port=" + std::to_string(firstPort + raised++ % ports));
        return {active.back(), alarmType, true};
    }
    const std::size_t place = random() % active.size();
    Occurrence cleared = {active[place], alarmType, false};
    active.erase(active.begin() + static_cast<std::ptrdiff_t>(place));
    return cleared;
}

}  // namespace ZorvTest
