/// What the applications of a node report in the course of its life: an alarm every few minutes, more by day than by
/// night, each of them cleared some time, alerts in between, and a port that flaps for a minute each afternoon.
///
/// Threads: one.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace ZorvTest {

struct Occurrence {
    std::string dn;
    std::uint32_t minorType;
    bool isRaise;
};

class DailyLoad {
public:
    static constexpr std::uint32_t alarmType = 1;
    static constexpr std::uint32_t alertType = 2;
    static constexpr std::size_t mostActive = 60;

    DailyLoad(std::uint64_t begin, std::uint64_t seed) : random(seed), next(begin) {}

    /// What happens at this second of universal time; it is asked second by second.
    std::vector<Occurrence> at(std::uint64_t second);

    /// DNs of the alarms that are active, but for the flapping port.
    const std::vector<std::string>& getActive() const { return active; }

private:
    Occurrence anything();

    std::mt19937_64 random;
    std::uint64_t next;
    std::uint64_t raised = 0;
    std::vector<std::string> active;
};

}  // namespace ZorvTest
