/// Publishes the events of one type on the event router, to every consumer whose filter matches.
///
/// EventT is a reference-counted event that contains an EventStructT; the router is handed the address of that part.
/// The router's callbacks carry no object, so each instantiation has at most one live object, found through _instance.
///
/// Threads:   start, stop and push by the component; callbacks on any thread of the router. The consumers are copied
///            before they are notified, so that a router which calls back during a notify finds the mutex free.
/// Ownership: the pusher keeps its own reference to the event; each accepted delivery holds one more.
/// Failure:   a producer that cannot register stays silent, with an error line; nothing is thrown.
#pragma once

#include <Poco/Mutex.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "EventRouter.hpp"
#include "FilterMatcher.hpp"
#include "Logging.hpp"
#include "RefCounter.hpp"
#include "SingleInstanceAssert.hpp"

namespace Zorv {

namespace eventproducerInternal {

/// One subscription to the producer's event type.
template <class FilterT>
struct Consumer {
    unsigned long consumerId;
    std::string eventType;
    std::unique_ptr<FilterT> filter;
};

}  // namespace eventproducerInternal

template <class EventT, class EventStructT, class FilterT>
class EventProducer {
public:
    EventProducer() : portal(Portal::instance())
    {
        ZORV_ASSERT(_instance == NULL);  // NOLINT(modernize-use-nullptr): the text that is logged
        _instance = this;
    }

    ~EventProducer() { _instance = nullptr; }

    EventProducer(const EventProducer&) = delete;
    EventProducer& operator=(const EventProducer&) = delete;

    void start(const char* type)
    {
        ZORV_TRACE(" >> Event type %s", type);
        const ZorvOamSpiEventRouter_1T* router = findEventRouter(portal);
        eventType = type;
        if (router == nullptr || router->registerProducer(&producerInterface, &producerHandle) != ZORV_RETURN_OK) {
            ZORV_ERROR("Could not register event producer");
            return;
        }
        if (router->addEventType(producerHandle, type) != ZORV_RETURN_OK) {
            ZORV_ERROR("Could not register event producer event");
        }
    }

    /// Must come while the router is still there.
    void stop()
    {
        if (const ZorvOamSpiEventRouter_1T* router = findEventRouter(portal)) {
            router->removeEventType(producerHandle, eventType.c_str());
            router->unregisterProducer(producerHandle, &producerInterface);
        } else {
            ZORV_ERROR("No event router at stop (wrong stop order)");
        }
        onClearAll();
    }

    /// Delivers the event to every matching consumer.
    void push(EventT& event)
    {
        const std::vector<Delivery> deliveries = deliveriesFor(event);
        const ZorvOamSpiEventRouter_1T* router = findEventRouter(portal);
        if (router == nullptr) {
            return;
        }
        EventStructT* value = &event;
        for (const Delivery& delivery : deliveries) {
            event.addRef();
            ZORV_TRACE("Sending notification %s", eventType.c_str());
            if (router->notify(producerHandle, delivery.consumerId, eventType.c_str(), delivery.filterDescription,
                               value) != ZORV_RETURN_OK) {
                event.releaseRef();
            }
        }
    }

    bool hasConsumers()
    {
        const Poco::FastMutex::ScopedLock lock(mutex);
        return !consumers.empty();
    }

    bool onAddFilter(unsigned long consumerId, const char* type, YaltNameValuePair** filter)
    {
        auto matcher = std::make_unique<FilterT>(filter);
        const Poco::FastMutex::ScopedLock lock(mutex);
        consumers.push_back({consumerId, type, std::move(matcher)});
        return true;
    }

    /// Removes the first entry of that consumer and event type, if there is one.
    void onRemoveFilter(unsigned long consumerId, const char* type, YaltNameValuePair** /*filter*/)
    {
        const Poco::FastMutex::ScopedLock lock(mutex);
        for (auto consumer = consumers.begin(); consumer != consumers.end(); ++consumer) {
            if (consumer->consumerId == consumerId && consumer->eventType == type) {
                consumers.erase(consumer);
                return;
            }
        }
    }

    void onClearAll()
    {
        const Poco::FastMutex::ScopedLock lock(mutex);
        consumers.clear();
    }

    void onDoneWithValue(const char* /*type*/, void* value)
    {
        static_cast<EventT*>(static_cast<EventStructT*>(value))->releaseRef();
    }

    static ZorvReturnT evtProdAddFilter(unsigned long consumerId, const char* type, YaltNameValuePair** filter)
    {
        ZORV_TRACE("Adding filter %s", type);
        if (_instance == nullptr) {
            return ZORV_RETURN_OK;
        }
        return _instance->onAddFilter(consumerId, type, filter) ? ZORV_RETURN_OK : ZORV_RETURN_FAILED;
    }

    static ZorvReturnT evtProdRemoveFilter(unsigned long consumerId, const char* type, YaltNameValuePair** filter)
    {
        if (_instance != nullptr) {
            _instance->onRemoveFilter(consumerId, type, filter);
        }
        return ZORV_RETURN_OK;
    }

    static ZorvReturnT evtProdClearAll()
    {
        if (_instance != nullptr) {
            _instance->onClearAll();
        }
        return ZORV_RETURN_OK;
    }

    static ZorvReturnT evtProdDoneWithValue(const char* type, void* value)
    {
        if (_instance != nullptr) {
            _instance->onDoneWithValue(type, value);
        }
        return ZORV_RETURN_OK;
    }

private:
    struct Delivery {
        unsigned long consumerId;
        YaltNameValuePair** filterDescription;
    };

    std::vector<Delivery> deliveriesFor(const EventT& event)
    {
        std::vector<Delivery> deliveries;
        const Poco::FastMutex::ScopedLock lock(mutex);
        deliveries.reserve(consumers.size());
        for (const auto& consumer : consumers) {
            if (consumer.filter->isMatch(event)) {
                deliveries.push_back({consumer.consumerId, consumer.filter->getDescription()});
            }
        }
        return deliveries;
    }

    static inline EventProducer* _instance = nullptr;

    Portal& portal;
    const ZorvOamSpiEventProducer_1T producerInterface{&evtProdAddFilter, &evtProdRemoveFilter, &evtProdClearAll,
                                                       &evtProdDoneWithValue};
    std::uint32_t producerHandle = 0;
    Poco::FastMutex mutex;
    std::list<eventproducerInternal::Consumer<FilterT>> consumers;  // guarded by mutex; in order of arrival
    std::string eventType;
};

}  // namespace Zorv
