#include "RacingPublisher.hpp"

#include <thread>

namespace ZorvTest {

namespace {

constexpr std::uint64_t largestBatch = 10;
constexpr std::uint64_t ports = 50;
constexpr std::uint64_t firstPort = 100;  // no name is part of another one
constexpr std::chrono::milliseconds pause(5);

}  // namespace

void RacingPublisher::publish(std::mt19937_64& random)
{
    std::map<std::string, bool> then = active;
    std::vector<ZorvInput::FmNotification> batch;
    for (std::uint64_t left = 1 + random() % largestBatch; left > 0; --left) {
        batch.push_back(change(random, then));
    }
    try {
        node.source.publish(std::move(batch));
        active = std::move(then);
    } catch (const ZorvNode::SourceBusy&) {
        std::this_thread::sleep_for(pause);
    }
}

/// A clear is of something active: of anything else it is a pattern.
ZorvInput::FmNotification RacingPublisher::change(std::mt19937_64& random, std::map<std::string, bool>& then)
{
    ZorvInput::FmNotification notification;
    notification.version = 2;
    notification.dn =
        "ManagedElement=1,Slot=" + std::to_string(number) + ",Port=" + std::to_string(firstPort + random() % ports);
    notification.majorType = 32473;
    notification.minorType = 101;
    notification.eventTime = ++time * 10 + static_cast<std::uint64_t>(number);
    notification.text = "time " + std::to_string(time);
    bool& isActive = then[notification.dn];
    isActive = !isActive || random() % 2 == 0;
    notification.severity = isActive ? 4 : 0;
    return notification;
}

void RacingPublisher::addActiveTo(std::set<std::string>& dns) const
{
    for (const auto& [dn, isActive] : active) {
        if (isActive) {
            dns.insert(dn);
        }
    }
}

}  // namespace ZorvTest
