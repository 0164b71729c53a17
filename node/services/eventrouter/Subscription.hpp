/// One subscription of one consumer to one event type.
///
/// Ownership: shared between the router, the producers that were told of it and the events on their way to it, because the
///            filter's array has to outlive them all.
#pragma once

#include <atomic>
#include <string>

#include "services/eventrouter/EventFilter.hpp"

namespace ZorvNode {

struct Subscription {
    Subscription(unsigned long consumer, const char* type, YaltNameValuePair* const* filterArray)
        : consumerId(consumer),
          eventType(type),
          filter(filterArray)
    {
    }

    const unsigned long consumerId;
    const std::string eventType;
    EventFilter filter;
    std::atomic<bool> ended{false};
};

}  // namespace ZorvNode
