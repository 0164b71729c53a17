/// What every implementation of ZorvOamSpiEventRouter_1T promises. An implementation joins by giving a provider to
/// INSTANTIATE_TEST_SUITE_P (RouterProviders.cpp).
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "EventJournal.hpp"
#include "Gate.hpp"
#include "RouterLedger.hpp"
#include "ZorvOamSpiEventRouter_1.h"

namespace ZorvTest {

/// A router, alive as long as this object.
class RouterImplementation {
public:
    virtual ~RouterImplementation() = default;
    virtual const ZorvOamSpiEventRouter_1T* table() const = 0;
    virtual void shutdown() = 0;

    /// Notifications refused because a queue was full.
    virtual std::uint64_t refusals() const = 0;
};

/// For implementations that have bounds.
struct RouterBounds {
    std::size_t queue = 4;
    std::size_t consumers = 8;
};

struct RouterProvider {
    std::string name;
    std::function<std::unique_ptr<RouterImplementation>(const RouterBounds& bounds)> make;
};

/// Producers 1 and 2, and consumers numbered in the order of their registration. All their callbacks write the journal,
/// then do what the test says: "p1 add c1 T a=b, c=d", "p1 remove c1 T a=b, c=d", "p1 done T 1", "p1 clear",
/// "c1 event T a=b, c=d 1". After each test, everything that the router owes has to come back exactly once.
class EventRouterContractTest : public testing::TestWithParam<RouterProvider> {
protected:
    using FilterT = std::vector<std::pair<std::string, std::string>>;

    EventRouterContractTest();
    ~EventRouterContractTest() override;

    void TearDown() override;

    // --- Producers

    std::uint32_t registerProducer(int producer = 1);
    ZorvReturnT unregisterProducer(int producer = 1);

    /// Registers a producer and announces event type "T".
    void announce(int producer = 1);

    ZorvReturnT addEventType(const char* eventType = "T", int producer = 1);
    ZorvReturnT removeEventType(const char* eventType = "T", int producer = 1);

    /// Notifies with the filter that the producer was given last for that consumer.
    ZorvReturnT notify(unsigned long consumerId, int value, int producer = 1);

    static const ZorvOamSpiEventProducer_1T& tableOf(int producer);

    // --- Consumers

    unsigned long registerConsumer();
    ZorvReturnT unregisterConsumer(unsigned long consumerId) { return spi->unregisterConsumer(consumerId); }

    /// Registers a consumer that is subscribed to event type "T".
    unsigned long subscriber(const FilterT& filter = {});

    ZorvReturnT subscribe(unsigned long consumerId, const FilterT& filter = {}, const char* eventType = "T");
    ZorvReturnT unsubscribe(unsigned long consumerId, const FilterT& filter = {}, const char* eventType = "T");

    static ZorvReturnT onNotified(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                                  void* value);

    EventJournal journal;
    RouterLedger ledger;
    Gate gate;

    // What the callbacks answer, and what they do, by the numbers of producer, consumer and event.
    ZorvReturnT addAnswer = 0;
    ZorvReturnT eventAnswer = 0;
    std::function<void(int producer, unsigned long consumerId)> onAdd = [](int, unsigned long) {};
    std::function<void(int producer)> onRemove = [](int) {};
    std::function<void(int producer)> onClear = [](int) {};
    std::function<void(int producer, int value)> onDone = [](int, int) {};
    std::function<void(unsigned long consumerId, int value)> onEvent = [](unsigned long, int) {};

private:
    template <int producer>
    struct Callbacks;

    ZorvReturnT added(int producer, unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);
    ZorvReturnT removed(int producer, unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);
    ZorvReturnT cleared(int producer);
    ZorvReturnT handedBack(int producer, const char* eventType, void* value);

    std::uint32_t handleOf(int producer) const;
    std::string labelOf(unsigned long consumerId) const;

    static EventRouterContractTest* instance;

    mutable std::mutex mutex;
    std::uint32_t handles[3] = {};         // guarded by mutex; by number
    std::vector<unsigned long> consumers;  // guarded by mutex

protected:
    // The first to go: its threads use all of the above.
    std::unique_ptr<RouterImplementation> implementation = GetParam().make({});
    const ZorvOamSpiEventRouter_1T* const spi = implementation->table();
};

/// Implementations with a thread and a bounded queue for each consumer.
class QueueingRouterContractTest : public EventRouterContractTest {
protected:
    static constexpr int queueBound = static_cast<int>(RouterBounds().queue);
    static constexpr std::size_t consumerBound = RouterBounds().consumers;

    /// A subscriber that is in its callback with event 0 of producer 1, and leaves when the gate opens.
    unsigned long subscriberAtGate();
};

}  // namespace ZorvTest
