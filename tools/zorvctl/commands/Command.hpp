/// How a command comes onto the command line: its options, its help, and what it does once all has been read.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <string>

#include "Console.hpp"
#include "Interruption.hpp"
#include "NodeConnection.hpp"
#include "files/InputError.hpp"

namespace ZorvCtl {

/// What all commands share.
struct Context {
    const Console& console;
    Interruption& interruption;
    std::string socket;
    std::function<void()> command;  ///< what the command line asks for

    NodeConnection connect() const { return NodeConnection(socket, interruption); }
};

/// A command that may have commands of its own, and then does nothing itself when one of them is given.
template <class OptionsT>
struct NewCommand {
    CLI::App& app;
    OptionsT& options;
};

/// @param examples lines below the options in the command's help.
template <class OptionsT>
NewCommand<OptionsT> addCommand(CLI::App& parent, Context& context, const std::string& name,
                                const std::string& description, const std::string& examples,
                                void (*run)(const Context&, const OptionsT&))
{
    const auto options = std::make_shared<OptionsT>();
    CLI::App* const app = parent.add_subcommand(name, description);
    app->footer(examples);
    app->callback([app, &context, options, run] {
        if (app->get_subcommands().empty()) {
            context.command = [&context, options, run] { run(context, *options); };
        }
    });
    return {*app, *options};
}

/// A check for an option: what is wrong with its text, as the parser says it, or nothing.
template <class ParserT>
std::function<std::string(const std::string&)> checkedBy(ParserT parser)
{
    return [parser](const std::string& text) -> std::string {
        try {
            parser(text);
            return "";
        } catch (const ZorvInput::ValueError& e) {
            return e.what();
        }
    };
}

void addPublishCommands(CLI::App& app, Context& context);
void addAlarmCommands(CLI::App& app, Context& context);
void addSummaryCommands(CLI::App& app, Context& context);
void addNotificationCommands(CLI::App& app, Context& context);
void addObjectCommands(CLI::App& app, Context& context);
void addModelCommands(CLI::App& app, Context& context);
void addNodeCommands(CLI::App& app, Context& context);
void addComponentCommands(CLI::App& app, Context& context);
void addLogCommands(CLI::App& app, Context& context);
void addPlayCommand(CLI::App& app, Context& context);

}  // namespace ZorvCtl
