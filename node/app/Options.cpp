#include "app/Options.hpp"

#include <CLI/CLI.hpp>

#include "app/ExitCode.hpp"

namespace ZorvNode {

namespace {

const char* const description = "zorvd runs component libraries, such as the fault management library, on a node.";

const char* const footer = R"(
Signals:
  SIGTERM, SIGINT  stop the components and end; nothing that was accepted is lost
  SIGHUP           read the model again

Applications, tools and people reach the node on its socket, "zorvd.sock" in the run directory unless the configuration
names another one:
  zorvctl --socket PATH status                what runs, and how it is
  zorvctl --socket PATH alarms                what is active
  zorvctl --socket PATH notifications --follow
  zorvctl --help                              everything else

Exit codes:
  0  done
  1  failed while running; the reason is on standard error and in SystemLog.log
  2  bad command line, configuration or model: one line says what and where; nothing was started)";

}  // namespace

std::optional<Options> readOptions(int argc, char** argv, int& exitCode)
{
    Options options;
    CLI::App app{description, "zorvd"};
    app.footer(footer);
    app.set_version_flag("--version", std::string("zorvd ") + ZORV_VERSION);
    app.add_option("--config", options.config, "Node configuration")->required()->type_name("FILE");
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
