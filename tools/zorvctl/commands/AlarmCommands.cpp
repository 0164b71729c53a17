#include "Failure.hpp"
#include "Follower.hpp"
#include "JsonAccess.hpp"
#include "Names.hpp"
#include "Table.hpp"
#include "commands/AlarmList.hpp"
#include "commands/Arguments.hpp"
#include "commands/Command.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

constexpr std::chrono::milliseconds burst(100);  // alarms that come together are drawn together
constexpr std::chrono::seconds longestBurst(1);
const char* const clearScreen = "\033[H\033[J";

struct AlarmsOptions {
    AlarmFilter filter;
    bool json = false;
    bool watch = false;
};

struct AlarmOptions {
    std::string id;
    bool json = false;
};

void printJson(const Context& context, NodeConnection& connection, const AlarmFilter& filter)
{
    JsonDocumentT document(rapidjson::kObjectType);
    auto& allocator = document.GetAllocator();
    JsonT alarms(rapidjson::kArrayType);
    readAlarms(connection, filter, [&](const JsonT& alarm) { alarms.PushBack(JsonT(alarm, allocator), allocator); });
    const JsonT total(alarms.Size());
    document.AddMember("alarms", alarms, allocator);
    document.AddMember("total", JsonT(total, allocator), allocator);
    context.console.out << indentedJson(document);
}

/// Waits until the list may have changed, and then until the burst is over.
void awaitChange(Follower& follower)
{
    Event event;
    while (!follower.wasReopened()) {
        if (follower.next(event, longestBurst) && event.name != "heartbeat") {
            break;
        }
    }
    const auto latest = std::chrono::steady_clock::now() + longestBurst;
    while (std::chrono::steady_clock::now() < latest && follower.next(event, burst)) {}
}

void watchAlarms(const Context& context, NodeConnection& connection, const AlarmFilter& filter)
{
    const Target target("/v1/notifications");
    Follower follower(connection, context.console, target, target);
    for (bool isFirst = true;; isFirst = false) {
        context.console.out << (context.console.outIsTerminal ? clearScreen : isFirst ? "" : "\n");
        printAlarms(context.console, connection, filter);
        context.console.flush();
        awaitChange(follower);
    }
}

void listAlarms(const Context& context, const AlarmsOptions& options)
{
    NodeConnection connection = context.connect();
    if (options.watch) {
        watchAlarms(context, connection, options.filter);
    } else if (options.json) {
        printJson(context, connection, options.filter);
    } else {
        printAlarms(context.console, connection, options.filter);
    }
}

const char* labelOf(const std::string& attribute)
{
    static const std::pair<const char*, const char*> labels[] = {{"dn", "object"},
                                                                 {"fmAlarmId", "id"},
                                                                 {"activeSeverity", "severity"},
                                                                 {"source", "resource"},
                                                                 {"specificProblem", "problem"},
                                                                 {"additionalText", "text"},
                                                                 {"lastEventTime", "last event"},
                                                                 {"sequenceNumber", "sequence number"},
                                                                 {"majorType", "major type"},
                                                                 {"minorType", "minor type"},
                                                                 {"eventType", "event type"},
                                                                 {"probableCause", "probable cause"},
                                                                 {"originalEventTime", "first event"},
                                                                 {"originalSeverity", "first severity"},
                                                                 {"originalAdditionalText", "first text"},
                                                                 {"additionalInfo", "info"}};
    for (const auto& [name, label] : labels) {
        if (attribute == name) {
            return label;
        }
    }
    return attribute.c_str();
}

Cell valueCell(const std::string& attribute, const JsonT& value)
{
    const bool isSeverity = attribute == "activeSeverity" || attribute == "originalSeverity";
    const std::string text = attribute == "probableCause" ? probableCauseText(value)
                             : attribute == "eventType"   ? eventTypeText(value)
                                                          : cellOf(value);
    return {text, isSeverity ? colourOf(text) : Colour::none};
}

void addInfo(Table& table, const JsonT& alarm)
{
    const auto pairs = entriesOf(alarm, "additionalInfo");
    for (const JsonT* pair : pairs) {
        table.add({pair == pairs.front() ? "info" : "", cellOf(*pair, "name") + " = " + cellOf(*pair, "value")});
    }
}

void showAlarm(const Context& context, const AlarmOptions& options)
{
    const JsonDocumentT alarm = context.connect().get(Target("/v1/alarms").segment(options.id));
    if (options.json || !alarm.IsObject()) {
        context.console.out << indentedJson(alarm);
        return;
    }
    Table table({});
    for (const auto& member : alarm.GetObject()) {
        const std::string attribute = jsonText(member.name);
        if (attribute != "additionalInfo") {
            table.add({labelOf(attribute), valueCell(attribute, member.value)});
        }
    }
    addInfo(table, alarm);
    table.print(context.console);
}

void addListCommand(CLI::App& app, Context& context)
{
    const auto alarms = addCommand<AlarmsOptions>(app, context, "alarms", "List the active alarms", R"(Examples:
  zorvctl alarms
  zorvctl alarms --severity critical,major --dn ManagedElement=1,Slot=2
  zorvctl alarms --type 32473/101 --json
  zorvctl alarms --watch          # drawn anew at each change, until Ctrl-C

Severities are coloured on a terminal, unless NO_COLOR is set.)",
                                                  &listAlarms);
    alarms.app.add_option("--severity", alarms.options.filter.severity, "Only these, separated by commas")
        ->type_name("NAMES")
        ->check(checkedBy(&parseSeverityNames));
    alarms.app.add_option("--dn", alarms.options.filter.dn, "Only resources whose DN begins so")->type_name("PREFIX");
    alarms.app.add_option("--type", alarms.options.filter.type, "Only of this type")
        ->type_name("MAJOR[/MINOR]")
        ->check(checkedBy(&parseType));
    auto* json = alarms.app.add_flag("--json", alarms.options.json, "As JSON");
    alarms.app.add_flag("--watch", alarms.options.watch, "List them anew at each change")->excludes(json);
}

}  // namespace

void addAlarmCommands(CLI::App& app, Context& context)
{
    addListCommand(app, context);
    const auto alarm = addCommand<AlarmOptions>(app, context, "alarm", "Show everything about one alarm", R"(Examples:
  zorvctl alarm 7                 # the id that stands first in zorvctl alarms
  zorvctl alarm 7 --json)",
                                                &showAlarm);
    alarm.app.add_option("ID", alarm.options.id, "Id of the alarm")->required()->check(checkedBy(&parseAlarmId));
    alarm.app.add_flag("--json", alarm.options.json, "As JSON");
}

}  // namespace ZorvCtl
