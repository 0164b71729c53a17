#include "JsonAccess.hpp"
#include "Table.hpp"
#include "commands/Arguments.hpp"
#include "commands/Command.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

struct ListOptions {
    bool json = false;
};

struct StateOptions {
    std::string operation;
    std::string name;
    std::string reason;
};

Colour colourOfState(const std::string& state)
{
    return state == "failed" ? Colour::boldRed : state == "stopped" ? Colour::yellow : Colour::none;
}

void list(const Context& context, const ListOptions& options)
{
    const JsonDocumentT answer = context.connect().get(Target("/v1/components"));
    if (options.json) {
        context.console.out << indentedJson(answer);
        return;
    }
    Table table({"COMPONENT", "STATE"});
    for (const JsonT* component : entriesOf(answer, "components")) {
        const std::string state = cellOf(*component, "state");
        table.add({cellOf(*component, "name"), {state, colourOfState(state)}});
    }
    table.print(context.console);
}

void changeState(const Context& context, const StateOptions& options)
{
    JsonWriter body;
    body.beginObject();
    if (!options.reason.empty()) {
        body.member("reason", options.reason);
    }
    const Target target = Target("/v1/components").segment(options.name).segment(options.operation);
    const JsonDocumentT answer = context.connect().post(target, body.endObject().take());
    context.console.out << cellOf(answer, "name") << " is " << cellOf(answer, "state") << "\n";
}

void addStateCommand(CLI::App& app, Context& context, const std::string& operation, const std::string& description,
                     const std::string& examples)
{
    const auto command = addCommand<StateOptions>(app, context, operation, description, examples, &changeState);
    command.options.operation = operation;
    command.app.add_option("NAME", command.options.name, "Name of the component")
        ->required()
        ->check(checkedBy(&parseName));
    command.app
        .add_option("--reason", command.options.reason,
                    "activate, deactivate, fail-over or switch-over (default: " +
                        std::string(operation == "start" ? "" : "de") + "activate)")
        ->type_name("REASON")
        ->check(CLI::IsMember({"activate", "deactivate", "fail-over", "switch-over"}));
}

}  // namespace

void addComponentCommands(CLI::App& app, Context& context)
{
    CLI::App* const component = app.add_subcommand("component", "List, start and stop the node's components");
    component->require_subcommand(1);
    const auto listCommand = addCommand<ListOptions>(*component, context, "list", "List the components", R"(Examples:
  zorvctl component list)",
                                                     &list);
    listCommand.app.add_flag("--json", listCommand.options.json, "As JSON");
    addStateCommand(*component, context, "start", "Start a component", R"(Examples:
  zorvctl component start ZorvFmComponent
  zorvctl component start ZorvFmComponent --reason fail-over)");
    addStateCommand(*component, context, "stop", "Stop a component", R"(Examples:
  zorvctl component stop ZorvFmComponent --reason switch-over)");
}

}  // namespace ZorvCtl
