/// The filter of an alarm, and what its ticks have reported.
#include "ReferenceModel.hpp"

namespace ZorvFm {
namespace Reference {

// --- The filter

void ReferenceModel::startTimer(ReferenceAlarm& alarm, std::uint64_t length) const
{
    alarm.timerStart = now;
    alarm.timerLength = length;
}

void ReferenceModel::raise(ReferenceAlarm& alarm)
{
    if (alarm.state == 0 || alarm.state == 6) {
        startTimer(alarm, configuration.raiseFilterTime);
        alarm.state = 1;
    } else if (alarm.state == 5) {
        alarm.state = 2;
    } else if (alarm.state == 4) {
        alarm.state = 3;
    } else if (alarm.state != 2) {
        log(4, "Unexpected alarm raise in state " + std::to_string(alarm.state));
    }
}

void ReferenceModel::clear(ReferenceAlarm& alarm)
{
    if (alarm.state == 2) {
        startTimer(alarm, configuration.ceaseFilterTime);
        alarm.state = 5;
    } else if (alarm.state == 3) {
        startTimer(alarm, configuration.silentTimeout);
        alarm.state = 4;
    } else if (alarm.state == 1) {
        alarm.state = 6;
    } else {
        log(4, "Unexpected alarm cease in state " + std::to_string(alarm.state));
    }
}

void ReferenceModel::prune(ReferenceAlarm& alarm, std::uint64_t time) const
{
    while (!alarm.activations.empty() && time >= alarm.activations.front() + configuration.toggleWindow) {
        alarm.activations.erase(alarm.activations.begin());
    }
}

/// 0 nothing, 1 activated, 2 cleared, 3 to be deleted.
int ReferenceModel::tick(ReferenceAlarm& alarm, std::uint64_t time)
{
    const bool isTimeOut = alarm.timerLength == 0 || time >= alarm.timerStart + alarm.timerLength;
    if (alarm.state == 1 && isTimeOut) {
        alarm.activations.push_back(time);
        prune(alarm, time);
        alarm.state = alarm.activations.size() >= configuration.toggleCount ? 3 : 2;
        return 1;
    }
    if (alarm.state == 4 && isTimeOut) {
        alarm.activations.clear();
        alarm.state = 6;
        return 2;
    }
    if (alarm.state == 5 && isTimeOut) {
        alarm.state = 6;
        return 2;
    }
    if (alarm.state == 6) {
        prune(alarm, time);
        return alarm.activations.empty() ? 3 : 0;
    }
    return 0;
}

// --- Reporting

void ReferenceModel::tickAll()
{
    if (now < lastRound + 500000000) {
        return;
    }
    lastRound = now;
    std::vector<ReferenceAlarm*> all;
    for (ReferenceAlarm& alarm : alarms) {
        all.push_back(&alarm);
    }
    for (ReferenceAlarm* alarm : all) {
        tickAlarm(*alarm, now);
    }
}

void ReferenceModel::tickAlarm(ReferenceAlarm& alarm, std::uint64_t time)
{
    const int result = tick(alarm, time);
    if (result == 1) {
        report(alarm, 0);
        store(alarm);
    } else if (result == 2) {
        const std::int32_t previousSeverity = alarm.severity;
        alarm.severity = 0;
        alarm.eventTime = alarm.clearEventTime;
        alarm.text = alarm.textForClear;
        report(alarm, previousSeverity);
        alarm.seqNo = 0;
        alarm.originalSeqNo = 0;
        alarm.originalEventTime = 0;
        store(alarm);
    } else if (result == 3) {
        erase(alarm);
    }
}

void ReferenceModel::report(ReferenceAlarm& alarm, std::int32_t previousSeverity)
{
    ReferenceAlarm copy = alarm;
    copy.text = shownText(alarm);
    copy.state = 0;
    copy.dn = externalDn(alarm.dn);
    if (suppression && previousSeverity != 5 && alarm.severity != 5) {
        log(5, "Suppressing alarm: " + debugLine(copy));
        alarm.seqNo = 0;
        summaryPending = true;
        pendingSeqNo = status.lastStateful;
        pendingTime = timeText(status.timeOfStateful);
        record(copy);
        return;
    }
    alarm.seqNo = status.lastStateful + 1;
    if (alarm.originalSeqNo == 0) {
        alarm.originalSeqNo = alarm.seqNo;
    }
    copy.seqNo = alarm.seqNo;
    copy.originalSeqNo = alarm.originalSeqNo;
    status.lastStateful += 1;
    status.timeOfStateful = alarm.eventTime;
    status.timeOfCheck = alarm.eventTime;
    statusIsStored = true;
    summaryPending = true;
    pendingSeqNo = alarm.seqNo;
    pendingTime = timeText(alarm.eventTime);
    record(copy);
    log(5, "Sending alarm: " + debugLine(copy));
    send(copy);
}

void ReferenceModel::send(const ReferenceAlarm& copy)
{
    journal.push_back(notification3(copy, consumers.alarm3));
    journal.push_back(notification2(copy, consumers.alarm2));
}

std::string ReferenceModel::externalDn(const std::string& dn) const
{
    const std::string own = "ManagedElement=1";
    const bool isOwn = dn == own || dn.compare(0, own.size() + 1, own + ",") == 0;
    if (!isOwn || configuration.elementName.empty()) {
        return dn;
    }
    return "ManagedElement=" + configuration.elementName + dn.substr(own.size());
}

void ReferenceModel::suppress(int value)
{
    if (suppression && value != 1) {
        journal.push_back("notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=" +
                          std::to_string(consumers.rebuilt3) + " filter=[] noData=0 -> 0");
        journal.push_back("notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=" +
                          std::to_string(consumers.rebuilt2) + " filter=[] noData=0 -> 0");
    }
    suppression = value == 1;
}

// --- The summary

Summary ReferenceModel::countSummary() const
{
    Summary summary;
    for (const ReferenceAlarm& alarm : alarms) {
        if (!alarm.isVisible()) {
            continue;
        }
        summary.total += 1;
        if (alarm.severity == 2) {
            summary.warning += 1;
        } else if (alarm.severity == 3) {
            summary.minor += 1;
        } else if (alarm.severity == 4) {
            summary.major += 1;
        } else if (alarm.severity != 0) {
            summary.critical += 1;
        }
    }
    return summary;
}

void ReferenceModel::saveSummary()
{
    if (!summaryPending) {
        return;
    }
    if (nextFailure(Operation::COMMIT) != 0) {
        log(4, "Did not succeed writing alarm sequence number to database, will try again later");
        return;
    }
    summaryPending = false;
    const Summary summary = countSummary();
    shownObject = "lastSequenceNo=" + std::to_string(pendingSeqNo) + " lastChanged='" + pendingTime +
                  "' totalActive=" + std::to_string(summary.total) +
                  " sumCritical=" + std::to_string(summary.critical) + " sumMajor=" + std::to_string(summary.major) +
                  " sumMinor=" + std::to_string(summary.minor) + " sumWarning=" + std::to_string(summary.warning);
}

}  // namespace Reference
}  // namespace ZorvFm
