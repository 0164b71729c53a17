#include <Poco/NumberParser.h>

#include <iomanip>
#include <sstream>

#include "Failure.hpp"
#include "commands/Command.hpp"
#include "commands/ProgressBar.hpp"
#include "scenario/ScenarioPlayer.hpp"
#include "scenario/ScenarioReader.hpp"

namespace ZorvCtl {

using ZorvInput::ValueError;

namespace {

constexpr double slowest = 0.001;
constexpr double fastest = 1000000;

struct PlayOptions {
    std::string file;
    std::string speed = "1";
};

double parseSpeed(const std::string& text)
{
    double speed = 0;
    if (!Poco::NumberParser::tryParseFloat(text, speed) || !(speed >= slowest && speed <= fastest)) {
        throw ValueError("not a factor from 0.001 to 1000000", text);
    }
    return speed;
}

/// "1 raise", "2 raises".
std::string counted(std::size_t number, const std::string& what)
{
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

std::string summaryText(const PlaySummary& summary, std::chrono::duration<double> duration)
{
    std::ostringstream text;
    text << (summary.interrupted ? "interrupted after " : "played ") << counted(summary.actions, "action") << " ("
         << counted(summary.raises, "raise") << ", " << counted(summary.clears, "clear") << ", "
         << counted(summary.alerts, "alert") << ") in " << std::fixed << std::setprecision(1) << duration.count()
         << " s";
    return text.str();
}

void play(const Context& context, const PlayOptions& options)
{
    const Scenario scenario = readScenario(options.file);
    NodeConnection connection = context.connect();
    const auto begun = std::chrono::steady_clock::now();
    PlaySummary summary;
    {
        ProgressBar progress(context.console, scenario.actions.size());
        ScenarioPlayer player(connection, [&](std::size_t done) { progress.show(done); });
        summary = player.play(scenario, parseSpeed(options.speed));
    }
    context.console.out << summaryText(summary, std::chrono::steady_clock::now() - begun) << "\n";
    if (summary.interrupted) {
        context.console.flush();
        throw Interrupted();
    }
}

}  // namespace

void addPlayCommand(CLI::App& app, Context& context)
{
    const auto command = addCommand<PlayOptions>(app, context, "play", "Play a scenario into the node", R"(Examples:
  zorvctl play hour.jsonl
  zorvctl play hour.jsonl --speed 600      # an hour in six seconds

The whole file is checked before its first action. After the last one the node is given time to settle.
Ctrl-C ends the play before its next action, exit code 130.)",
                                                 &play);
    command.app.add_option("SCENARIO", command.options.file, "Scenario file, one JSON object a line")->required();
    command.app.add_option("--speed", command.options.speed, "How much faster than its times (default 1)")
        ->type_name("FACTOR")
        ->check(checkedBy(&parseSpeed));
}

}  // namespace ZorvCtl
