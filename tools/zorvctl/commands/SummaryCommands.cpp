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

void showSummary(const Context& context, const SummaryOptions& options)
{
    const JsonDocumentT summary = context.connect().get(Target("/v1/summary"));
    if (options.json || !summary.IsObject()) {
        context.console.out << indentedJson(summary);
        return;
    }
    Table table({});
    for (const auto& member : summary.GetObject()) {
        table.add({cellOf(member.name), cellOf(member.value)});
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
