#include "scenario/ActionReader.hpp"

#include <Poco/JSON/Array.h>
#include <Poco/NumberParser.h>

#include <cmath>
#include <limits>
#include <map>

#include "files/InputError.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

using ArrayT = Poco::JSON::Array::Ptr;

constexpr std::int64_t largestUnsigned32 = std::numeric_limits<std::uint32_t>::max();

std::int32_t readSeverity(JsonFields& fields)
{
    static const std::map<std::string, std::int32_t> names = {
        {"CLEARED", YALT_FM_SEVERITY_CLEARED}, {"INDETERMINATE", YALT_FM_SEVERITY_INDETERMINATE},
        {"WARNING", YALT_FM_SEVERITY_WARNING}, {"MINOR", YALT_FM_SEVERITY_MINOR},
        {"MAJOR", YALT_FM_SEVERITY_MAJOR},     {"CRITICAL", YALT_FM_SEVERITY_CRITICAL}};
    const Poco::Dynamic::Var value = fields.get("severity");
    if (!isJsonText(value)) {
        return static_cast<std::int32_t>(fields.integer("severity", std::numeric_limits<std::int32_t>::min(),
                                                        std::numeric_limits<std::int32_t>::max()));
    }
    const auto found = names.find(value.convert<std::string>());
    if (found == names.end()) {
        throw ValueError(fields.pathOf("severity") + ": no severity", jsonText(value));
    }
    return found->second;
}

std::uint64_t readEventTime(JsonFields& fields)
{
    const Poco::Dynamic::Var value = fields.get("eventTime");
    Poco::UInt64 time = 0;
    if (!isJsonText(value)) {
        return static_cast<std::uint64_t>(fields.integer("eventTime", 0, std::numeric_limits<std::int64_t>::max()));
    }
    if (!Poco::NumberParser::tryParseUnsigned64(value.convert<std::string>(), time)) {
        throw ValueError(fields.pathOf("eventTime") + ": not a number of nanoseconds", jsonText(value));
    }
    return time;
}

using InfoT = std::vector<std::pair<std::string, std::string>>;

InfoT readInfoPairs(const JsonFields& fields, const ArrayT& pairs)
{
    InfoT info;
    for (const Poco::Dynamic::Var& entry : *pairs) {
        const ArrayT pair = entry.type() == typeid(ArrayT) ? entry.extract<ArrayT>() : ArrayT();
        if (!pair || pair->size() != 2 || !isJsonText(pair->get(0)) || !isJsonText(pair->get(1))) {
            throw ValueError(fields.pathOf("info") + ": not a pair of texts", jsonText(entry));
        }
        info.emplace_back(pair->getElement<std::string>(0), pair->getElement<std::string>(1));
    }
    return info;
}

InfoT readInfo(JsonFields& fields)
{
    const Poco::Dynamic::Var value = fields.get("info");
    if (!value.isEmpty() && value.type() == typeid(ArrayT)) {
        return readInfoPairs(fields, value.extract<ArrayT>());
    }
    InfoT info;
    JsonFields entries = fields.fields("info");
    for (const std::string& name : entries.names()) {
        info.emplace_back(name, entries.text(name));
    }
    return info;
}

void readEnvelope(JsonFields& fields, FmNotification& notification)
{
    const std::string framework = fields.text("framework", "yalt");
    if (framework != "yalt" && framework != "zorv") {
        throw ValueError(fields.pathOf("framework") + ": not zorv or yalt", framework);
    }
    notification.framework = framework == "zorv" ? FmFramework::zorv : FmFramework::yalt;
    notification.version = framework == "zorv" ? 2 : 4;
    if (fields.has("version")) {
        notification.version = static_cast<int>(fields.integer("version", 1, 4));
    }
    if (notification.version == 3 || (notification.version == 4 && framework == "zorv")) {
        throw ValueError("version: framework " + framework + " has no such version",
                         std::to_string(notification.version));
    }
}

PublishAction readNotification(JsonFields& line, const std::string& kind, std::uint64_t eventTime)
{
    PublishAction action;
    FmNotification& notification = action.notification;
    readEnvelope(line, notification);
    JsonFields fields = line.fields(kind);
    action.kind = kind == "raise"   ? NotificationKind::raise
                  : kind == "clear" ? NotificationKind::clear
                                    : NotificationKind::alert;
    notification.dn = fields.text("dn");
    notification.majorType = static_cast<std::uint32_t>(fields.integer("majorType", 0, largestUnsigned32));
    notification.minorType = static_cast<std::uint32_t>(fields.integer("minorType", 0, largestUnsigned32));
    notification.text = fields.text("text", "");
    notification.eventTime = fields.has("eventTime") ? readEventTime(fields) : eventTime;
    if (kind != "clear" || fields.has("severity")) {
        notification.severity = readSeverity(fields);
    }
    if (kind == "clear" && notification.severity != YALT_FM_SEVERITY_CLEARED) {
        throw ValueError("clear.severity: not CLEARED", std::to_string(notification.severity));
    }
    if (fields.has("info")) {
        notification.info = readInfo(fields);
    }
    if (!notification.info.empty() && notification.version != 4) {
        throw ValueError(fields.pathOf("info") + ": only in version 4", std::to_string(notification.version));
    }
    fields.expectNoOther();
    return action;
}

JsonAttributesT readAttributes(JsonFields& fields)
{
    JsonAttributesT attributes;
    JsonFields values = fields.fields("attributes");
    for (const std::string& name : values.names()) {
        attributes.emplace_back(name, values.get(name));
    }
    return attributes;
}

template <class ActionT>
ActionT readWrite(JsonFields& line, const std::string& kind)
{
    JsonFields fields = line.fields(kind);
    ActionT action{fields.text("dn"), readAttributes(fields)};
    fields.expectNoOther();
    return action;
}

DeleteAction readDelete(JsonFields& line)
{
    JsonFields fields = line.fields("delete");
    DeleteAction action{fields.text("dn")};
    fields.expectNoOther();
    return action;
}

SuppressAction readSuppress(JsonFields& line)
{
    const std::string state = line.text("suppress");
    if (state != "on" && state != "off") {
        throw ValueError("suppress: not on or off", state);
    }
    return {state == "on"};
}

SettleAction readSettle(JsonFields& line)
{
    const Poco::Dynamic::Var value = line.get("settle");
    if (value.isBoolean() && value.convert<bool>()) {
        return {};
    }
    return {line.number("settle", 0.05, 600)};
}

std::string readKind(const JsonFields& fields)
{
    std::string kind;
    for (const char* candidate : {"raise", "clear", "alert", "suppress", "set", "create", "delete", "settle"}) {
        if (!fields.has(candidate)) {
            continue;
        }
        if (!kind.empty()) {
            throw ValueError("two actions in one line", kind + ", " + candidate);
        }
        kind = candidate;
    }
    if (kind.empty()) {
        throw ValueError("no action");
    }
    return kind;
}

}  // namespace

ScenarioAction readAction(JsonFields fields, std::uint64_t startTime)
{
    const std::string kind = readKind(fields);
    ScenarioAction action;
    action.at = fields.number("at", 0, longestScenario);
    if (kind == "suppress") {
        action.what = readSuppress(fields);
    } else if (kind == "set") {
        action.what = readWrite<SetAction>(fields, kind);
    } else if (kind == "create") {
        action.what = readWrite<CreateAction>(fields, kind);
    } else if (kind == "delete") {
        action.what = readDelete(fields);
    } else if (kind == "settle") {
        action.what = readSettle(fields);
    } else {
        const auto sinceStart = static_cast<std::uint64_t>(std::llround(action.at * 1e9));
        action.what = readNotification(fields, kind, startTime != 0 ? startTime + sinceStart : 0);
    }
    fields.expectNoOther();
    return action;
}

}  // namespace ZorvNode
