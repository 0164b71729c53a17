/// Who is subscribed to which events at the fake router.
///
/// Threads:   any.
/// Ownership: a subscription's filter stays valid for the life of this object, after its end too: a producer may be on
///            its way to a consumer that leaves at the same moment.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "EventFilter.hpp"

namespace ZorvFakes {

struct Subscription {
    Subscription(unsigned long consumer, std::string type, const YaltNameValuePair* const* itsFilter)
        : consumerId(consumer),
          eventType(std::move(type)),
          filter(itsFilter)
    {
    }

    const unsigned long consumerId;
    const std::string eventType;
    EventFilter filter;
};

class Subscriptions {
public:
    using Ref = std::shared_ptr<Subscription>;

    Ref add(unsigned long consumerId, const std::string& eventType, const YaltNameValuePair* const* filter);

    /// Ends a subscription; the producers that had accepted it.
    std::set<uint32_t> end(const Ref& subscription);

    void endAll();

    /// A producer accepted the subscription. False when it has ended meanwhile.
    bool accept(const Ref& subscription, uint32_t producer);

    /// The producer no longer sends the event type, or nothing at all ("").
    void withdraw(uint32_t producer, const std::string& eventType = "");

    /// Present subscriptions in the order of arrival.
    std::vector<Ref> all() const;
    std::vector<Ref> to(const std::string& eventType) const;
    std::vector<Ref> of(unsigned long consumerId) const;

private:
    struct Entry {
        Ref subscription;
        std::set<uint32_t> acceptedBy;
    };

    mutable std::mutex mutex;
    std::vector<Entry> present;  // guarded by mutex
    std::vector<Ref> ended;      // guarded by mutex
};

}  // namespace ZorvFakes
