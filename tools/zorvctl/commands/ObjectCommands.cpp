#include <algorithm>
#include <map>

#include "Failure.hpp"
#include "JsonAccess.hpp"
#include "commands/Arguments.hpp"
#include "commands/Command.hpp"
#include "commands/ObjectValues.hpp"
#include "files/LineText.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

constexpr int deepestTree = 64;

struct ReadOptions {
    std::string dn;
    int depth = 0;
    bool json = false;
};

struct ChangeOptions {
    std::string dn;
    std::vector<std::string> values;
};

JsonDocumentT readObjects(const Context& context, const ReadOptions& options, bool withAttributes)
{
    Target target("/v1/objects");
    if (!options.dn.empty()) {
        target.parameter("dn", options.dn);
    }
    target.parameter("depth", std::to_string(options.depth));
    if (!withAttributes) {
        target.parameter("attributes", "false");
    }
    return context.connect().get(target);
}

void get(const Context& context, const ReadOptions& options)
{
    const JsonDocumentT answer = readObjects(context, options, true);
    if (options.json) {
        context.console.out << indentedJson(answer);
        return;
    }
    for (const JsonT* object : entriesOf(answer, "objects")) {
        context.console.out << context.console.coloured(cellOf(*object, "dn"), Colour::bold) << "\n";
        const JsonT* attributes = find(*object, "attributes");
        if (attributes == nullptr || !attributes->IsObject()) {
            continue;
        }
        for (const auto& attribute : attributes->GetObject()) {
            context.console.out << "  " << cellOf(attribute.name) << " = " << cellOf(attribute.value) << "\n";
        }
    }
}

/// DNs below their parents, in the order of the node.
class Tree {
public:
    explicit Tree(const std::vector<const JsonT*>& objects)
    {
        for (const JsonT* object : objects) {
            known[textOr(*object, "dn", "")];
        }
        for (const JsonT* object : objects) {
            const std::string dn = textOr(*object, "dn", "");
            const auto parent = known.find(dn.substr(0, std::min(dn.rfind(','), dn.size())));
            (parent == known.end() || parent->first == dn ? roots : parent->second).push_back(dn);
        }
    }

    void print(std::ostream& out) const
    {
        for (const std::string& root : roots) {
            out << toLineText(root) << "\n";
            printBelow(out, root, "  ");
        }
    }

private:
    void printBelow(std::ostream& out, const std::string& dn, const std::string& indentation) const
    {
        for (const std::string& child : known.at(dn)) {
            out << indentation << toLineText(child.substr(child.rfind(',') + 1)) << "\n";
            printBelow(out, child, indentation + "  ");
        }
    }

    std::map<std::string, std::vector<std::string>> known;  // children by DN
    std::vector<std::string> roots;
};

void showTree(const Context& context, const ReadOptions& options)
{
    const JsonDocumentT answer = readObjects(context, options, false);
    if (options.json) {
        context.console.out << indentedJson(answer);
    } else {
        Tree(entriesOf(answer, "objects")).print(context.console.out);
    }
}

void change(const Context& context, const std::string& what, const std::string& dn, const std::string& attributes)
{
    JsonWriter json;
    json.beginObject().key("changes").beginArray().beginObject().key(what).beginObject().member("dn", dn);
    if (!attributes.empty()) {
        json.key("attributes").raw(attributes);
    }
    json.endObject().endObject().endArray().endObject();
    context.connect().post(Target("/v1/objects"), json.take());
    context.console.out << what << ": " << toLineText(dn) << "\n";
}

std::string valuesOf(const ChangeOptions& options, const JsonT& present)
{
    try {
        return attributesJson(options.values, present);
    } catch (const ValueError& e) {
        throw Failure(badInput, e.what());
    }
}

void set(const Context& context, const ChangeOptions& options)
{
    const JsonDocumentT answer = readObjects(context, {options.dn}, true);
    const auto objects = entriesOf(answer, "objects");
    const JsonT none;
    const JsonT* present = objects.empty() ? nullptr : find(*objects.front(), "attributes");
    change(context, "set", options.dn, valuesOf(options, present != nullptr ? *present : none));
}

void create(const Context& context, const ChangeOptions& options)
{
    change(context, "create", options.dn, valuesOf(options, JsonT()));
}

void remove(const Context& context, const ChangeOptions& options)
{
    change(context, "delete", options.dn, "");
}

void addReadCommands(CLI::App& app, Context& context)
{
    const auto getCommand =
        addCommand<ReadOptions>(app, context, "get", "Show objects with their attributes", R"(Examples:
  zorvctl object get ManagedElement=1,SystemFunctions=1,Fm=1
  zorvctl object get ManagedElement=1 --depth 2 --json)",
                                &get);
    getCommand.app.add_option("DN", getCommand.options.dn, "Object to begin with")->required();
    getCommand.app.add_option("--depth", getCommand.options.depth, "Levels below it (default 0)")
        ->type_name("NUMBER")
        ->check(CLI::Range(0, deepestTree));
    getCommand.app.add_flag("--json", getCommand.options.json, "As JSON");
    const auto tree = addCommand<ReadOptions>(app, context, "tree", "Show which objects there are", R"(Examples:
  zorvctl object tree
  zorvctl object tree ManagedElement=1,SystemFunctions=1 --depth 1)",
                                              &showTree);
    tree.options.depth = deepestTree;
    tree.app.add_option("DN", tree.options.dn, "Object to begin with (default: the root)");
    tree.app.add_option("--depth", tree.options.depth, "Levels below it (default: all)")
        ->type_name("NUMBER")
        ->check(CLI::Range(0, deepestTree));
    tree.app.add_flag("--json", tree.options.json, "As JSON");
}

void addChangeCommand(CLI::App& app, Context& context, const std::string& name, const std::string& description,
                      const std::string& examples, void (*run)(const Context&, const ChangeOptions&))
{
    const auto command = addCommand<ChangeOptions>(app, context, name, description, examples, run);
    command.app.add_option("DN", command.options.dn, "The object")->required();
    if (name != "delete") {
        command.app.add_option("VALUES", command.options.values, "Values of attributes")
            ->type_name("NAME=VALUE")
            ->required(name == "set")
            ->check(checkedBy(&parsePair));
    }
}

}  // namespace

void addObjectCommands(CLI::App& app, Context& context)
{
    CLI::App* const object = app.add_subcommand("object", "Read and change managed objects");
    object->require_subcommand(1);
    object->footer(
        R"(Each of set, create and delete is one transaction: done as a whole, or refused and nothing has changed.
zorvctl object COMMAND --help shows examples.)");
    addReadCommands(*object, context);
    addChangeCommand(*object, context, "set", "Change attributes of an object", R"(Examples:
  zorvctl object set ManagedElement=1 externalId=router-8
  zorvctl object set ManagedElement=1,SystemFunctions=1,Fm=1 heartbeatInterval=30
  zorvctl object set Node=1 'names=["a", "b"]' 'address={"host": "h", "port": 80}' comment=null

A value that begins with [, { or " is JSON. Numbers, true, false and null are taken as such, except that an
attribute that holds a text now gets a text; null is no value. Everything else is a text.)",
                     &set);
    addChangeCommand(*object, context, "create", "Create an object", R"(Examples:
  zorvctl object create ManagedElement=1,SystemFunctions=1,Fm=1,FmAlarmModel=extra
  zorvctl object create Node=2 size=3 name=r7 'label="17"'

Values as in zorvctl object set --help; a text that looks like a number is given as JSON: 'NAME="17"'.)",
                     &create);
    addChangeCommand(*object, context, "delete", "Delete an object", R"(Examples:
  zorvctl object delete ManagedElement=1,SystemFunctions=1,Fm=1,FmAlarmModel=extra)",
                     &remove);
}

}  // namespace ZorvCtl
