#include "notification/NotificationReader.hpp"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

#include "YaltOamSpiNotificationFm_1.h"
#include "files/Number.hpp"

namespace ZorvInput {

namespace {

constexpr std::int64_t largestUnsigned32 = std::numeric_limits<std::uint32_t>::max();
const char* const kinds[] = {"raise", "clear", "alert"};

/// By number.
const char* const severities[] = {"CLEARED", "INDETERMINATE", "WARNING", "MINOR", "MAJOR", "CRITICAL"};

std::int32_t readSeverity(JsonFields& fields)
{
    const JsonT& value = fields.get("severity");
    std::int32_t severity = 0;
    if (!value.IsString()) {
        return static_cast<std::int32_t>(fields.integer("severity", std::numeric_limits<std::int32_t>::min(),
                                                        std::numeric_limits<std::int32_t>::max()));
    }
    if (!findSeverity(jsonText(value), severity)) {
        throw FieldError(fields.pathOf("severity"), "no severity", jsonText(value));
    }
    return severity;
}

std::uint64_t readEventTime(JsonFields& fields)
{
    const JsonT& value = fields.get("eventTime");
    std::uint64_t time = 0;
    if (value.IsUint64()) {
        return value.GetUint64();
    }
    if (!value.IsString() || !parseUnsigned(jsonText(value), time)) {
        throw FieldError(fields.pathOf("eventTime"), "not a number of nanoseconds", jsonText(value));
    }
    return time;
}

bool isText(const JsonT& value)
{
    return value.IsString() && std::memchr(value.GetString(), 0, value.GetStringLength()) == nullptr;
}

InfoT readInfoPairs(const JsonFields& fields, const JsonT& pairs)
{
    InfoT info;
    for (const JsonT& pair : pairs.GetArray()) {
        if (!pair.IsArray() || pair.Size() != 2 || !isText(pair[0]) || !isText(pair[1])) {
            throw FieldError(fields.pathOf("info"), "not a pair of texts", jsonText(pair));
        }
        info.emplace_back(jsonText(pair[0]), jsonText(pair[1]));
    }
    return info;
}

/// Pairs in an array keep their order, those of an object go by name.
InfoT readInfo(JsonFields& fields)
{
    const JsonT& value = fields.get("info");
    if (value.IsArray()) {
        return readInfoPairs(fields, value);
    }
    const JsonFields entries = fields.fields("info");
    InfoT info;
    for (const auto& entry : entries.json().GetObject()) {
        if (!isText(entry.name) || !isText(entry.value)) {
            throw FieldError(entries.pathOf(jsonText(entry.name)), "not a text", jsonText(entry.value));
        }
        info.emplace_back(jsonText(entry.name), jsonText(entry.value));
    }
    std::stable_sort(info.begin(), info.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    return info;
}

void readEnvelope(JsonFields& object, FmNotification& notification)
{
    const std::string framework = object.text("framework", "yalt");
    if (framework != "yalt" && framework != "zorv") {
        throw FieldError(object.pathOf("framework"), "not zorv or yalt", framework);
    }
    notification.framework = framework == "zorv" ? FmFramework::zorv : FmFramework::yalt;
    notification.version = framework == "zorv" ? 2 : 4;
    if (object.has("version")) {
        notification.version = static_cast<int>(object.integer("version", 1, 4));
    }
    if (notification.version == 3 || (notification.version == 4 && framework == "zorv")) {
        throw FieldError(object.pathOf("version"), "framework " + framework + " has no such version",
                         std::to_string(notification.version));
    }
}

const char* readKind(const JsonFields& object)
{
    const char* found = nullptr;
    for (const char* kind : kinds) {
        if (!object.has(kind)) {
            continue;
        }
        if (found != nullptr) {
            throw FieldError(object.pathOf(kind), std::string("beside ") + found);
        }
        found = kind;
    }
    if (found == nullptr) {
        throw FieldError(object.pathOf("raise"), "missing; so are clear and alert");
    }
    return found;
}

}  // namespace

FmNotification readNotification(JsonFields& object, std::uint64_t eventTime)
{
    FmNotification notification;
    const std::string kind = readKind(object);
    readEnvelope(object, notification);
    JsonFields fields = object.fields(kind.c_str());
    notification.dn = fields.text("dn");
    notification.majorType = static_cast<std::uint32_t>(fields.integer("majorType", 0, largestUnsigned32));
    notification.minorType = static_cast<std::uint32_t>(fields.integer("minorType", 0, largestUnsigned32));
    notification.text = fields.text("text", "");
    notification.eventTime = fields.has("eventTime") ? readEventTime(fields) : eventTime;
    if (kind != "clear" || fields.has("severity")) {
        notification.severity = readSeverity(fields);
    }
    if (kind == "clear" && notification.severity != YALT_FM_SEVERITY_CLEARED) {
        throw FieldError(fields.pathOf("severity"), "not CLEARED", severityText(notification.severity));
    }
    if (fields.has("info")) {
        notification.info = readInfo(fields);
    }
    if (!notification.info.empty() && notification.version != 4) {
        throw FieldError(fields.pathOf("info"), "only in version 4", std::to_string(notification.version));
    }
    fields.expectNoOther();
    return notification;
}

bool findSeverity(const std::string& name, std::int32_t& severity)
{
    const auto found = std::find(std::begin(severities), std::end(severities), name);
    severity = static_cast<std::int32_t>(found - std::begin(severities));
    return found != std::end(severities);
}

std::string severityText(std::int32_t severity)
{
    return severity >= YALT_FM_SEVERITY_CLEARED && severity <= YALT_FM_SEVERITY_CRITICAL ? severities[severity]
                                                                                         : std::to_string(severity);
}

}  // namespace ZorvInput
