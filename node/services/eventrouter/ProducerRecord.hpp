/// One registered producer: its event types, and the order in which it is told about subscriptions.
///
/// Additions and removals of subscriptions are queued and told one at a time, by whichever thread comes first, with no lock
/// held. So a producer hears of each subscription once, before its end, however many threads are at work.
///
/// Threads:   any.
/// Failure:   a producer that throws has refused; it is counted.
#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "services/eventrouter/ActiveCalls.hpp"
#include "services/eventrouter/RouterPorts.hpp"
#include "services/eventrouter/RouterStatistics.hpp"
#include "services/eventrouter/Subscription.hpp"

namespace ZorvNode {

class ProducerRecord {
public:
    using SubscriptionT = std::shared_ptr<Subscription>;

    ProducerRecord(std::shared_ptr<RouterProducer> producerPort, RouterStatistics& routerStatistics);

    bool announces(const std::string& eventType) const;
    bool announce(const std::string& eventType);
    bool takeBack(const std::string& eventType);

    /// Queues what the producer is to be told; tellPending tells it.
    void queueAdded(const SubscriptionT& subscription);
    void queueRemoved(const SubscriptionT& subscription);

    /// Tells all that is queued, unless another thread is at it: that one then tells this too.
    void tellPending();

    void doneWithValue(const std::string& eventType, void* value);

    /// Nothing more is told; a callback that runs runs on.
    void close();

    /// Tells that all subscriptions have ended; after close.
    void clearAll();

    /// Events on their way count as calls until they have been handed back.
    ActiveCalls calls;

private:
    struct Change {
        SubscriptionT subscription;
        bool added;
    };

    void tell(const Change& change);
    void tellAdded(const SubscriptionT& subscription);
    void tellRemoved(const SubscriptionT& subscription);

    template <class CallT>
    ZorvReturnT call(CallT callback);

    const std::shared_ptr<RouterProducer> port;
    RouterStatistics& statistics;

    mutable std::mutex mutex;
    std::set<std::string> eventTypes;    // guarded by mutex
    std::deque<Change> pending;          // guarded by mutex
    bool telling = false;                // guarded by mutex
    bool closed = false;                 // guarded by mutex
    std::set<SubscriptionT> accepted;    // guarded by mutex
    std::vector<SubscriptionT> retired;  // guarded by mutex; their filters stay readable for the producer
};

}  // namespace ZorvNode
