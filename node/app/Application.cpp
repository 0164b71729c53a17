#include "app/Application.hpp"

#include <Poco/File.h>

#include <chrono>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "ZorvMwSpiLog_1.h"
#include "app/DirectoryLock.hpp"
#include "app/ExitCode.hpp"
#include "files/InputError.hpp"
#include "northbound/ActiveAlarmTable.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

void tell(const std::string& text)
{
    std::cerr << "zorvd: " + text + "\n" << std::flush;
}

std::string summaryText(const PlaySummary& summary, const Node& node, std::chrono::duration<double> duration)
{
    const RouterStatistics& router = node.router.getStatistics();
    std::ostringstream text;
    text << (summary.interrupted ? "interrupted after " : "played ") << summary.actions << " actions ("
         << summary.raises << " raises, " << summary.clears << " clears, " << summary.alerts << " alerts) in "
         << std::fixed << std::setprecision(1) << duration.count() << " s: " << node.follower.getNumberOfAlarms()
         << " alarm notifications northbound, " << node.logs.getNumberOfRecords() << " records in the alarm log, "
         << router.lost << " events lost";
    return text.str();
}

/// Null when the node keeps no state.
std::unique_ptr<DirectoryLock> lockState(const StoreSettings& store)
{
    if (store.kind == StoreKind::memory) {
        return nullptr;
    }
    makePrivateDirectory(store.directory);
    return std::make_unique<DirectoryLock>(store.directory, "zorv.lock");
}

}  // namespace

int Application::run()
{
    try {
        NodeConfiguration configuration = readNodeConfiguration(options.config);
        configuration.store.acceptEmpty = options.acceptEmpty;
        ModelFile model = readModel(configuration.model);
        std::optional<Scenario> scenario;
        if (!options.play.empty()) {
            scenario = readScenario(options.play);
        }
        Poco::File(configuration.runDirectory).createDirectories();
        Poco::File(configuration.logDirectory).createDirectories();
        const DirectoryLock runLock(configuration.runDirectory, "zorvd.pid");
        const auto stateLock = lockState(configuration.store);
        runNode(configuration, std::move(model), scenario);
    } catch (const InputError& e) {
        tell(e.what());
        return badInput;
    } catch (const Poco::Exception& e) {
        fail(e.displayText());
    } catch (const std::exception& e) {
        fail(e.what());
    }
    return hasFailed ? failed : done;
}

void Application::runNode(const NodeConfiguration& configuration, ModelFile model,
                          const std::optional<Scenario>& scenario)
{
    Node node(configuration, std::move(model), options.follow ? &std::cout : nullptr, [this] {
        fail("standard output takes no more");
        signals.wake();
    });
    try {
        node.start();
    } catch (const std::runtime_error& e) {
        node.log(ZORV_LOG_ERROR, e.what());
        throw;
    }
    ScenarioPlayer player(node.router, node.source, node.management, node.store,
                          [&node] { return node.getActivity(); });
    std::thread playing;
    if (scenario) {
        playing = std::thread([&] { play(node, player, *scenario); });
    }
    obeySignals(node, configuration);
    player.interrupt();
    if (playing.joinable()) {
        playing.join();
    }
    node.stop();
}

void Application::play(Node& node, ScenarioPlayer& player, const Scenario& scenario)
{
    try {
        const auto begun = std::chrono::steady_clock::now();
        const PlaySummary summary = player.play(scenario, options.speed);
        if (options.showAlarms && !summary.interrupted) {
            ActiveAlarmTable(node.management, node.objects, node.repository, node.store).print(std::cout);
        }
        tell(summaryText(summary, node, std::chrono::steady_clock::now() - begun));
    } catch (const std::exception& e) {
        fail(e.what());
    }
    hasPlayed = true;
    signals.wake();
}

void Application::obeySignals(Node& node, const NodeConfiguration& configuration)
{
    for (;;) {
        const int number = signals.wait();
        if (number == SIGHUP) {
            rereadModel(node, configuration.model);
        } else if (number != SIGUSR1 || hasPlayed || hasFailed) {
            return;
        }
    }
}

void Application::rereadModel(Node& node, const std::string& path) const
{
    try {
        node.replaceModel(readModel(path));
        tell("model reread");
    } catch (const std::exception& e) {
        tell(std::string("the model in use stays: ") + e.what());
        node.log(ZORV_LOG_ERROR, std::string("The model in use stays: ") + e.what());
    }
}

void Application::fail(const std::string& reason)
{
    hasFailed = true;
    tell(reason);
}

}  // namespace ZorvNode
