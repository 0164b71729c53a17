/// Plays a scenario into a node: each action at its time, divided by the speed; settling stops the scenario's clock.
///
/// A notification is delivered to its consumers before the next one is published, so that the file's order is the order
/// of arrival. Those of the same moment and event type share a request: their consumer takes them one by one all the same.
///
/// Threads:   one; an interruption from any ends the play.
/// Failure:   Failure with file and line at the first action that is refused; NoNode.
#pragma once

#include <chrono>
#include <functional>

#include "NodeConnection.hpp"
#include "scenario/Scenario.hpp"

namespace ZorvCtl {

struct PlaySummary {
    std::size_t actions = 0;
    unsigned long raises = 0;
    unsigned long clears = 0;
    unsigned long alerts = 0;
    bool interrupted = false;
};

class ScenarioPlayer {
public:
    /// @param onProgress called with the number of actions done, after each request.
    ScenarioPlayer(NodeConnection& nodeConnection, std::function<void(std::size_t)> onProgress);

    PlaySummary play(const Scenario& scenario, double speed);

private:
    using ClockT = Interruption::ClockT;
    using ActionsT = std::vector<ScenarioAction>;
    using PositionT = ActionsT::const_iterator;

    void playAll(const Scenario& scenario, double speed);

    /// Performs the action, or the batch that begins with it, and answers where the next one stands.
    PositionT perform(const Scenario& scenario, PositionT action);
    void perform(const SuppressAction& action);
    void perform(const ChangeAction& action);
    void perform(const SettleAction& action);
    void publishAll(const std::string& file, PositionT begin, PositionT end);
    void settle(double quietSeconds);

    NodeConnection& connection;
    const std::function<void(std::size_t)> tellProgress;

    PlaySummary summary;
    ClockT::time_point origin;  // where the scenario's second 0 lies; settling moves it
};

}  // namespace ZorvCtl
