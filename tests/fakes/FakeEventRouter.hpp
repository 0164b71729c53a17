/// The event router, synchronous: whatever a call causes has happened when it returns.
///
/// A notified value is shown, delivered to the consumer's callback if it has one, and handed back to its producer at
/// once; or it is held until the test releases it. Filters are passed on, never evaluated: that is the producer's task.
/// Registered consumers and producers count from 1, the test's own consumers from 1001.
///
/// Entries: "registerProducer -> 0", "addEventType 1 TYPE -> 0" (the number is the producer), "registerConsumer -> 0",
/// "addSubscription TYPE name=value, name=value -> 0", "removeSubscription TYPE name=value -> 0",
/// "unregisterConsumer 2 -> 0", "removeEventType 1 TYPE -> 0", "unregisterProducer 1 -> 0",
/// "notify TYPE consumer=1001 filter=[] VALUE -> 0" with the value as eventText gives it; on Topic::Done
/// "doneWithValue TYPE".
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Fake.hpp"
#include "Subscriptions.hpp"
#include "ZorvOamSpiEventRouter_1.h"

namespace ZorvFakes {

class FakeEventRouter : public Fake<FakeEventRouter> {
public:
    using Renderer = std::function<std::string(const void*)>;

    explicit FakeEventRouter(Journal& journal);

    static const ZorvOamSpiEventRouter_1T* table();

    /// How the values of a type that eventText does not know are shown.
    void setRenderer(const std::string& eventType, Renderer renderer);

    // --- The other side of the component's consumers

    /// Publishes an event to every consumer subscribed to the type, on this thread. The codes of their callbacks.
    std::vector<int32_t> fire(const std::string& eventType, void* value);

    /// "TYPE name=value, name=value" of every subscription, the test's own included, in the order of arrival.
    std::vector<std::string> subscriptions() const;

    // --- The other side of the component's producers

    /// Subscribes a consumer of the test's to events of one type; its id.
    unsigned long addConsumer(const std::string& eventType, const EventFilter::Entries& filter = {});

    /// Ends one subscription of a consumer of the test's.
    void removeConsumer(unsigned long consumerId);

    /// From now on notified values stay with the router until they are released. false releases what is held.
    void hold(bool on);

    size_t held() const;

    /// Hands back the held value at that place in the order of arrival.
    void release(size_t place = 0);

    /// Tells all producers that all subscriptions ended, as at the router's shut-down.
    void clearAll();

    // The operations behind the table.
    int32_t registerProducer(const ZorvOamSpiEventProducer_1T* producer, uint32_t* producerHandle);
    int32_t addEventType(uint32_t producerHandle, const char* eventType);
    int32_t notify(uint32_t producerHandle, unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                   void* value);
    int32_t removeEventType(uint32_t producerHandle, const char* eventType);
    int32_t unregisterProducer(uint32_t producerHandle, const ZorvOamSpiEventProducer_1T* producer);
    int32_t registerConsumer(ZorvOamSpiEventConsumer_1T* consumer);
    int32_t addSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);
    int32_t removeSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);
    int32_t unregisterConsumer(unsigned long consumerId);

private:
    using NotifyCallback = decltype(ZorvOamSpiEventConsumer_1T::notifyCallback);

    struct Producer {
        ZorvOamSpiEventProducer_1T callbacks;
        std::set<std::string> eventTypes;
    };

    struct Delivery {
        uint32_t producer;
        ZorvOamSpiEventProducer_1T callbacks;  // the producer may be gone before its value is handed back
        unsigned long consumerId;
        std::string eventType;
        void* value;
    };

    void subscribe(unsigned long consumerId, const std::string& eventType, YaltNameValuePair** filter);
    void offer(uint32_t producerHandle, const Subscriptions::Ref& subscription);
    void endSubscription(const Subscriptions::Ref& subscription);

    void deliver(const Delivery& delivery, YaltNameValuePair** filter);
    void handBack(const Delivery& delivery);
    void handBackAll(const std::function<bool(const Delivery&)>& isMeant);

    std::string rendered(const std::string& eventType, const void* value) const;
    NotifyCallback callbackOf(unsigned long consumerId) const;
    std::optional<ZorvOamSpiEventProducer_1T> callbacksOf(uint32_t producerHandle) const;
    bool announces(uint32_t producerHandle, const std::string& eventType) const;
    bool isProducer(uint32_t producerHandle) const;
    bool isConsumer(unsigned long consumerId) const;

    Subscriptions subscribed;

    // The mutex is never held while a callback runs.
    mutable std::mutex mutex;
    std::map<uint32_t, Producer> producers;             // guarded by mutex, as all below
    std::map<unsigned long, NotifyCallback> consumers;  // null callback: the test's own
    std::deque<Delivery> heldValues;
    std::map<std::string, Renderer> renderers;
    bool holding = false;
    uint32_t lastProducer = 0;
    unsigned long lastConsumer = 0;
    unsigned long lastTestConsumer = 1000;
};

}  // namespace ZorvFakes
