#include "notification/NotificationWriter.hpp"

#include "YaltOamSpiNotificationFm_1.h"
#include "notification/NotificationReader.hpp"

namespace ZorvInput {

namespace {

void writeInfo(JsonWriter& json, const InfoT& info)
{
    json.key("info").beginArray();
    for (const auto& [name, value] : info) {
        json.beginArray().value(name).value(value).endArray();
    }
    json.endArray();
}

void writeFields(JsonWriter& json, bool isClear, const FmNotification& notification)
{
    json.beginObject()
        .member("dn", notification.dn)
        .member("majorType", notification.majorType)
        .member("minorType", notification.minorType);
    if (!isClear) {
        writeSeverity(json, "severity", notification.severity);
    }
    if (!notification.text.empty()) {
        json.member("text", notification.text);
    }
    if (!notification.info.empty()) {
        writeInfo(json, notification.info);
    }
    if (notification.eventTime != 0) {
        json.member("eventTime", notification.eventTime);
    }
    json.endObject();
}

}  // namespace

void writeSeverity(JsonWriter& json, const char* name, std::int32_t severity)
{
    const bool hasName = severity >= YALT_FM_SEVERITY_CLEARED && severity <= YALT_FM_SEVERITY_CRITICAL;
    json.key(name);
    hasName ? json.value(severityText(severity)) : json.value(severity);
}

std::string notificationJson(const std::string& kind, const FmNotification& notification)
{
    const bool isZorv = notification.framework == FmFramework::zorv;
    JsonWriter json;
    json.beginObject().key(kind);
    writeFields(json, kind == "clear", notification);
    if (isZorv) {
        json.member("framework", "zorv");
    }
    if (notification.version != (isZorv ? 2 : 4)) {
        json.member("version", notification.version);
    }
    return json.endObject().take();
}

}  // namespace ZorvInput
