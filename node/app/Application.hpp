/// zorvd from its options to its exit code: reads and checks all files, runs the node, plays, obeys signals.
///
/// Threads: run on the main thread.
#pragma once

#include <atomic>
#include <optional>
#include <thread>

#include "app/Node.hpp"
#include "app/Options.hpp"
#include "app/Signals.hpp"
#include "scenario/ScenarioPlayer.hpp"
#include "scenario/ScenarioReader.hpp"

namespace ZorvNode {

class Application {
public:
    explicit Application(const Options& commandLine) : options(commandLine) {}

    /// An ExitCode.
    int run();

private:
    void runNode(const NodeConfiguration& configuration, ModelFile model, const std::optional<Scenario>& scenario);
    void play(Node& node, ScenarioPlayer& player, const Scenario& scenario);
    void obeySignals(Node& node, const NodeConfiguration& configuration);
    void rereadModel(Node& node, const std::string& path) const;
    void fail(const std::string& reason);

    const Options options;
    Signals signals;
    std::atomic<bool> hasFailed{false};
    std::atomic<bool> hasPlayed{false};
};

}  // namespace ZorvNode
