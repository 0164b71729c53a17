#include "scenario/ScenarioPlayer.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Failure.hpp"
#include "JsonAccess.hpp"
#include "Publishing.hpp"
#include "notification/NotificationWriter.hpp"

namespace ZorvCtl {

namespace {

constexpr double finalQuietSeconds = 1.5;
constexpr long longestSettling = 120;  // seconds, beyond the quiet time itself
constexpr long longestTimeout = 600;   // seconds, the most that a node takes
constexpr std::chrono::seconds answerTime(10);
constexpr std::ptrdiff_t largestBatch = 100;

Interruption::ClockT::duration seconds(double number)
{
    return std::chrono::duration_cast<Interruption::ClockT::duration>(std::chrono::duration<double>(number));
}

const PublishAction* publishOf(const ScenarioAction& action)
{
    return std::get_if<PublishAction>(&action.what);
}

/// Consumers of different event types run side by side: only those of one type keep the order within a request.
bool belongTogether(const ScenarioAction& first, const ScenarioAction& other)
{
    const PublishAction* const left = publishOf(first);
    const PublishAction* const right = publishOf(other);
    return left != nullptr && right != nullptr && first.at == other.at &&
           left->notification.framework == right->notification.framework &&
           left->notification.version == right->notification.version;
}

/// Puts file and line before what a node says.
template <class OperationT>
void inLine(const std::string& file, unsigned long line, OperationT operation)
{
    try {
        operation();
    } catch (const NoNode&) {
        throw;
    } catch (const Interrupted&) {
        throw;
    } catch (const Failure& e) {
        throw Failure(e.getExitCode(), file + ":" + std::to_string(line) + ": " + e.what());
    }
}

}  // namespace

ScenarioPlayer::ScenarioPlayer(NodeConnection& nodeConnection, std::function<void(std::size_t)> onProgress)
    : connection(nodeConnection),
      tellProgress(std::move(onProgress))
{
}

PlaySummary ScenarioPlayer::play(const Scenario& scenario, double speed)
{
    summary = {};
    try {
        playAll(scenario, speed);
    } catch (const Interrupted&) {
        summary.interrupted = true;
    }
    return summary;
}

void ScenarioPlayer::playAll(const Scenario& scenario, double speed)
{
    origin = ClockT::now();
    for (PositionT action = scenario.actions.begin(); action != scenario.actions.end();) {
        connection.getInterruption().waitUntil(origin + seconds(action->at / speed));
        const PositionT next = perform(scenario, action);
        summary.actions += static_cast<std::size_t>(next - action);
        tellProgress(summary.actions);
        action = next;
    }
    settle(finalQuietSeconds);
}

ScenarioPlayer::PositionT ScenarioPlayer::perform(const Scenario& scenario, PositionT action)
{
    if (publishOf(*action) == nullptr) {
        inLine(scenario.file, action->line, [&] {
            std::visit(
                [this](const auto& what) {
                    if constexpr (!std::is_same_v<std::decay_t<decltype(what)>, PublishAction>) {
                        perform(what);
                    }
                },
                action->what);
        });
        return action + 1;
    }
    const PositionT limit = action + std::min(largestBatch, scenario.actions.end() - action);
    const PositionT end =
        std::find_if(action, limit, [&](const ScenarioAction& other) { return !belongTogether(*action, other); });
    publishAll(scenario.file, action, end);
    return end;
}

void ScenarioPlayer::publishAll(const std::string& file, PositionT begin, PositionT end)
{
    std::string json;
    for (PositionT action = begin; action != end; ++action) {
        const PublishAction& what = *publishOf(*action);
        json += (action == begin ? "" : ",") + ZorvInput::notificationJson(what.kind, what.notification);
    }
    std::optional<Rejection> rejection;
    inLine(file, begin->line, [&] { rejection = publish(connection, "[" + json + "]", "delivered"); });
    if (rejection) {
        const auto item = std::min(rejection->item, static_cast<std::size_t>(end - begin - 1));
        const PositionT rejected = begin + static_cast<std::ptrdiff_t>(item);
        throw Failure(refused, file + ":" + std::to_string(rejected->line) + ": " + rejection->reason);
    }
    for (PositionT action = begin; action != end; ++action) {
        const std::string& kind = publishOf(*action)->kind;
        ++(kind == "raise" ? summary.raises : kind == "clear" ? summary.clears : summary.alerts);
    }
}

void ScenarioPlayer::perform(const SuppressAction& action)
{
    connection.put(Target("/v1/suppression"), action.on ? R"({"on":true})" : R"({"on":false})");
}

void ScenarioPlayer::perform(const ChangeAction& action)
{
    connection.post(Target("/v1/objects"), R"({"changes":[)" + action.json + "]}");
}

void ScenarioPlayer::perform(const SettleAction& action)
{
    const ClockT::time_point begun = ClockT::now();
    settle(action.quietSeconds);
    origin += ClockT::now() - begun;
}

void ScenarioPlayer::settle(double quietSeconds)
{
    const long patience = std::min(longestTimeout, longestSettling + std::lround(quietSeconds));
    ZorvInput::JsonDocumentT body(rapidjson::kObjectType);
    body.AddMember("quietSeconds", quietSeconds, body.GetAllocator());
    body.AddMember("timeoutSeconds", static_cast<std::int64_t>(patience), body.GetAllocator());
    const auto answer =
        connection.post(Target("/v1/settle"), ZorvInput::jsonText(body), std::chrono::seconds(patience) + answerTime);
    if (textOr(answer, "quiet", "true") == "false") {
        throw Failure(refused, "the node does not become quiet");
    }
}

}  // namespace ZorvCtl
