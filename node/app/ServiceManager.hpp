/// What systemd is told when it runs the node: ready, reloading, stopping, still alive. Without it nothing happens.
///
/// Threads: one.
/// Source:  sd_notify(3), sd_watchdog_enabled(3).
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace ZorvNode {

class ServiceManager {
public:
    ServiceManager();

    void ready(const std::string& status) const;
    void reloading() const;
    void stopping() const;
    void alive() const;

    /// How often it is to be told that the node is alive; none: not at all.
    const std::optional<std::chrono::microseconds>& getWatchdogPeriod() const { return period; }

private:
    std::optional<std::chrono::microseconds> period;
};

}  // namespace ZorvNode
