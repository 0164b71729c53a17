/// The event router: carries events from producers to consumers by event type, and knows no event's content.
///
/// Each consumer has a queue and a thread of its own, so that a slow one stalls nobody: its queue is bounded, and what does
/// not fit is refused, counted and logged once per burst. Each accepted value is handed back to its producer once,
/// delivered or not. The rules are those of ZorvOamSpiEventRouter_1T.
///
/// A client that leaves does not wait for its callbacks on other threads: one of them may itself be waiting for a lock of the
/// leaving thread. Whoever unloads code asks allCallbacksEnded first.
///
/// Threads:   every operation from any thread, from inside callbacks too; no lock is held in a callback. shutdown and the
///            destructor from outside callbacks.
/// Ownership: ports are shared; values stay their producers'.
/// Failure:   return codes of ZorvReturn.h.
#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <shared_mutex>

#include "LogSink.hpp"
#include "services/eventrouter/ConsumerQueue.hpp"

namespace ZorvNode {

class EventRouter {
public:
    struct Limits {
        std::size_t queueBound = 10000;
        std::size_t consumerBound = 256;
    };

    EventRouter(const Limits& routerLimits, LogSinkT logSink);
    ~EventRouter();

    EventRouter(const EventRouter&) = delete;
    EventRouter& operator=(const EventRouter&) = delete;

    ZorvReturnT registerProducer(std::shared_ptr<RouterProducer> port, std::uint32_t& handle);
    ZorvReturnT addEventType(std::uint32_t handle, const char* eventType);
    ZorvReturnT notify(std::uint32_t handle, unsigned long consumerId, const char* eventType,
                       YaltNameValuePair* const* filter, void* value);
    ZorvReturnT removeEventType(std::uint32_t handle, const char* eventType);
    ZorvReturnT unregisterProducer(std::uint32_t handle);

    ZorvReturnT registerConsumer(std::shared_ptr<RouterConsumer> port, unsigned long& consumerId);
    ZorvReturnT addSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair* const* filter);
    ZorvReturnT removeSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair* const* filter);
    ZorvReturnT unregisterConsumer(unsigned long consumerId);

    /// Ends every consumer, then every producer (evtProdClearAll). Later calls find nobody.
    void shutdown();

    /// Waits until every accepted value has been handed back. False when the bound passed first.
    bool waitUntilIdle(std::chrono::milliseconds bound);

    /// True when no callback runs any more of a client that has left.
    bool allCallbacksEnded();

    /// Waits until allCallbacksEnded. False when the bound passed first. Not from inside a callback.
    bool waitUntilCallbacksEnded(std::chrono::milliseconds bound);

    const RouterStatistics& getStatistics() const { return statistics; }

private:
    using ProducerT = std::shared_ptr<ProducerRecord>;
    using ConsumerT = std::shared_ptr<ConsumerQueue>;
    using SubscriptionT = std::shared_ptr<Subscription>;

    ProducerT findProducer(std::uint32_t handle) const;
    ConsumerT findConsumer(unsigned long consumerId) const;
    std::vector<ProducerT> announcers(const std::string& eventType) const;
    std::vector<ConsumerT> allConsumers() const;

    void end(const ConsumerT& consumer, const std::vector<SubscriptionT>& ended);
    void end(const ProducerT& producer);
    void handBack(const ConsumerT& consumer, const std::function<bool(const Delivery&)>& fits);
    void handedBack();
    void reap();

    const Limits limits;
    const LogSinkT log;
    RouterStatistics statistics;

    mutable std::shared_mutex mutex;
    std::map<std::uint32_t, ProducerT> producers;  // guarded by mutex
    std::map<unsigned long, ConsumerT> consumers;  // guarded by mutex
    std::vector<ConsumerT> leaving;                // guarded by mutex; their threads have yet to end
    std::vector<ProducerT> leavingProducers;       // guarded by mutex; likewise
    std::uint32_t lastHandle = 0;                  // guarded by mutex
    unsigned long lastConsumerId = 0;              // guarded by mutex

    std::mutex idleMutex;
    std::condition_variable idle;
    std::atomic<std::uint64_t> onTheirWay{0};
};

}  // namespace ZorvNode
