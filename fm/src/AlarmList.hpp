/// The active alarms, in memory and mirrored in a replicated list, so that they survive restarts and fail-overs.
///
/// Threads:   any; every public operation holds the recursive mutex. Whoever changes an alarm holds it too (Lock), and
///            never while calling the event router or waiting.
/// Ownership: owns its alarms; a returned pointer dies with deleteAlarm, initialize or the list.
/// Failure:   failures of the replicated list are logged and survived, never thrown: memory is right, and what could not
///            be pushed is pushed again at the next save.
#pragma once

#include <Poco/Mutex.h>

#include <list>
#include <memory>
#include <vector>

#include "AlarmIndex.hpp"
#include "NbiAlarmList.hpp"
#include "ReplicatedList.hpp"
#include "ShownAlarms.hpp"

namespace ZorvFm {

class FmConfig;

class AlarmList : public NbiAlarmList {
public:
    explicit AlarmList(const FmConfig& componentConfig);
    ~AlarmList() override;

    /// Holds the list's mutex while the alarm is changed.
    class Lock {
    public:
        Lock(AlarmList& list, Alarm& alarm) : scoped(list.mutex) { list.shown.noteChange(alarm); }

    private:
        const Poco::Mutex::ScopedLock scoped;
    };

    /// Forgets all alarms, brings up the replicated list, migrates the earlier one and recovers what is stored.
    void initialize();

    /// A new alarm with an id of its own, in memory; the caller saves it.
    Alarm* createAlarm(const AlarmData& data);

    /// Gives the alarm the next id, or makes sure that its id is never given again. Ids are never reused.
    void assignAlarmId(Alarm& alarm);

    /// Stores the alarm: pushes its item the first time, replaces it after that. Ends every change of an alarm.
    /// @pre alarm.alarmId > 0
    void saveAlarm(Alarm& alarm);
    void saveAlarm(Alarm& alarm, const ReplicatedList& list);

    /// The first alarm with this identity; null when there is none.
    Alarm* findAlarm(const AlarmData& identity);

    /// Appends the alarms with this identity; when there are none, those of the type whose DN the given DN matches as a
    /// regular expression.
    void findAlarms(const AlarmData& pattern, std::list<Alarm*>& found);

    /// Removes and destroys the alarm, or else the first one with its identity, and erases its item.
    /// @return the replicated list's answer
    ZorvReturnT deleteAlarm(const Alarm& alarm);

    /// All alarms, in the order of the list.
    void getAlarms(std::list<Alarm*>& copy);

    /// The alarms that a tick may change, in the order of the list.
    void getChangingAlarms(std::vector<Alarm*>& copy);

    void getNbiAlarms(std::vector<AlarmData>& alarms) override;

    /// For a short time at once; what changes meanwhile is as it is at the end.
    std::vector<AlarmChunkT> shareNbiAlarms() override;

    AlarmSummary getSummary();
    void traceInvisibleAlarms();

    /// Shown in traces only.
    void setSuppression(bool on);

private:
    using MutexLockT = Poco::Mutex::ScopedLock;
    using RecoveredT = std::list<std::unique_ptr<Alarm>>;

    void clearAlarms();
    static void createReplicatedList(const ReplicatedList& list);
    void recoverAlarms(const ReplicatedList& list, RecoveredT& recovered);
    void findMatching(const AlarmData& pattern, std::list<Alarm*>& found) const;

    ReplicatedList currentList;
    ReplicatedList legacyList;
    Poco::Mutex mutex;
    AlarmIndex index;   // guarded by mutex; alarms in it are owned
    ShownAlarms shown;  // guarded by mutex
    const FmConfig& config;
    bool suppressionOn = false;        // guarded by mutex
    std::uint64_t highestAlarmId = 0;  // guarded by mutex
};

}  // namespace ZorvFm
