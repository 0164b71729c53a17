/// A consumer of northbound notifications in both versions: counts them, and notes when each came.
///
/// Threads:   the router's thread delivers; any other asks.
/// Ownership: the router outlives it.
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "Figures.hpp"
#include "services/eventrouter/EventRouter.hpp"

namespace ZorvBench {

class NorthboundConsumer {
public:
    explicit NorthboundConsumer(ZorvNode::EventRouter& eventRouter);
    ~NorthboundConsumer();

    /// Notifications of either version so far.
    std::uint64_t getNumber() const;

    /// From now on the arrival of each version 3 notification is noted at places[event time modulo their number]; with
    /// null no more.
    void noteArrivals(std::vector<ClockT::time_point>* places);

private:
    class Port;

    ZorvNode::EventRouter& router;
    const std::shared_ptr<Port> port;
    unsigned long consumerId = 0;
};

}  // namespace ZorvBench
