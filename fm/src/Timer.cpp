#include "Timer.hpp"

#include <ctime>

namespace ZorvFm {
namespace {

constexpr std::uint64_t nanosPerSecond = 1000000000;

}  // namespace

std::uint64_t Timer::getTimeNowNano()
{
    timespec now{};
    if (clock_gettime(CLOCK_MONOTONIC, &now) != 0) {
        return static_cast<std::uint64_t>(time(nullptr)) * nanosPerSecond;
    }
    return static_cast<std::uint64_t>(now.tv_sec) * nanosPerSecond + static_cast<std::uint64_t>(now.tv_nsec);
}

void Timer::start(std::uint64_t newTimeout)
{
    startTime = getTimeNowNano();
    timeout = newTimeout;
}

bool Timer::isTimeOut(std::uint64_t now) const
{
    return timeout == 0 || now >= startTime + timeout;
}

}  // namespace ZorvFm
