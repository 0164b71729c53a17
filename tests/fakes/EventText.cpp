#include "EventText.hpp"

#include <sstream>

#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvFakes {

namespace {

std::string quoted(const char* text)
{
    return text ? "'" + std::string(text) + "'" : "null";
}

std::string infoText(const FmAlarmBlock& block)
{
    if (!block.additionalInfo) {
        return block.numberOfPairs == 0 ? "null" : "null*" + std::to_string(block.numberOfPairs);
    }
    std::string text = "[";
    for (uint32_t i = 0; i < block.numberOfPairs; ++i) {
        text +=
            (i == 0 ? "" : ",") + quoted(block.additionalInfo[i].name) + "=" + quoted(block.additionalInfo[i].value);
    }
    return text + "]";
}

std::string blockText(const FmAlarmBlock* block)
{
    if (!block) {
        return "null";
    }
    std::ostringstream out;
    out << "{dn=" << quoted(block->dn) << " majorType=" << block->majorType << " minorType=" << block->minorType
        << " eventTime=" << block->eventTime << " additionalText=" << quoted(block->additionalText)
        << " severity=" << block->severity << " additionalInfo=" << infoText(*block) << "}";
    return out.str();
}

template <class ValueT>
std::string alarmText(const ValueT& value, const char* identityName, uint64_t identity)
{
    std::ostringstream out;
    out << std::boolalpha << blockText(value.alarm) << " stateful=" << value.stateful << " seqNo=" << value.seqNo
        << " eventType=" << value.eventType << " probableCause=" << value.probableCause
        << " specificProblem=" << quoted(value.specificProblem) << " " << identityName << "=" << identity
        << " originalEventTime=" << value.originalEventTime
        << " originalAdditionalText=" << quoted(value.originalAdditionalText)
        << " originalSeverity=" << value.originalSeverity;
    return out.str();
}

template <class ValueT>
std::string heartbeatText(const ValueT& value)
{
    std::ostringstream out;
    out << "lastStatefulTimestamp=" << value.lastStatefulTimestamp << " lastStatefulSeqNo=" << value.lastStatefulSeqNo
        << " lastStatelessTimestamp=" << value.lastStatelessTimestamp
        << " lastStatelessSeqNo=" << value.lastStatelessSeqNo;
    return out.str();
}

template <class ValueT>
std::string rebuiltText(const ValueT& value)
{
    return "noData=" + std::to_string(value.noData);
}

template <class ValueT>
const ValueT& as(const void* value)
{
    return *static_cast<const ValueT*>(value);
}

}  // namespace

std::string eventText(const std::string& eventType, const void* value)
{
    if (!value) {
        return "null";
    }
    if (eventType == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3) {
        const auto& alarm = as<ZorvOamApiFmNotificationEventValue_3>(value);
        return alarmText(alarm, "alarmId", alarm.alarmId);
    }
    if (eventType == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2) {
        const auto& alarm = as<ZorvOamApiFmNotificationEventValue_2>(value);
        return alarmText(alarm, "originalSeqNo", alarm.originalSeqNo);
    }
    if (eventType == ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3) {
        return heartbeatText(as<ZorvOamApiFmHeartbeatEventValue_3>(value));
    }
    if (eventType == ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2) {
        return heartbeatText(as<ZorvOamApiFmHeartbeatEventValue_2>(value));
    }
    if (eventType == ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3) {
        return rebuiltText(as<ZorvOamApiFmAlarmListRebuiltEventValue_3>(value));
    }
    if (eventType == ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2) {
        return rebuiltText(as<ZorvOamApiFmAlarmListRebuiltEventValue_2>(value));
    }
    return {};
}

}  // namespace ZorvFakes
