#include "NotificationJson.hpp"

#include "JsonText.hpp"

#include <cstring>

namespace ZorvClient {

namespace {

constexpr std::size_t usualLength = 256;
const char* const beginnings[] = {"{\"raise\":{\"dn\":", "{\"clear\":{\"dn\":", "{\"alert\":{\"dn\":"};
const char* const severities[] = {"CLEARED", "INDETERMINATE", "WARNING", "MINOR", "MAJOR", "CRITICAL"};

ZorvClientResultT append(std::string& json, const char* text, std::size_t longest)
{
    if (text == nullptr) {
        return ZORV_CLIENT_BAD_TEXT;
    }
    const std::size_t length = ::strnlen(text, longest + 1);
    if (length > longest) {
        return ZORV_CLIENT_TOO_LONG;
    }
    return appendText(json, text, length) ? ZORV_CLIENT_OK : ZORV_CLIENT_BAD_TEXT;
}

ZorvClientResultT appendInfo(std::string& json, const ZorvClientNotificationT& notification)
{
    json += ",\"info\":";
    for (std::uint32_t i = 0; i < notification.infoCount; ++i) {
        const ZorvClientInfoT& pair = notification.info[i];
        json += i == 0 ? "[[" : ",[";
        ZorvClientResultT result = append(json, pair.name, ZORV_CLIENT_MAX_INFO_NAME);
        if (result == ZORV_CLIENT_OK) {
            json += ',';
            result = append(json, pair.value, ZORV_CLIENT_MAX_INFO_VALUE);
        }
        if (result != ZORV_CLIENT_OK) {
            return result;
        }
        json += ']';
    }
    json += ']';
    return ZORV_CLIENT_OK;
}

ZorvClientResultT appendTexts(std::string& json, const ZorvClientNotificationT& notification)
{
    ZorvClientResultT result = append(json, notification.dn, ZORV_CLIENT_MAX_DN);
    if (result == ZORV_CLIENT_OK && notification.additionalText != nullptr) {
        json += ",\"text\":";
        result = append(json, notification.additionalText, ZORV_CLIENT_MAX_TEXT);
    }
    if (result == ZORV_CLIENT_OK && notification.infoCount > 0) {
        result = appendInfo(json, notification);
    }
    return result;
}

void appendNumbers(std::string& json, Kind kind, const ZorvClientNotificationT& notification, std::uint64_t now)
{
    json += ",\"majorType\":";
    json += std::to_string(notification.majorType);
    json += ",\"minorType\":";
    json += std::to_string(notification.minorType);
    if (kind != Kind::clear) {
        json += ",\"severity\":\"";
        json += severities[notification.severity];
        json += '"';
    }
    json += ",\"eventTime\":";
    json += std::to_string(notification.eventTime != 0 ? notification.eventTime : now);
}

ZorvClientResultT check(Kind kind, const ZorvClientNotificationT& notification)
{
    if (notification.dn == nullptr || *notification.dn == '\0') {
        return ZORV_CLIENT_BAD_TEXT;
    }
    if (kind != Kind::clear &&
        (notification.severity < ZORV_CLIENT_INDETERMINATE || notification.severity > ZORV_CLIENT_CRITICAL)) {
        return ZORV_CLIENT_BAD_SEVERITY;
    }
    if (notification.infoCount > ZORV_CLIENT_MAX_INFO) {
        return ZORV_CLIENT_TOO_LONG;
    }
    return notification.infoCount > 0 && notification.info == nullptr ? ZORV_CLIENT_BAD_ARGUMENT : ZORV_CLIENT_OK;
}

}  // namespace

ZorvClientResultT encode(Kind kind, const ZorvClientNotificationT& notification, std::uint64_t now, std::string& json)
{
    ZorvClientResultT result = check(kind, notification);
    if (result != ZORV_CLIENT_OK) {
        return result;
    }
    json.clear();
    json.reserve(usualLength);
    json += beginnings[static_cast<int>(kind)];
    result = appendTexts(json, notification);
    if (result == ZORV_CLIENT_OK) {
        appendNumbers(json, kind, notification, now);
        json += "}}";
    }
    return result;
}

}  // namespace ZorvClient
