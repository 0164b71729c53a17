#include "AlarmState.hpp"

#include <algorithm>

#include "FmConfig.hpp"
#include "Logging.hpp"

namespace ZorvFm {

AlarmState::AlarmState(const FmConfig& componentConfig)
    : toggleWindowSize(componentConfig.alarmToggleWindowSize),
      toggleTriggerCount(componentConfig.alarmToggleTriggerCount),
      config(componentConfig)
{
}

void AlarmState::raise()
{
    switch (state) {
    case NEW:
    case CEASED:
        timer.start(config.transientRaiseAlarmFilterTime);
        state = RAISE_PENDING;
        break;
    case CEASE_PENDING:
        ZORV_TRACE("Alarm raised before transient cease timer expired, alarm remains active :%s", toString().c_str());
        state = ACTIVE;
        break;
    case CEASE_PENDING_TOGGLING:
        ZORV_TRACE("Alarm raised before toggling timer expired, alarm remains active toggling :%s", toString().c_str());
        state = ACTIVE_TOGGLING;
        break;
    case ACTIVE:
        break;
    default:
        ZORV_LOG_AND_TRACE(ZORV_LOG_WARNING, "Unexpected alarm raise in state %d", state);
        break;
    }
}

void AlarmState::clear()
{
    switch (state) {
    case ACTIVE:
        timer.start(config.transientCeaseAlarmFilterTime);
        state = CEASE_PENDING;
        break;
    case ACTIVE_TOGGLING:
        timer.start(config.alarmToggleSilentTimeout);
        state = CEASE_PENDING_TOGGLING;
        break;
    case RAISE_PENDING:
        ZORV_TRACE("Alarm ceased before transient raise timer expired, alarm is dropped, %s", toString().c_str());
        state = CEASED;
        break;
    default:
        ZORV_LOG_AND_TRACE(ZORV_LOG_WARNING, "Unexpected alarm cease in state %d", state);
        break;
    }
}

int AlarmState::tick(std::uint64_t now)
{
    switch (state) {
    case RAISE_PENDING:
        return timer.isTimeOut(now) ? activate(now) : ALARM_UNCHANGED;
    case CEASE_PENDING_TOGGLING:
        if (!timer.isTimeOut(now)) {
            return ALARM_UNCHANGED;
        }
        toggleHistory.clear();
        state = CEASED;
        return ALARM_CLEARED;
    case CEASE_PENDING:
        if (!timer.isTimeOut(now)) {
            return ALARM_UNCHANGED;
        }
        state = CEASED;
        return ALARM_CLEARED;
    case CEASED:
        forgetOlderThanWindow(now);
        return toggleHistory.empty() ? ALARM_TO_DELETE : ALARM_UNCHANGED;
    default:
        return ALARM_UNCHANGED;
    }
}

bool AlarmState::canChangeInTick() const
{
    return state == RAISE_PENDING || state == CEASE_PENDING_TOGGLING || state == CEASE_PENDING || state == CEASED;
}

/// The activation itself counts among those within the window.
int AlarmState::activate(std::uint64_t now)
{
    toggleHistory.push_back(now);
    forgetOlderThanWindow(now);
    state = toggleHistory.size() >= toggleTriggerCount ? ACTIVE_TOGGLING : ACTIVE;
    return ALARM_ACTIVATED;
}

void AlarmState::forgetOlderThanWindow(std::uint64_t now)
{
    const auto kept = std::find_if(toggleHistory.begin(), toggleHistory.end(),
                                   [&](std::uint64_t activation) { return now < activation + toggleWindowSize; });
    toggleHistory.erase(toggleHistory.begin(), kept);
}

}  // namespace ZorvFm
