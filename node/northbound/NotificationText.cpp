#include "northbound/NotificationText.hpp"

#include <Poco/DateTimeFormatter.h>
#include <Poco/Format.h>
#include <Poco/Timestamp.h>

#include "YaltOamSpiNotificationFm_1.h"
#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"
#include "files/LineText.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

constexpr std::uint64_t nanosecondsInSecond = 1000000000;

std::string quoted(const char* text)
{
    std::string marked;
    for (const char character : std::string(text != nullptr ? text : "")) {
        marked += character == '"' || character == '\\' ? std::string("\\") + character : std::string(1, character);
    }
    return "\"" + toLineText(marked) + "\"";
}

std::string timeText(std::uint64_t nanoseconds)
{
    if (nanoseconds == 0) {
        return "-";
    }
    const Poco::Timestamp second =
        Poco::Timestamp::fromEpochTime(static_cast<std::time_t>(nanoseconds / nanosecondsInSecond));
    return Poco::DateTimeFormatter::format(second, "%Y-%m-%dT%H:%M:%S.") +
           Poco::format("%09?uZ", nanoseconds % nanosecondsInSecond);
}

std::string severityText(std::int32_t severity)
{
    static const char* const names[] = {"CLEARED", "INDETERMINATE", "WARNING", "MINOR", "MAJOR", "CRITICAL"};
    return severity >= 0 && severity <= YALT_FM_SEVERITY_CRITICAL ? names[severity] : std::to_string(severity);
}

std::string blockText(const FmAlarmBlock& block)
{
    return " severity=" + severityText(block.severity) + " dn=" + quoted(block.dn) +
           " majorType=" + std::to_string(block.majorType) + " minorType=" + std::to_string(block.minorType) +
           " eventTime=" + timeText(block.eventTime) + " additionalText=" + quoted(block.additionalText);
}

std::string infoText(const FmAlarmBlock& block)
{
    std::string text;
    for (std::uint32_t index = 0; block.additionalInfo != nullptr && index < block.numberOfPairs; ++index) {
        const ZorvOamApiFmAdditionalInfoPair& pair = block.additionalInfo[index];
        text += (index > 0 ? ", " : "") + quoted(pair.name) + "=" + quoted(pair.value);
    }
    return " additionalInfo={" + text + "}";
}

/// identity is the field in which the versions differ.
template <class ValueT>
std::string alarmText(const char* version, const ValueT& value, const std::string& identity)
{
    return std::string("alarm v") + version + " " + (value.stateful ? "stateful" : "stateless") +
           " seqNo=" + std::to_string(value.seqNo) + " " + identity + blockText(*value.alarm) +
           " eventType=" + std::to_string(value.eventType) + " probableCause=" + std::to_string(value.probableCause) +
           " specificProblem=" + quoted(value.specificProblem) +
           " originalEventTime=" + timeText(value.originalEventTime) +
           " originalSeverity=" + severityText(value.originalSeverity) +
           " originalAdditionalText=" + quoted(value.originalAdditionalText) + infoText(*value.alarm);
}

template <class ValueT>
std::string heartbeatText(const char* version, const ValueT& value)
{
    return std::string("heartbeat v") + version + " lastStatefulSeqNo=" + std::to_string(value.lastStatefulSeqNo) +
           " lastStatefulTimestamp=" + timeText(value.lastStatefulTimestamp) +
           " lastStatelessSeqNo=" + std::to_string(value.lastStatelessSeqNo) +
           " lastStatelessTimestamp=" + timeText(value.lastStatelessTimestamp);
}

}  // namespace

const char* const northboundEventTypes[6] = {
    ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3,       ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3,
    ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2,
    ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2,          ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2,
};

std::string notificationText(const std::string& eventType, const void* value)
{
    if (eventType == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3) {
        const auto& alarm = *static_cast<const ZorvOamApiFmNotificationEventValue_3*>(value);
        return alarmText("3", alarm, "alarmId=" + std::to_string(alarm.alarmId));
    }
    if (eventType == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2) {
        const auto& alarm = *static_cast<const ZorvOamApiFmNotificationEventValue_2*>(value);
        return alarmText("2", alarm, "originalSeqNo=" + std::to_string(alarm.originalSeqNo));
    }
    if (eventType == ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3) {
        return heartbeatText("3", *static_cast<const ZorvOamApiFmHeartbeatEventValue_3*>(value));
    }
    if (eventType == ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2) {
        return heartbeatText("2", *static_cast<const ZorvOamApiFmHeartbeatEventValue_2*>(value));
    }
    return eventType == ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3 ? "alarm-list-rebuilt v3"
                                                                        : "alarm-list-rebuilt v2";
}

}  // namespace ZorvNode
