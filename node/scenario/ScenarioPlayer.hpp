/// Plays a scenario into a node: each action at its time, divided by the speed; settling stops the scenario's clock.
///
/// A notification is delivered to its consumers before the next action, so that the file's order is the order of arrival.
///
/// Threads:   play on one thread, interrupt from any.
/// Failure:   PlayError, one line, at the first action that is refused.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stdexcept>

#include "ingress/FmNotificationSource.hpp"
#include "scenario/Scenario.hpp"
#include "services/managedobjects/ManagementClient.hpp"

namespace ZorvNode {

class PlayError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct PlaySummary {
    unsigned long actions = 0;
    unsigned long raises = 0;
    unsigned long clears = 0;
    unsigned long alerts = 0;
    bool interrupted = false;
};

class ScenarioPlayer {
public:
    /// @param activity grows with everything that the node does for its components.
    ScenarioPlayer(EventRouter& eventRouter, FmNotificationSource& notificationSource,
                   ManagementClient& managementClient, const MoStore& moStore, std::function<std::uint64_t()> activity);

    PlaySummary play(const Scenario& scenario, double speed);

    /// Ends play at the next opportunity.
    void interrupt();

    /// Waits until nothing has happened for so long. False when it was interrupted; throws when it never becomes quiet.
    bool settle(double quietSeconds);

private:
    using ClockT = std::chrono::steady_clock;

    void perform(const ScenarioAction& action);
    void perform(const PublishAction& action);
    void perform(const SuppressAction& action);
    void perform(const SetAction& action);
    void perform(const CreateAction& action);
    void perform(const DeleteAction& action);
    void perform(const SettleAction& action);

    std::vector<MoNamedValue> valuesOf(const std::string& dn, const JsonAttributesT& attributes) const;
    void awaitDelivery();
    bool waitUntil(ClockT::time_point time);

    EventRouter& router;
    FmNotificationSource& source;
    ManagementClient& management;
    const MoStore& store;
    const std::function<std::uint64_t()> getActivity;

    PlaySummary summary;
    ClockT::time_point origin;  // where the scenario's second 0 lies; settling moves it

    std::mutex mutex;
    std::condition_variable interruption;
    bool interrupted = false;  // guarded by mutex
};

}  // namespace ZorvNode
