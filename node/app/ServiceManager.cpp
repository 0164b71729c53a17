#include "app/ServiceManager.hpp"

#include <systemd/sd-daemon.h>

#include <cinttypes>
#include <ctime>

namespace ZorvNode {

namespace {

constexpr std::uint64_t perSecond = 1000000;
constexpr std::uint64_t nanosecondsEach = 1000;

std::uint64_t monotonicMicroseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * perSecond +
           static_cast<std::uint64_t>(now.tv_nsec) / nanosecondsEach;
}

}  // namespace

ServiceManager::ServiceManager()
{
    std::uint64_t limit = 0;
    if (sd_watchdog_enabled(0, &limit) > 0) {
        period = std::chrono::microseconds(limit / 3);
    }
}

void ServiceManager::ready(const std::string& status) const
{
    sd_notifyf(0, "READY=1\nSTATUS=%s", status.c_str());
}

void ServiceManager::reloading() const
{
    sd_notifyf(0, "RELOADING=1\nMONOTONIC_USEC=%" PRIu64, monotonicMicroseconds());
}

void ServiceManager::stopping() const
{
    sd_notify(0, "STOPPING=1\nSTATUS=stopping the components");
}

void ServiceManager::alive() const
{
    sd_notify(0, "WATCHDOG=1");
}

}  // namespace ZorvNode
