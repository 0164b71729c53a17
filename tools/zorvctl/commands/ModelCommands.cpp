#include "Failure.hpp"
#include "JsonAccess.hpp"
#include "commands/Command.hpp"
#include "commands/ModelHints.hpp"
#include "files/LineText.hpp"
#include "model/ModelReader.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

struct CheckOptions {
    std::string file;
};

struct ReloadOptions {};

std::string counted(std::size_t number, const std::string& one, const std::string& more)
{
    return std::to_string(number) + " " + (number == 1 ? one : more);
}

void check(const Context& context, const CheckOptions& options)
{
    try {
        const ModelFile file = readModel(options.file);
        context.console.out << toLineText(options.file) << ": in order, "
                            << counted(file.model->getClasses().size(), "class", "classes") << ", "
                            << counted(file.tree.getInstances().size(), "object", "objects") << "\n";
    } catch (const InputError& e) {
        throw Failure(badInput, std::string(e.what()) + "\nhint: " + modelHint(e.what()));
    }
}

void reload(const Context& context, const ReloadOptions& /*options*/)
{
    const JsonDocumentT answer = context.connect().post(Target("/v1/model/reload"), "");
    context.console.out << "in use: " << cellOf(answer, "model") << "\n";
}

}  // namespace

void addModelCommands(CLI::App& app, Context& context)
{
    CLI::App* const model = app.add_subcommand("model", "Check a model file, or have the node read its own anew");
    model->require_subcommand(1);
    const auto checkCommand =
        addCommand<CheckOptions>(*model, context, "check", "Check a model file; needs no node", R"(Examples:
  zorvctl model check alarm-model.xml

The first thing that is wrong is told with file, line and value, and how to mend it; exit code 2 then.)",
                                 &check);
    checkCommand.app.add_option("FILE", checkCommand.options.file, "Model file")->required();
    addCommand<ReloadOptions>(*model, context, "reload", "Have the node read its model file anew", R"(Examples:
  zorvctl model reload
  zorvctl model check /etc/zorv/alarm-model.xml && zorvctl model reload

The node checks the file first; the model in use stays when it is wrong.)",
                              &reload);
}

}  // namespace ZorvCtl
