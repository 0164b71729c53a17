#include "EventText.hpp"

#include <utility>

#include "Failure.hpp"
#include "JsonAccess.hpp"
#include "Names.hpp"
#include "TimeText.hpp"
#include "files/InputError.hpp"
#include "files/LineText.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

constexpr unsigned deepestEvent = 16;

void parseData(const Event& event, JsonDocumentT& data)
{
    if (event.data.empty()) {
        data.SetNull();
        return;
    }
    try {
        parseJson(event.data, deepestEvent, data);
    } catch (const ValueError& e) {
        throw Failure(refused, "the node has sent an event that is " + std::string(e.what()));
    }
}

std::string quoted(const std::string& text)
{
    std::string marked;
    for (const char character : text) {
        marked += character == '"' || character == '\\' ? std::string("\\") + character : std::string(1, character);
    }
    return "\"" + toLineText(marked) + "\"";
}

std::string timeOf(const JsonT& data, const char* name)
{
    return timeText(numberOr(data, name, 0));
}

const JsonT& valueOf(const JsonT& data, const char* name)
{
    static const JsonT none;
    const JsonT* value = find(data, name);
    return value == nullptr ? none : *value;
}

std::string plain(const JsonT& data, const char* name)
{
    return find(data, name) == nullptr ? "" : std::string(" ") + name + "=" + cellOf(data, name);
}

std::string original(const JsonT& data)
{
    std::string text;
    if (valueOf(data, "originalSeverity") != valueOf(data, "severity")) {
        text += " originalSeverity=" + severityOf(valueOf(data, "originalSeverity"));
    }
    if (valueOf(data, "originalEventTime") != valueOf(data, "eventTime")) {
        text += " originalEventTime=" + timeOf(data, "originalEventTime");
    }
    if (valueOf(data, "originalAdditionalText") != valueOf(data, "additionalText")) {
        text += " originalAdditionalText=" + quoted(textOr(data, "originalAdditionalText", ""));
    }
    return text;
}

std::string infoOf(const JsonT& data)
{
    std::string text;
    for (const JsonT* pair : entriesOf(data, "additionalInfo")) {
        if (pair->IsArray() && pair->Size() == 2) {
            text += std::string(text.empty() ? "" : ", ") + quoted(jsonText((*pair)[0])) + "=" +
                    quoted(jsonText((*pair)[1]));
        }
    }
    return text.empty() ? "" : " additionalInfo={" + text + "}";
}

std::string alarmText(const Console& console, const JsonT& data)
{
    const JsonT& stateful = valueOf(data, "stateful");
    const std::string severity = severityOf(valueOf(data, "severity"));
    const bool isAlert = stateful.IsBool() && !stateful.GetBool();
    const char* const kind = isAlert ? "alert" : severity == "CLEARED" ? "clear" : "alarm";
    return std::string(kind) + " " + timeOf(data, "eventTime") + " " + console.coloured(severity, colourOf(severity)) +
           " dn=" + quoted(textOr(data, "dn", "")) + " type=" + cellOf(data, "majorType") + "/" +
           cellOf(data, "minorType") + " specificProblem=" + quoted(textOr(data, "specificProblem", "")) +
           " additionalText=" + quoted(textOr(data, "additionalText", "")) + plain(data, "seqNo") +
           plain(data, "alarmId") + plain(data, "originalSeqNo") +
           " eventType=" + quoted(eventTypeText(valueOf(data, "eventType"))) +
           " probableCause=" + quoted(probableCauseText(valueOf(data, "probableCause"))) + original(data) +
           infoOf(data);
}

std::string heartbeatText(const JsonT& data)
{
    return "heartbeat" + plain(data, "lastStatefulSeqNo") +
           " lastStatefulTimestamp=" + timeOf(data, "lastStatefulTimestamp") + plain(data, "lastStatelessSeqNo") +
           " lastStatelessTimestamp=" + timeOf(data, "lastStatelessTimestamp");
}

}  // namespace

std::string eventText(const Console& console, const Event& event)
{
    JsonDocumentT data;
    parseData(event, data);
    if (event.name == "alarm") {
        return alarmText(console, data);
    }
    if (event.name == "heartbeat") {
        return heartbeatText(data);
    }
    if (event.name == "line") {
        return cellOf(data, "line");
    }
    if (event.name == "rebuilt") {
        return "rebuilt: the alarm list is to be read anew: zorvctl alarms";
    }
    if (event.name == "resync") {
        return "resync: notifications are missing, the alarm list is to be read anew: zorvctl alarms";
    }
    return toLineText(event.name + " " + event.data);
}

std::string eventJson(const Event& event)
{
    JsonDocumentT data;
    parseData(event, data);
    JsonDocumentT line(rapidjson::kObjectType);
    auto& allocator = line.GetAllocator();
    line.AddMember("event", JsonT(event.name, allocator), allocator);
    if (!event.id.empty()) {
        line.AddMember("id", JsonT(event.id, allocator), allocator);
    }
    line.AddMember("data", JsonT(data, allocator), allocator);
    return jsonText(line);
}

}  // namespace ZorvCtl
