/// Measures the path of an alarm through a node in this process.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>

#include "Scenarios.hpp"
#include "runtime/ProcessorTurns.hpp"

int main(int argc, char** argv)
{
    using namespace ZorvBench;
    const std::map<std::string, void (*)(const Choice&)> scenarios = {
        {"raise", &measureRaises},        {"latency", &measureLatency}, {"walk", &measureWalk},
        {"start", &measureStart},         {"flat", &measureFlat},       {"memory", &measureMemoryReference},
        {"store", &measureStoreReference}};
    CLI::App app(
        "Measures the path of an alarm through a node in this process; prints name, value and unit of each figure.");
    Choice choice;
    std::string scenario;
    app.add_option("scenario", scenario, "what to measure")->required()->check(CLI::IsMember(scenarios));
    app.add_option("--store", choice.node.store, "memory or sqlite")->check(CLI::IsMember({"memory", "sqlite"}));
    app.add_option("--log", choice.node.logLevel, "level of the system log");
    app.add_option("--alarms", choice.alarms, "how many");
    app.add_option("--active", choice.active, "how many are active before");
    app.add_option("--kind", choice.kind, "what is sent")
        ->check(CLI::IsMember({"alarm", "alert", "unknown", "reconfigure"}));
    app.add_option("--rate", choice.rate, "alarms in a second, when they are paced");
    CLI11_PARSE(app, argc, argv);
    ZorvNode::interruptNobody();  // as zorvd does
    try {
        scenarios.at(scenario)(choice);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zorv-bench-path: %s\n", e.what());
        return 1;
    }
}
