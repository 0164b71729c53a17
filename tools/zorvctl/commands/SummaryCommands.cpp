#include "JsonAccess.hpp"
#include "Table.hpp"
#include "commands/Command.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

struct SuppressOptions {
    std::string state;
};

struct SummaryOptions {
    bool json = false;
};

/// Attributes of the FM object in the words of the alarm list.
std::string labelOf(const std::string& attribute)
{
    static const std::pair<const char*, const char*> labels[] = {
        {"totalActive", "active alarms"},
        {"sumCritical", "critical"},
        {"sumMajor", "major"},
        {"sumMinor", "minor"},
        {"sumWarning", "warning"},
        {"lastSequenceNo", "last sequence number"},
        {"lastChanged", "last change"},
        {"heartbeatInterval", "heartbeat interval"},
    };
    for (const auto& [name, label] : labels) {
        if (attribute == name) {
            return label;
        }
    }
    return attribute;
}

std::string valueText(const std::string& attribute, const JsonT& value)
{
    const std::string text = cellOf(value);
    if (attribute == "heartbeatInterval") {
        return text == "0" ? "off" : text + " s";
    }
    const bool isBeforeAll = attribute == "lastChanged" && text == "1970-01-01T00:00:00.000+00:00";
    return isBeforeAll ? "never" : text;
}

void showSummary(const Context& context, const SummaryOptions& options)
{
    const JsonDocumentT summary = context.connect().get(Target("/v1/summary"));
    if (options.json || !summary.IsObject()) {
        context.console.out << indentedJson(summary);
        return;
    }
    Table table({});
    for (const auto& member : summary.GetObject()) {
        const std::string attribute = cellOf(member.name);
        table.add({labelOf(attribute), valueText(attribute, member.value)});
    }
    table.print(context.console);
}

void suppress(const Context& context, const SuppressOptions& options)
{
    const bool on = options.state == "on";
    context.connect().put(Target("/v1/suppression"), on ? R"({"on":true})" : R"({"on":false})");
    context.console.out << "suppression is " << options.state << "\n";
}

}  // namespace

void addSummaryCommands(CLI::App& app, Context& context)
{
    const auto summary =
        addCommand<SummaryOptions>(app, context, "summary", "Show how many alarms are active", R"(Examples:
  zorvctl summary)",
                                   &showSummary);
    summary.app.add_flag("--json", summary.options.json, "As JSON");
    const auto suppression =
        addCommand<SuppressOptions>(app, context, "suppress", "Hold back northbound alarm notifications, or no longer",
                                    R"(Examples:
  zorvctl suppress on             # before maintenance; alerts are told all the same
  zorvctl suppress off)",
                                    &suppress);
    suppression.app.add_option("STATE", suppression.options.state, "on or off")
        ->required()
        ->check(CLI::IsMember({"on", "off"}));
}

}  // namespace ZorvCtl
