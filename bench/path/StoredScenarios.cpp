/// What many active alarms cost: reading them, starting with them, keeping them.
#include <atomic>
#include <stdexcept>
#include <thread>

#include "Alarm.hpp"
#include "FmConfig.hpp"
#include "Load.hpp"
#include "Scenarios.hpp"
#include "StoredAlarm.hpp"

namespace ZorvBench {

namespace {

const char* const fmObject = "ManagedElement=1,SystemFunctions=1,Fm=1";
const char* const attributes[] = {"fmAlarmId",
                                  "source",
                                  "lastEventTime",
                                  "sequenceNumber",
                                  "activeSeverity",
                                  "additionalText",
                                  "majorType",
                                  "minorType",
                                  "specificProblem",
                                  "probableCause",
                                  "additionalInfo",
                                  "originalSeverity",
                                  "originalAdditionalText",
                                  "originalEventTime",
                                  "eventType",
                                  nullptr};

/// All attributes of all alarms in one transaction, unless it is over before. @return how many alarms
std::uint64_t walk(ZorvNode::Node& node, const std::atomic<bool>& isOver)
{
    std::uint64_t number = 0;
    node.management.transact([&](unsigned long txHandle) {
        const std::uint64_t iterator = node.objects.newIterator(txHandle, fmObject, "FmAlarm");
        const std::string parent = std::string(fmObject) + ",";
        while (const char* const name = isOver ? nullptr : node.objects.next(iterator)) {
            YaltOamSpiMoAttributesResult_3T results{};
            node.objects.getAttributes(txHandle, parent + name, attributes, results);
            results.releaseAttributesResultCB(&results);
            ++number;
        }
        node.objects.finalizeIterator(iterator);
    });
    return number;
}

void sayWalk(const std::string& name, ZorvNode::Node& node, std::uint64_t expected)
{
    const std::atomic<bool> isOver{false};
    const auto begun = ClockT::now();
    const std::uint64_t number = walk(node, isOver);
    say(name, SecondsT(ClockT::now() - begun).count(), "s");
    if (number != expected) {
        throw std::runtime_error("the walk finds " + std::to_string(number) + " alarms");
    }
}

/// What a start cannot do without: every item read and decoded.
double readAndDecode(ZorvNode::ListStorage& lists, std::uint64_t expected)
{
    const ZorvFm::FmConfig config;
    std::vector<std::unique_ptr<ZorvFm::Alarm>> decoded;
    ZorvNode::ListItem item;
    const auto begun = ClockT::now();
    for (std::uint64_t from = 0; lists.findFrom("FmActiveAlarmList2", from, item) == ZORV_RETURN_OK;
         from = item.number + 1) {
        ZorvFm::StoredAlarmT data{};
        std::copy(item.data.begin(), item.data.end(), data.begin());
        decoded.push_back(std::make_unique<ZorvFm::Alarm>(config));
        decoded.back()->deserialize_v2(ZorvFm::fromStoredAlarm(data));
    }
    if (decoded.size() != expected) {
        throw std::runtime_error("stored alarms are missing");
    }
    return SecondsT(ClockT::now() - begun).count();
}

}  // namespace

void measureWalk(const Choice& choice)
{
    LoadedNode node(choice.node);
    Load load(node);
    node.start();
    load.prepare("alarm", choice.alarms);
    load.send(choice.alarms);
    const auto paced = static_cast<std::uint64_t>(choice.rate);  // of one second
    sayLatencies("raise alone", load.raisePaced(paced, choice.rate));
    // The first one makes the copies that the later ones share.
    sayWalk("first walk", *node, choice.alarms + paced);
    sayWalk("walk", *node, choice.alarms + paced);
    std::atomic<bool> isOver{false};
    std::thread walker([&] {
        while (!isOver) {
            walk(*node, isOver);
        }
    });
    const auto latencies = load.raisePaced(paced, choice.rate);
    isOver = true;
    walker.join();
    sayLatencies("raise beside a walk", latencies);
    node.stop();
}

void measureStart(const Choice& choice)
{
    LoadedNode node(choice.node);
    {
        Load load(node);
        node.start();
        load.prepare("alarm", choice.alarms);
        const double before = residentMemory();
        load.send(choice.alarms);
        say("memory of an alarm", (residentMemory() - before) / static_cast<double>(choice.alarms), "bytes");
        node.stop();
    }
    const auto begun = ClockT::now();
    node.renew();
    const double opened = SecondsT(ClockT::now() - begun).count();
    const double decoded = readAndDecode(node->state.getLists(), choice.alarms);
    const auto starting = ClockT::now();
    NorthboundConsumer consumer(node->router);
    node.start();
    say("reading and decoding", opened + decoded, "s");
    say("start", opened + SecondsT(ClockT::now() - starting).count(), "s");
    node.stop();
}

}  // namespace ZorvBench
