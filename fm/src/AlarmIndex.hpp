/// The alarms in the order of the list, with an answer to every question that the component asks often: which alarm has
/// this identity, which are of this type, which may change in a tick, how many are visible of each severity.
///
/// Threads:   none of its own; the active alarm list's mutex guards it.
/// Ownership: the alarms are the list's. The identity of an alarm stays the same while it is in the index.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <unordered_map>

#include "AlarmChain.hpp"
#include "AlarmsByIdentity.hpp"

namespace ZorvFm {

/// Visible alarms by severity, as the FM managed object sums them up.
struct AlarmSummary {
    std::uint32_t total = 0;
    std::uint32_t critical = 0;
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t warning = 0;
};

class AlarmIndex {
public:
    using AlarmsT = AlarmChain<&AlarmListPlace::inList>;
    using AlarmsOfTypeT = AlarmChain<&AlarmListPlace::inType>;

    /// By their position in the list.
    using ChangingT = std::map<std::uint64_t, Alarm*>;

    AlarmIndex() = default;
    AlarmIndex(const AlarmIndex&) = delete;
    AlarmIndex& operator=(const AlarmIndex&) = delete;

    /// Appends the alarm.
    void add(Alarm& alarm);
    void remove(Alarm& alarm);

    /// Takes note of the alarm's present state and severity.
    void update(Alarm& alarm);

    static bool contains(const Alarm& alarm) { return alarm.place.alarm == &alarm; }

    /// The first alarm of the list with this identity; null when there is none.
    Alarm* find(const AlarmData& identity) const;

    /// Appends all alarms with this identity, in the order of the list.
    void findAll(const AlarmData& identity, std::list<Alarm*>& found) const;

    const AlarmsT& getAlarms() const { return alarms; }
    const AlarmsOfTypeT& getAlarmsOfType(std::uint32_t majorType, std::uint32_t minorType) const;
    const ChangingT& getChangingAlarms() const { return changing; }
    const AlarmSummary& getSummary() const { return summary; }

private:
    static std::uint64_t typeKey(std::uint32_t majorType, std::uint32_t minorType);
    void count(Alarm& alarm);
    void uncount(Alarm& alarm);
    std::uint32_t* counterOf(std::int32_t severity);

    AlarmsT alarms;
    ChangingT changing;  // those that a tick may change
    std::unordered_map<std::uint64_t, AlarmsOfTypeT> types;
    AlarmsByIdentity byIdentity;
    AlarmSummary summary;
    std::uint64_t lastPosition = 0;
};

}  // namespace ZorvFm
