#include "api/NotificationJson.hpp"

#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"
#include "notification/NotificationWriter.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

void writeBlock(JsonWriter& json, const FmAlarmBlock& block)
{
    json.member("dn", static_cast<const char*>(block.dn))
        .member("majorType", block.majorType)
        .member("minorType", block.minorType)
        .member("eventTime", block.eventTime)
        .member("additionalText", static_cast<const char*>(block.additionalText));
    writeSeverity(json, "severity", block.severity);
    json.key("additionalInfo").beginArray();
    for (std::uint32_t index = 0; block.additionalInfo != nullptr && index < block.numberOfPairs; ++index) {
        const ZorvOamApiFmAdditionalInfoPair& pair = block.additionalInfo[index];
        json.beginArray().value(static_cast<const char*>(pair.name)).value(static_cast<const char*>(pair.value));
        json.endArray();
    }
    json.endArray();
}

/// identity is the field in which the versions differ.
template <class ValueT>
NorthboundEvent alarmEvent(int version, const ValueT& value, const char* identity, std::uint64_t number)
{
    JsonWriter json;
    json.beginObject()
        .member("version", version)
        .member("stateful", value.stateful)
        .member("seqNo", value.seqNo)
        .member(identity, number);
    writeBlock(json, *value.alarm);
    json.member("eventType", value.eventType)
        .member("probableCause", value.probableCause)
        .member("specificProblem", static_cast<const char*>(value.specificProblem))
        .member("originalEventTime", value.originalEventTime)
        .member("originalAdditionalText", static_cast<const char*>(value.originalAdditionalText));
    writeSeverity(json, "originalSeverity", value.originalSeverity);
    json.endObject();
    return {version, "alarm", json.take(), value.stateful, value.seqNo, 0, 0};
}

template <class ValueT>
NorthboundEvent heartbeatEvent(int version, const ValueT& value)
{
    JsonWriter json;
    json.beginObject()
        .member("version", version)
        .member("lastStatefulSeqNo", value.lastStatefulSeqNo)
        .member("lastStatefulTimestamp", value.lastStatefulTimestamp)
        .member("lastStatelessSeqNo", value.lastStatelessSeqNo)
        .member("lastStatelessTimestamp", value.lastStatelessTimestamp)
        .endObject();
    return {version, "heartbeat", json.take(), false, 0, value.lastStatefulSeqNo, value.lastStatelessSeqNo};
}

}  // namespace

const char* const northboundEventTypes[6] = {
    ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3,       ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3,
    ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2,
    ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2,          ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2,
};

NorthboundEvent readNorthboundEvent(const std::string& eventType, const void* value)
{
    if (eventType == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3) {
        const auto& alarm = *static_cast<const ZorvOamApiFmNotificationEventValue_3*>(value);
        return alarmEvent(3, alarm, "alarmId", alarm.alarmId);
    }
    if (eventType == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2) {
        const auto& alarm = *static_cast<const ZorvOamApiFmNotificationEventValue_2*>(value);
        return alarmEvent(2, alarm, "originalSeqNo", alarm.originalSeqNo);
    }
    if (eventType == ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3) {
        return heartbeatEvent(3, *static_cast<const ZorvOamApiFmHeartbeatEventValue_3*>(value));
    }
    if (eventType == ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2) {
        return heartbeatEvent(2, *static_cast<const ZorvOamApiFmHeartbeatEventValue_2*>(value));
    }
    const int version = eventType == ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3 ? 3 : 2;
    return {version, "rebuilt", "{\"version\":" + std::to_string(version) + "}", false, 0, 0, 0};
}

}  // namespace ZorvNode
