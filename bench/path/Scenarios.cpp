#include "Scenarios.hpp"

#include "Load.hpp"

namespace ZorvBench {

namespace {

/// One change of the configuration, as an operator makes it.
void reconfigure(ZorvNode::Node& node)
{
    static std::uint32_t interval = 60;
    interval = 121 - interval;
    ZorvInput::MoNamedValue value{"heartbeatInterval", {YALT_MO_ATTRIBUTE_UINT32, {}}};
    value.value.values.emplace_back(std::uint64_t{interval});
    node.management.change({{ZorvNode::MoRequest::Kind::set, "ManagedElement=1,SystemFunctions=1,Fm=1", {value}}});
}

}  // namespace

void measureRaises(const Choice& choice)
{
    LoadedNode node(choice.node);
    Load load(node);
    node.start();
    load.prepare("alarm", choice.active);
    load.send(choice.active);
    load.prepare(choice.kind, choice.alarms);
    std::function<void()> between;
    if (choice.kind == "reconfigure") {
        between = [&node] { reconfigure(*node); };
    }
    const SecondsT cpuBefore = cpuTime();
    const double seconds = load.send(choice.alarms, between);
    const double alarms = static_cast<double>(choice.alarms);
    say("raises", alarms / seconds, "/s");
    say("cpu", 1e6 * (cpuTime() - cpuBefore).count() / alarms, "us");
    node.stop();
}

void measureLatency(const Choice& choice)
{
    LoadedNode node(choice.node);
    Load load(node);
    node.start();
    sayLatencies("delivery", load.raisePaced(choice.alarms, choice.rate));
    node.stop();
}

}  // namespace ZorvBench
