/// The filter state machine of one alarm: transient raises and ceases are held back, toggling alarms kept active.
///
/// A raise never activates by itself: activation, and the end of a cease, always happen in a tick.
///
/// Threads:   the worker's; whoever reads an alarm meanwhile holds the active alarm list's mutex.
/// Ownership: an Alarm's; the configuration outlives it.
/// Failure:   unexpected events are logged and ignored.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Timer.hpp"

namespace ZorvFm {

class FmConfig;

/// What a tick has to say. The numbers are fixed.
enum TickResultT {
    ALARM_UNCHANGED = 0,
    ALARM_ACTIVATED = 1,  ///< just became visible northbound
    ALARM_CLEARED = 2,    ///< the cease has taken effect
    ALARM_TO_DELETE = 3   ///< ceased, and nothing to remember any more
};

class AlarmState {
public:
    /// The numbers are stored with each alarm.
    enum StateT {
        NEW = 0,
        RAISE_PENDING = 1,  ///< transient raise filter running
        ACTIVE = 2,
        ACTIVE_TOGGLING = 3,
        CEASE_PENDING_TOGGLING = 4,  ///< silent timeout running
        CEASE_PENDING = 5,           ///< transient cease filter running
        CEASED = 6                   ///< kept while its toggling history lasts
    };

    /// Takes window and trigger count as they are now; the filter times are read at each start of the timer.
    explicit AlarmState(const FmConfig& componentConfig);
    virtual ~AlarmState() = default;
    AlarmState(const AlarmState&) = default;
    AlarmState& operator=(const AlarmState&) = delete;

    void raise();
    void clear();

    /// @param now monotonic time in ns. @return a TickResultT
    int tick(std::uint64_t now);

    bool isToggling() const { return state == ACTIVE_TOGGLING || state == CEASE_PENDING_TOGGLING; }
    bool isVisibleInNbi() const { return state >= ACTIVE && state <= CEASE_PENDING; }

    /// True when a tick may have something to say: a timer runs, or the history of a ceased alarm ages.
    bool canChangeInTick() const;

    int getState() const { return state; }
    void setState(int restored) { state = restored; }

    /// The state number.
    std::string toString() const { return std::to_string(state); }

private:
    int activate(std::uint64_t now);
    void forgetOlderThanWindow(std::uint64_t now);

    std::int32_t state = NEW;
    Timer timer;
    std::uint64_t toggleWindowSize;  // ns
    std::uint32_t toggleTriggerCount;
    std::vector<std::uint64_t> toggleHistory;  // monotonic times of recent activations in ns, oldest first; few
    const FmConfig& config;
};

}  // namespace ZorvFm
