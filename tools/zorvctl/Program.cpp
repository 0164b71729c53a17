#include "Program.hpp"

#include <algorithm>
#include <cstdlib>

#include "Failure.hpp"
#include "commands/Command.hpp"
#include "files/LineText.hpp"

namespace ZorvCtl {

using ZorvInput::toLineText;

namespace {

const char* const defaultSocket = "/run/zorv/zorvd.sock";

const char* const description =
    "zorvctl talks to a zorv node: it raises and clears alarms, shows them, follows what the node\n"
    "tells northbound, and manages the node.";

const char* const footer = R"(Examples:
  zorvctl status
  zorvctl raise ManagedElement=1,Port=4 32473/101 --severity major --text 'no light'
  zorvctl alarms
  zorvctl notifications --follow

zorvctl COMMAND --help explains each command, with examples.

Socket:
  --socket PATH, else the environment variable ZORV_SOCKET, else /run/zorv/zorvd.sock

Exit codes:
  0    done
  1    the node has refused, or it failed: its reason is on standard error; for status: something is wrong
  2    wrong command line or input file; nothing was done
  3    no node answers on the socket
  130  ended by Ctrl-C)";

/// "zorvctl object set" for what the command line has come to.
std::string nameOf(const CLI::App& app)
{
    const CLI::App* last = &app;
    std::string name = app.get_name();
    while (!last->get_subcommands().empty()) {
        last = last->get_subcommands().back();
        name += " " + last->get_name();
    }
    return name;
}

/// Options of zorvctl itself may stand behind the command too; the name of an argument says enough about it.
void finish(CLI::App& app)
{
    app.fallthrough();
    for (CLI::Option* option : app.get_options([](CLI::Option* each) { return each->get_positional(); })) {
        option->type_name(option->get_type_name() == "NAME=VALUE" ? "NAME=VALUE" : "");
    }
    for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
        finish(*command);
    }
}

void build(CLI::App& app, Context& context)
{
    app.footer(footer);
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", std::string("zorvctl ") + ZORV_VERSION, "Print the version and exit");
    app.add_option("--socket", context.socket, "Socket of the node")->type_name("PATH");
    app.require_subcommand(1);
    addPublishCommands(app, context);
    addAlarmCommands(app, context);
    addSummaryCommands(app, context);
    addNotificationCommands(app, context);
    addObjectCommands(app, context);
    addModelCommands(app, context);
    addComponentCommands(app, context);
    addNodeCommands(app, context);
    addLogCommands(app, context);
    addPlayCommand(app, context);
    finish(app);
}

/// What the parser says, in words of this command line.
std::string complaint(const CLI::App& app, const CLI::ParseError& error)
{
    for (const std::string& unknown : app.remaining(true)) {
        if (unknown != "--") {
            return "not understood: " + toLineText(unknown);
        }
    }
    const bool lacksCommand = std::string(error.what()) == CLI::RequiredError::Subcommand(1).what();
    return lacksCommand ? "a command is needed" : error.what();
}

/// @return whether there is a command to run; otherwise exitCode says how it ends.
bool parse(CLI::App& app, std::vector<std::string> arguments, const Console& console, int& exitCode)
{
    try {
        std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the back
        app.parse(std::move(arguments));
        return true;
    } catch (const CLI::Success& e) {
        exitCode = app.exit(e, console.out, console.err);
    } catch (const CLI::ParseError& e) {
        console.tell(complaint(app, e) + "; see " + nameOf(app) + " --help");
        exitCode = badInput;
    }
    return false;
}

int perform(const Context& context, const Console& console)
{
    try {
        context.command();
        return done;
    } catch (const Failure& e) {
        if (*e.what() != '\0') {
            console.tell(e.what());
        }
        return e.getExitCode();
    } catch (const ZorvInput::InputError& e) {
        console.tell(e.what());
        return badInput;
    } catch (const std::exception& e) {
        console.tell(e.what());
        return refused;
    }
}

/// What is left to write has to reach its reader too.
int flushed(const Console& console, int exitCode)
{
    try {
        console.flush();
        return exitCode;
    } catch (const OutputClosed& e) {
        if (*e.what() != '\0') {
            console.tell(e.what());
        }
        return exitCode == done ? e.getExitCode() : exitCode;
    }
}

}  // namespace

int run(std::vector<std::string> arguments, const Console& console, Interruption& interruption)
{
    const char* const fromEnvironment = std::getenv("ZORV_SOCKET");
    const bool isSet = fromEnvironment != nullptr && *fromEnvironment != '\0';
    Context context{console, interruption, isSet ? fromEnvironment : defaultSocket, {}};
    CLI::App app{description, "zorvctl"};
    build(app, context);
    int exitCode = done;
    if (parse(app, std::move(arguments), console, exitCode)) {
        exitCode = perform(context, console);
    }
    return flushed(console, exitCode);
}

}  // namespace ZorvCtl
