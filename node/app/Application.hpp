/// zorvd from its options to its exit code: reads and checks all files, runs the node and its interface, obeys signals.
///
/// Threads: run on the main thread.
#pragma once

#include "app/Options.hpp"
#include "app/ServiceManager.hpp"
#include "app/Signals.hpp"
#include "runtime/Node.hpp"

namespace ZorvNode {

class Application {
public:
    explicit Application(const Options& commandLine) : options(commandLine) {}

    /// An ExitCode.
    int run();

private:
    void runNode(const NodeConfiguration& configuration, ModelFile model);
    void obeySignals(Node& node);
    void rereadModel(Node& node) const;

    const Options options;
    Signals signals;
    const ServiceManager manager;
};

}  // namespace ZorvNode
