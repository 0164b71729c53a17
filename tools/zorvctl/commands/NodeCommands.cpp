#include "Failure.hpp"
#include "JsonAccess.hpp"
#include "Table.hpp"
#include "commands/Command.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

struct ShowOptions {
    bool json = false;
};

void showLists(const Context& context, const ShowOptions& options)
{
    const JsonDocumentT answer = context.connect().get(Target("/v1/lists"));
    if (options.json) {
        context.console.out << indentedJson(answer);
        return;
    }
    Table table({"LIST", "ITEMS", "BYTES EACH"});
    for (const JsonT* list : entriesOf(answer, "lists")) {
        table.add({cellOf(*list, "name"), cellOf(*list, "items"), cellOf(*list, "itemSize")});
    }
    table.print(context.console);
}

void showCounters(const Context& context, const ShowOptions& options)
{
    const JsonDocumentT answer = context.connect().get(Target("/v1/counters"));
    if (options.json || !answer.IsObject()) {
        context.console.out << indentedJson(answer);
        return;
    }
    Table table({});
    for (const auto& counter : answer.GetObject()) {
        table.add({cellOf(counter.name), cellOf(counter.value)});
    }
    table.print(context.console);
}

/// "2 d 3 h", the two largest units.
std::string durationText(std::uint64_t seconds)
{
    constexpr std::pair<std::uint64_t, const char*> units[] = {{86400, "d"}, {3600, "h"}, {60, "min"}, {1, "s"}};
    std::string text;
    int shown = 0;
    for (const auto& [length, unit] : units) {
        const std::uint64_t number = seconds / length;
        seconds %= length;
        if (shown < 2 && (number > 0 || shown > 0 || length == 1)) {
            text += (text.empty() ? "" : " ") + std::to_string(number) + " " + unit;
            ++shown;
        }
    }
    return text;
}

void addHealth(Table& table, const JsonT& health, bool isGood)
{
    table.add({"health", {cellOf(health, "health"), isGood ? Colour::green : Colour::boldRed}});
    for (const JsonT* reason : entriesOf(health, "reasons")) {
        table.add({"", {cellOf(*reason), Colour::boldRed}});
    }
}

void addNode(Table& table, const JsonT& node)
{
    table.add({"version", cellOf(node, "version")});
    table.add({"process", cellOf(node, "processId")});
    table.add(
        {"started", cellOf(node, "startTime") + ", " + durationText(numberOr(node, "uptimeSeconds", 0)) + " ago"});
    table.add({"store", cellOf(node, "store") + ", durability " + cellOf(node, "durability")});
    table.add({"state directory", cellOf(node, "stateDirectory")});
    table.add({"log directory", cellOf(node, "logDirectory")});
    table.add({"model", cellOf(node, "model")});
    table.add({"active alarms", cellOf(node, "activeAlarms")});
    const JsonT* const suppressed = find(node, "suppression");
    if (suppressed != nullptr && suppressed->IsTrue()) {
        table.add({"suppression", {"on: northbound is told of critical alarms and alerts only", Colour::yellow}});
    }
    const auto components = entriesOf(node, "components");
    for (const JsonT* component : components) {
        table.add({component == components.front() ? "components" : "",
                   cellOf(*component, "name") + " " + cellOf(*component, "state")});
    }
}

void printStatusJson(const Context& context, const JsonT& node, const JsonT& health)
{
    JsonDocumentT both(rapidjson::kObjectType);
    auto& allocator = both.GetAllocator();
    both.AddMember("node", JsonT(node, allocator), allocator);
    both.AddMember("health", JsonT(health, allocator), allocator);
    context.console.out << indentedJson(both);
}

void showStatus(const Context& context, const ShowOptions& options)
{
    NodeConnection connection = context.connect();
    const JsonDocumentT node = connection.get(Target("/v1/node"));
    const Answer health = connection.exchange("GET", Target("/v1/health"), "");
    if (find(health.body, "health") == nullptr) {
        expectGood(health);
    }
    const bool isGood = textOr(health.body, "health", "") == "ok";
    if (options.json) {
        printStatusJson(context, node, health.body);
    } else {
        Table table({});
        addHealth(table, health.body, isGood);
        addNode(table, node);
        table.print(context.console);
    }
    if (!isGood) {
        throw Failure(refused, "");
    }
}

void addShowCommand(CLI::App& app, Context& context, const std::string& name, const std::string& description,
                    const std::string& examples, void (*run)(const Context&, const ShowOptions&))
{
    const auto command = addCommand<ShowOptions>(app, context, name, description, examples, run);
    command.app.add_flag("--json", command.options.json, "As JSON");
}

}  // namespace

void addNodeCommands(CLI::App& app, Context& context)
{
    addShowCommand(app, context, "status", "Show whether the node is well, and what it is", R"(Examples:
  zorvctl status
  zorvctl status >/dev/null && echo all is well

Exit code 1 when the node says that something is wrong.)",
                   &showStatus);
    addShowCommand(app, context, "lists", "Show the replicated lists", R"(Examples:
  zorvctl lists)",
                   &showLists);
    addShowCommand(app, context, "counters", "Show what the node has counted since its start", R"(Examples:
  zorvctl counters
  zorvctl counters --json)",
                   &showCounters);
}

}  // namespace ZorvCtl
