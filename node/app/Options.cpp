#include "app/Options.hpp"

#include <CLI/CLI.hpp>
#include <Poco/NumberParser.h>

#include "app/ExitCode.hpp"

namespace ZorvNode {

namespace {

constexpr double slowest = 0.001;
constexpr double fastest = 1000000;

const char* const description = "zorvd runs component libraries, such as the fault management library, on a node.";

const char* const footer = R"(
Examples:
  zorvd --config node.xml                     run until SIGTERM or SIGINT; SIGHUP rereads the model
  zorvd --config node.xml --follow            and print northbound notifications as they come
  zorvd --config node.xml --play hour.jsonl --speed 600 --follow --show-alarms
                                              play an hour in six seconds, print what came out of it and
                                              the alarms that are active at its end, and stop

Notifications and the alarm table go to standard output, messages to standard error.

Exit codes:
  0  done
  1  failed while running; the reason is on standard error and in SystemLog.log
  2  bad command line, configuration, model or scenario: one line says what and where; nothing was started)";

/// "" or what is wrong with the text.
std::string checkSpeed(const std::string& text)
{
    double factor = 0;
    const bool isNumber = Poco::NumberParser::tryParseFloat(text, factor);
    return isNumber && factor >= slowest && factor <= fastest ? ""
                                                              : "not a factor from 0.001 to 1000000, \"" + text + "\"";
}

}  // namespace

std::optional<Options> readOptions(int argc, char** argv, int& exitCode)
{
    Options options;
    CLI::App app{description, "zorvd"};
    app.footer(footer);
    app.set_version_flag("--version", std::string("zorvd ") + ZORV_VERSION);
    app.add_option("--config", options.config, "Node configuration")->required()->type_name("FILE");
    auto* play = app.add_option("--play", options.play, "Play a scenario, wait until the node is quiet, and stop")
                     ->type_name("FILE");
    app.add_option("--speed", options.speed, "How much faster than its times the scenario is played (default 1)")
        ->type_name("FACTOR")
        ->check(&checkSpeed)
        ->needs(play);
    app.add_flag("--follow", options.follow, "Print northbound notifications, one line each");
    app.add_flag("--show-alarms", options.showAlarms, "Print the active alarms after the play")->needs(play);
    app.add_flag("--accept-empty", options.acceptEmpty,
                 "If the store of lists is damaged, set its file aside and begin with empty lists");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {
        exitCode = app.exit(e);
        return std::nullopt;
    } catch (const CLI::ParseError& e) {
        std::cerr << "zorvd: " << e.what() << "; see zorvd --help" << std::endl;
        exitCode = badInput;
        return std::nullopt;
    }
    return options;
}

}  // namespace ZorvNode
