/// Decides what is reported, stored, cleared and deleted, and drives the alarms' filters.
///
/// Threads:   the worker's. It changes alarms under the active alarm list's mutex and never holds it while it sends.
/// Ownership: owns the active alarm list; configuration, connector and status outlive it.
/// Failure:   failures of list, log and model are logged and survived. A tick result that does not exist ends the process.
#pragma once

#include <cstdint>
#include <string>

#include "AlarmList.hpp"
#include "ZorvOamSpiFmAlarmSuppress_1.h"

namespace ZorvFm {

class FmConfig;
class MOConnector;
class Status;

class FmAlarmHandler {
public:
    FmAlarmHandler(const FmConfig& componentConfig, MOConnector& modelConnector, Status& statusRecord);

    /// Recovers the stored alarms and shows the recovered state in the FM managed object.
    void initialize();

    /// False when the notification could only change a severity that the model fixes: it is then to be ignored.
    bool isUpdateAlarm(const AlarmData& data);

    /// One notification, completed from the alarm model.
    void handleAlarmNotif(AlarmData& data);

    /// Ticks the alarms, at most once in half a second.
    void tickAllAlarms();

    void suppressAlarm(const ZorvOamSpiFmAlarmSuppressType_1& type);

    /// Writes what was reported since the last success to the FM managed object; does nothing when that is nothing.
    void saveVeskFmAttributes();

    void countAlarmSummaries(std::uint32_t& total, std::uint32_t& critical, std::uint32_t& major, std::uint32_t& minor,
                             std::uint32_t& warning);

private:
    static const std::uint64_t _NO_ALARM_SEQ_NUMBER_TO_WRITE;

    void handleAlarmNotifRaise(AlarmData& data);
    void handleAlarmNotifClear(AlarmData& data);
    void handleAlarmNotifStateless(AlarmData& data);
    void handleAlarmNotifUpdate(AlarmData& data, Alarm& alarm);

    /// @param now monotonic time in ns
    void tickAlarm(Alarm& alarm, std::uint64_t now);
    void endAlarm(Alarm& alarm);
    void reportAlarm(Alarm& alarm, std::int32_t previousSeverity);
    void sendAlarm(Alarm& alarm, AlarmData& report);
    void updateContents(AlarmData& data, Alarm& alarm);
    void takeClear(const AlarmData& data, Alarm& alarm);
    void raiseTickSave(Alarm& alarm);
    void takePendingFromStatus();

    static void logAlarm(const AlarmData& alarm);
    static std::string convertToExternalMeRdn(const std::string& dn);

    const FmConfig& config;
    MOConnector& connector;
    Status& status;
    AlarmList alarmList;
    std::uint64_t seqNoToWrite = _NO_ALARM_SEQ_NUMBER_TO_WRITE;  // to the FM managed object
    std::string lastChangedToWrite;
    bool suppressionOn = false;
};

}  // namespace ZorvFm
