#include "scenario/ScenarioPlayer.hpp"

#include <algorithm>
#include <utility>

#include "files/InputError.hpp"
#include "model/Dn.hpp"
#include "scenario/JsonValue.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

constexpr double finalQuietSeconds = 1.5;
constexpr std::chrono::seconds longestDelivery(60);
constexpr std::chrono::seconds longestSettling(120);  // beyond the quiet time itself

std::chrono::steady_clock::duration seconds(double number)
{
    return std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(number));
}

}  // namespace

ScenarioPlayer::ScenarioPlayer(EventRouter& eventRouter, FmNotificationSource& notificationSource,
                               ManagementClient& managementClient, const MoStore& moStore,
                               std::function<std::uint64_t()> activity)
    : router(eventRouter),
      source(notificationSource),
      management(managementClient),
      store(moStore),
      getActivity(std::move(activity))
{
}

PlaySummary ScenarioPlayer::play(const Scenario& scenario, double speed)
{
    summary = {};
    origin = ClockT::now();
    for (const ScenarioAction& action : scenario.actions) {
        if (!waitUntil(origin + seconds(action.at / speed))) {
            summary.interrupted = true;
            return summary;
        }
        try {
            perform(action);
        } catch (const std::runtime_error& e) {
            throw PlayError(scenario.file + ":" + std::to_string(action.line) + ": " + e.what());
        }
        ++summary.actions;
    }
    summary.interrupted = !settle(finalQuietSeconds);
    return summary;
}

void ScenarioPlayer::perform(const ScenarioAction& action)
{
    std::visit([this](const auto& what) { perform(what); }, action.what);
}

void ScenarioPlayer::perform(const PublishAction& action)
{
    summary.raises += action.kind == NotificationKind::raise ? 1 : 0;
    summary.clears += action.kind == NotificationKind::clear ? 1 : 0;
    summary.alerts += action.kind == NotificationKind::alert ? 1 : 0;
    source.publish(action.notification);
    awaitDelivery();
}

void ScenarioPlayer::perform(const SuppressAction& action)
{
    source.suppress(action.on);
    awaitDelivery();
}

void ScenarioPlayer::perform(const SetAction& action)
{
    management.set(action.dn, valuesOf(action.dn, action.attributes));
    awaitDelivery();
}

void ScenarioPlayer::perform(const CreateAction& action)
{
    management.create(action.dn, valuesOf(action.dn, action.attributes));
    awaitDelivery();
}

void ScenarioPlayer::perform(const DeleteAction& action)
{
    management.remove(action.dn);
    awaitDelivery();
}

void ScenarioPlayer::perform(const SettleAction& action)
{
    const ClockT::time_point begun = ClockT::now();
    settle(action.quietSeconds);
    origin += ClockT::now() - begun;
}

std::vector<MoNamedValue> ScenarioPlayer::valuesOf(const std::string& dn, const JsonAttributesT& attributes) const
{
    const std::shared_ptr<const Model> model = store.snapshot().model;
    const ClassDescription* description = model->findClass(classOf(dn));
    if (description == nullptr) {
        throw ValueError("unknown class", classOf(dn));
    }
    std::vector<MoNamedValue> values;
    for (const auto& [name, json] : attributes) {
        const AttributeDescription* attribute = description->findAttribute(name);
        if (attribute == nullptr) {
            throw ValueError("class " + description->name + " has no attribute", name);
        }
        values.push_back({name, fromJson(*attribute, json)});
    }
    return values;
}

void ScenarioPlayer::awaitDelivery()
{
    if (!router.waitUntilIdle(longestDelivery)) {
        throw PlayError("not delivered within " + std::to_string(longestDelivery.count()) + " s");
    }
}

bool ScenarioPlayer::settle(double quietSeconds)
{
    const auto quiet = seconds(quietSeconds);
    const auto latest = ClockT::now() + longestSettling + quiet;
    ClockT::time_point quietSince = ClockT::now();
    std::uint64_t seen = getActivity();
    while (ClockT::now() - quietSince < quiet) {
        if (!waitUntil(std::min(quietSince + quiet, ClockT::now() + std::chrono::milliseconds(20)))) {
            return false;
        }
        const std::uint64_t now = getActivity();
        const bool idle = router.waitUntilIdle(std::chrono::milliseconds(0));
        if (!idle || now != seen) {
            seen = now;
            quietSince = ClockT::now();
        }
        if (ClockT::now() > latest) {
            throw PlayError("the node does not become quiet");
        }
    }
    return true;
}

bool ScenarioPlayer::waitUntil(ClockT::time_point time)
{
    std::unique_lock<std::mutex> lock(mutex);
    return !interruption.wait_until(lock, time, [this] { return interrupted; });
}

void ScenarioPlayer::interrupt()
{
    const std::lock_guard<std::mutex> lock(mutex);
    interrupted = true;
    interruption.notify_all();
}

}  // namespace ZorvNode
