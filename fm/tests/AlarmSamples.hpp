/// Alarms for tests, and a way to compare all they hold.
#pragma once

#include <sstream>
#include <string>

#include "Alarm.hpp"
#include "Dice.hpp"
#include "FmConfig.hpp"

namespace ZorvFm {

/// An alarm in which no two fields have the same value.
inline AlarmData fullAlarm()
{
    AlarmData alarm;
    alarm.dn = "ManagedElement=1,Slot=2,Port=4";
    alarm.majorType = 32473;
    alarm.minorType = 4097;
    alarm.originalAdditionalText = "Link down";
    alarm.severity = YALT_FM_SEVERITY_MAJOR;
    alarm.originalSeverity = YALT_FM_SEVERITY_MINOR;
    alarm.eventTime = 1700000000123456789;
    alarm.originalEventTime = 1690000000000000001;
    alarm.clearEventTime = 1700000001000000002;
    alarm.hasConfiguredSeverity = true;
    alarm.configuredSeverity = YALT_FM_SEVERITY_CRITICAL;
    alarm.seqNo = 17;
    alarm.originalSeqNo = 11;
    alarm.alarmId = 6;
    alarm.stateful = true;
    alarm.eventType = 2;
    alarm.probableCause = 14;
    alarm.specificProblem = "Link failure";
    alarm.additionalInfo = {{"slot", "two"}, {"port", "four"}};
    alarm.additionalText = "Link down again";
    alarm.additionalTextForClear = "Link up";
    return alarm;
}

/// An alarm that shares nothing with fullAlarm().
inline AlarmData otherAlarm()
{
    AlarmData alarm;
    alarm.dn = "other";
    alarm.specificProblem = "other problem";
    alarm.additionalText = "other text";
    alarm.additionalTextForClear = "other text for clear";
    alarm.originalAdditionalText = "other original text";
    alarm.majorType = alarm.minorType = alarm.probableCause = 90;
    alarm.severity = alarm.originalSeverity = alarm.eventType = 91;
    alarm.seqNo = alarm.originalSeqNo = alarm.alarmId = 92;
    alarm.eventTime = alarm.originalEventTime = alarm.clearEventTime = 93;
    alarm.additionalInfo = {{"other", "info"}};
    return alarm;
}

/// An alarm of any contents.
inline AlarmData randomAlarm(Dice& dice)
{
    AlarmData alarm;
    for (std::string* text : {&alarm.dn, &alarm.originalAdditionalText, &alarm.specificProblem, &alarm.additionalText,
                              &alarm.additionalTextForClear}) {
        *text = dice.bytes(200);
    }
    for (std::uint32_t* number :
         {&alarm.majorType, &alarm.minorType, &alarm.probableCause, &alarm.configuredSeverity}) {
        *number = static_cast<std::uint32_t>(dice.number());
    }
    for (std::int32_t* number : {&alarm.severity, &alarm.originalSeverity, &alarm.eventType}) {
        *number = static_cast<std::int32_t>(dice.number());
    }
    for (std::uint64_t* number : {&alarm.eventTime, &alarm.originalEventTime, &alarm.clearEventTime, &alarm.seqNo,
                                  &alarm.originalSeqNo, &alarm.alarmId}) {
        *number = dice.number();
    }
    alarm.stateful = dice.roll(2) == 0;
    alarm.hasConfiguredSeverity = dice.roll(2) == 0;
    for (std::uint64_t pairs = dice.roll(5); pairs > 0; --pairs) {
        alarm.addAdditionalInfo(dice.bytes(60), dice.bytes(60));
    }
    return alarm;
}

/// The alarm of one identity, and of one text that tells it from its twins.
inline AlarmData anAlarm(const std::string& dn, std::uint32_t majorType = 32473, std::uint32_t minorType = 7,
                         const std::string& text = "")
{
    AlarmData alarm = fullAlarm();
    alarm.dn = dn;
    alarm.majorType = majorType;
    alarm.minorType = minorType;
    alarm.additionalText = text;
    return alarm;
}

/// All fields as they are kept, a line each.
inline std::string allFields(const AlarmData& alarm)
{
    std::ostringstream text;
    text << "dn=" << alarm.dn << "\nmajorType=" << alarm.majorType << "\nminorType=" << alarm.minorType
         << "\noriginalAdditionalText=" << alarm.originalAdditionalText << "\nseverity=" << alarm.severity
         << "\noriginalSeverity=" << alarm.originalSeverity << "\neventTime=" << alarm.eventTime
         << "\noriginalEventTime=" << alarm.originalEventTime << "\nclearEventTime=" << alarm.clearEventTime
         << "\nhasConfiguredSeverity=" << alarm.hasConfiguredSeverity
         << "\nconfiguredSeverity=" << alarm.configuredSeverity << "\nseqNo=" << alarm.seqNo
         << "\noriginalSeqNo=" << alarm.originalSeqNo << "\nalarmId=" << alarm.alarmId
         << "\nstateful=" << alarm.stateful << "\neventType=" << alarm.eventType
         << "\nprobableCause=" << alarm.probableCause << "\nspecificProblem=" << alarm.specificProblem
         << "\nadditionalText=" << alarm.additionalText << "\nadditionalTextForClear=" << alarm.additionalTextForClear;
    for (const auto& [name, value] : alarm.additionalInfo) {
        text << "\nadditionalInfo " << name << "=" << value;
    }
    return text.str();
}

/// The data as the alarm shows them.
inline AlarmData dataOf(const AlarmData& alarm)
{
    return alarm;
}

/// An alarm that came to the filter state by itself, with filters of no time.
inline Alarm alarmInState(int state, const AlarmData& data = fullAlarm())
{
    static const FmConfig plain;
    static const FmConfig toggling = [] {
        FmConfig config;
        config.alarmToggleWindowSize = 60000000000;
        return config;
    }();
    const bool toggles = state == AlarmState::ACTIVE_TOGGLING || state == AlarmState::CEASE_PENDING_TOGGLING;
    Alarm alarm(toggles ? toggling : plain);
    alarm.assign(data);
    if (state >= AlarmState::RAISE_PENDING) {
        alarm.raise();
    }
    if (state >= AlarmState::ACTIVE) {
        alarm.tick(0);
    }
    if (state >= AlarmState::CEASE_PENDING_TOGGLING) {
        alarm.clear();
    }
    if (state == AlarmState::CEASED) {
        alarm.tick(0);
    }
    return alarm;
}

}  // namespace ZorvFm
