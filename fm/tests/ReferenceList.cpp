/// The alarms, in memory and stored.
#include <regex.h>

#include <algorithm>

#include "ReferenceModel.hpp"
#include "RegularExpression.hpp"

namespace ZorvFm {
namespace Reference {
namespace {

bool isSameAlarm(const ReferenceAlarm& one, const ReferenceAlarm& other)
{
    return one.dn == other.dn && one.majorType == other.majorType && one.minorType == other.minorType;
}

/// The C library's expressions: another engine than the component's.
std::optional<bool> isMatch(const std::string& pattern, const std::string& text)
{
    regex_t expression;
    if (regcomp(&expression, pattern.c_str(), REG_EXTENDED | REG_NOSUB) != 0) {
        return std::nullopt;
    }
    const bool found = regexec(&expression, text.c_str(), 0, nullptr, 0) == 0;
    regfree(&expression);
    return found;
}

}  // namespace

void ReferenceModel::init(ReferenceAlarm& alarm, const ReferenceAlarm& data)
{
    ReferenceAlarm fresh = data;
    fresh.originalText = data.text;
    fresh.originalSeverity = data.severity;
    fresh.originalEventTime = data.eventTime;
    fresh.originalSeqNo = 0;
    fresh.alarmId = 0;
    fresh.state = alarm.state;
    fresh.timerStart = alarm.timerStart;
    fresh.timerLength = alarm.timerLength;
    fresh.activations = alarm.activations;
    fresh.item = alarm.item;
    alarm = fresh;
}

void ReferenceModel::assignId(ReferenceAlarm& alarm)
{
    if (alarm.alarmId == 0) {
        highestId += 1;
        alarm.alarmId = highestId;
    } else {
        highestId = std::max(highestId, alarm.alarmId);
    }
}

const ReferenceAlarm* ReferenceModel::find(const ReferenceAlarm& identity) const
{
    for (const ReferenceAlarm& alarm : alarms) {
        if (isSameAlarm(alarm, identity)) {
            return &alarm;
        }
    }
    return nullptr;
}

ReferenceAlarm* ReferenceModel::find(const ReferenceAlarm& identity)
{
    for (ReferenceAlarm& alarm : alarms) {
        if (isSameAlarm(alarm, identity)) {
            return &alarm;
        }
    }
    return nullptr;
}

std::vector<ReferenceAlarm*> ReferenceModel::findForClear(const ReferenceAlarm& pattern)
{
    std::vector<ReferenceAlarm*> found;
    for (ReferenceAlarm& alarm : alarms) {
        if (isSameAlarm(alarm, pattern)) {
            found.push_back(&alarm);
        }
    }
    if (!found.empty()) {
        return found;
    }
    for (ReferenceAlarm& alarm : alarms) {
        if (alarm.majorType != pattern.majorType || alarm.minorType != pattern.minorType) {
            continue;
        }
        const std::optional<bool> matches = isMatch(pattern.dn, alarm.dn);
        if (!matches) {
            const Zorv::RegularExpression expression(pattern.dn, REG_EXTENDED | REG_NOSUB);
            log(3, "DnUtil::doRegexp, regcomp failed for DN: " + pattern.dn + " :" + expression.getErrorText());
        } else if (*matches) {
            found.push_back(&alarm);
        }
    }
    return found;
}

void ReferenceModel::store(ReferenceAlarm& alarm)
{
    const int failure = nextFailure(alarm.item == 0 ? Operation::PUSH : Operation::REPLACE);
    if (failure != 0) {
        log(3, std::string("Failed to ") + (alarm.item == 0 ? "push back alarm to" : "save alarm in") +
                   " replicated list! retval=" + std::to_string(failure) + " '" + debugLineWithState(alarm) + "'");
    } else if (alarm.item == 0) {
        lastItem += 1;
        alarm.item = lastItem;
        stored.push_back({lastItem, alarm});
    } else {
        for (StoredItem& item : stored) {
            if (item.number == alarm.item) {
                item.alarm = alarm;
            }
        }
    }
}

void ReferenceModel::erase(const ReferenceAlarm& alarm)
{
    int failure = nextFailure(Operation::ERASE);
    if (failure == 0 && alarm.item == 0) {
        failure = -2;
    }
    if (failure != 0) {
        log(4, "Retval from listEraseItem: " + std::to_string(failure));
    } else {
        stored.remove_if([&](const StoredItem& item) { return item.number == alarm.item; });
    }
    alarms.remove_if([&](const ReferenceAlarm& one) { return &one == &alarm; });
}

void ReferenceModel::plantStored(const ReferenceAlarm& alarm)
{
    lastItem += 1;
    stored.push_back({lastItem, alarm});
}

// --- Starting

void ReferenceModel::start(bool keepsMemory)
{
    typesRead.clear();
    if (!keepsMemory) {
        highestId = 0;
        suppression = false;
    }
    if (!statusIsStored) {
        log(4, "FmStatusSection list existed but was empty. Preparing for a cold start.");
    }
    recover();
    summaryPending = true;
    pendingSeqNo = status.lastStateful;
    pendingTime = timeText(status.timeOfStateful);
    saveSummary();
}

/// What is stored of an alarm: its text as shown, its filter state without timer and history.
void ReferenceModel::recover()
{
    alarms.clear();
    for (const StoredItem& item : stored) {
        ReferenceAlarm& alarm = alarms.emplace_back(item.alarm);
        alarm.text = shownText(item.alarm);
        alarm.stateful = true;
        alarm.timerStart = 0;
        alarm.timerLength = 0;
        alarm.activations.clear();
        alarm.item = item.number;
        highestId = std::max(highestId, alarm.alarmId);
    }
    for (ReferenceAlarm& alarm : alarms) {
        assignId(alarm);
    }
}

std::vector<std::string> ReferenceModel::storedItems() const
{
    std::vector<std::string> items;
    for (const StoredItem& item : stored) {
        items.push_back(storedText(item.alarm).substr(0, 999));
    }
    return items;
}

std::vector<std::string> ReferenceModel::visibleAlarms() const
{
    std::vector<std::string> lines;
    for (const ReferenceAlarm& alarm : alarms) {
        if (alarm.isVisible()) {
            lines.push_back(debugLine(alarm));
        }
    }
    return lines;
}

}  // namespace Reference
}  // namespace ZorvFm
