#include "scenario/ActionReader.hpp"

#include <cmath>

#include "notification/NotificationReader.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

/// An object with a DN and, for set and create, attributes; taken as it stands.
ChangeAction readChange(JsonFields& line, const std::string& kind)
{
    JsonFields fields = line.fields(kind.c_str());
    fields.text("dn");
    if (kind != "delete") {
        fields.fields("attributes");
    }
    fields.expectNoOther();
    JsonWriter json;
    json.beginObject().key(kind).raw(jsonText(fields.json())).endObject();
    return {json.take()};
}

SuppressAction readSuppress(JsonFields& line)
{
    const std::string state = line.text("suppress");
    if (state != "on" && state != "off") {
        throw FieldError("suppress", "not on or off", state);
    }
    return {state == "on"};
}

SettleAction readSettle(JsonFields& line)
{
    if (line.get("settle").IsTrue()) {
        return {};
    }
    return {line.number("settle", 0.05, 600)};
}

/// Of a line that has none: what stands in its place.
ValueError noAction(const JsonFields& fields)
{
    for (const auto& member : fields.json().GetObject()) {
        const std::string name = jsonText(member.name);
        if (name != "at") {
            return ValueError("no such action", name);
        }
    }
    return ValueError("no action");
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
        throw noAction(fields);
    }
    return kind;
}

}  // namespace

ScenarioAction readAction(JsonFields& fields, std::uint64_t startTime)
{
    const std::string kind = readKind(fields);
    ScenarioAction action;
    action.at = fields.number("at", 0, longestScenario);
    if (kind == "suppress") {
        action.what = readSuppress(fields);
    } else if (kind == "settle") {
        action.what = readSettle(fields);
    } else if (kind == "set" || kind == "create" || kind == "delete") {
        action.what = readChange(fields, kind);
    } else {
        const auto sinceStart = static_cast<std::uint64_t>(std::llround(action.at * 1e9));
        action.what = PublishAction{kind, readNotification(fields, startTime != 0 ? startTime + sinceStart : 0)};
    }
    fields.expectNoOther();
    return action;
}

}  // namespace ZorvCtl
