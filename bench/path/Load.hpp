/// A node under load: its producer and its two consumers.
///
/// Threads: one.
/// Failure: std::runtime_error when notifications do not arrive.
#pragma once

#include "LoadedNode.hpp"
#include "NorthboundConsumer.hpp"
#include "RaisingProducer.hpp"

namespace ZorvBench {

class Load {
public:
    /// Of a node that is not started yet.
    explicit Load(LoadedNode& loadedNode);

    /// Prepares so many, which send sends in their order.
    void prepare(const std::string& kind, std::uint64_t number);

    void prepare(const Sent& sent) { producer.prepare(sent); }

    /// So many as fast as they are taken, until both consumers have both versions.
    /// @param between called after each hundred. @return seconds
    double send(std::uint64_t number, const std::function<void()>& between = {});

    /// So many at once, until both consumers have both versions of so many reports. @return seconds
    double sendAtOnce(std::uint64_t number, std::uint64_t reports);

    /// Raises so many new alarms, evenly at a rate in alarms a second. @return how long each took to the first consumer
    std::vector<SecondsT> raisePaced(std::uint64_t number, double rate);

private:
    void awaitDelivered(std::uint64_t number);
    std::uint64_t getDelivered() const;

    RaisingProducer producer;
    NorthboundConsumer consumers[2];
    std::uint64_t prepared = 0;
    std::uint64_t expected = 0;  // notifications of all consumers
};

}  // namespace ZorvBench
