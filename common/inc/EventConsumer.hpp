/// Binds one event type of the event router to a member function of a subscriber.
///
/// The router's callbacks carry no object, so each instantiation has at most one live object, found through _instance; the
/// instance number exists to tell the consumers of one subscriber class apart.
///
/// Threads:   start and stop one at a time; the callback on any thread of the router.
/// Ownership: the subscriber outlives the consumer; the filter handed to the router is the consumer's.
/// Failure:   a consumer that cannot register or subscribe ends the process: a component that cannot receive its events
///            must not run on. Exceptions of the subscriber are logged and kept from the router.
#pragma once

#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "AutoMemory.hpp"
#include "EventRouter.hpp"
#include "Logging.hpp"
#include "NameValuePair.hpp"
#include "SingleInstanceAssert.hpp"

namespace Zorv {

template <class SubscriberT, int instanceNumber>
class EventConsumer {
public:
    using CallbackT = void (SubscriberT::*)(const char* eventType, void* value);

    EventConsumer()
    {
        ZORV_ASSERT(_instance == NULL);  // NOLINT(modernize-use-nullptr): the text that is logged
        _instance = this;
    }

    virtual ~EventConsumer() { _instance = nullptr; }

    EventConsumer(const EventConsumer&) = delete;
    EventConsumer& operator=(const EventConsumer&) = delete;

    /// Registers and subscribes. Does nothing when started already.
    void start(const std::vector<NameValuePair>& filter, CallbackT memberFunction, SubscriberT* subscriberObject,
               const char* type)
    {
        ZORV_TRACE(" >> ");
        if (started) {
            return;
        }
        eventType = type;
        subscriber = subscriberObject;
        callback = memberFunction;
        consumer.notifyCallback = &notifyCallback;

        const ZorvOamSpiEventRouter_1T* router = findEventRouter(Portal::instance());
        if (router == nullptr || router->registerConsumer(&consumer) != ZORV_RETURN_OK) {
            ZORV_ERROR("Could not register consumer");
            std::abort();
        }
        cFilter = toCFilter(filter, memory);
        if (router->addSubscription(consumer.consumerId, eventType.c_str(), cFilter) != ZORV_RETURN_OK) {
            ZORV_ERROR("Could not add subscription");
            std::abort();
        }
        started = true;
        ZORV_TRACE(" << ");
    }

    /// Unsubscribes and unregisters, as far as the router lets it. Does nothing when not started.
    void stop()
    {
        ZORV_TRACE(" >> ");
        if (!started) {
            return;
        }
        const ZorvOamSpiEventRouter_1T* router = findEventRouter(Portal::instance());
        if (router == nullptr ||
            router->removeSubscription(consumer.consumerId, eventType.c_str(), cFilter) != ZORV_RETURN_OK) {
            ZORV_TRACE("Could not unregister event subscription, eventType %s", eventType.c_str());
        }
        if (router == nullptr || router->unregisterConsumer(consumer.consumerId) != ZORV_RETURN_OK) {
            ZORV_TRACE("Could not unregister event consumer, eventType %s", eventType.c_str());
        }
        started = false;
        memory.free();
        cFilter = nullptr;
        ZORV_TRACE(" << ");
    }

    /// The router's way in.
    static ZorvReturnT notifyCallback(unsigned long /*consumerId*/, const char* type, YaltNameValuePair** /*filter*/,
                                      void* value)
    {
        ZORV_TRACE(" >> ");
        ZORV_ASSERT(_instance);
        const EventConsumer& bound = *_instance;
        try {
            (bound.subscriber->*bound.callback)(type, value);
        } catch (const std::exception& e) {
            ZORV_WARNING("Exception thrown from event consumer :%s", e.what());
        } catch (...) {
            ZORV_WARNING("Unknown exception thrown from event consumer");
        }
        ZORV_TRACE(" << ");
        return ZORV_RETURN_OK;
    }

    /// The null-terminated array that the router takes, in memory of the given pool.
    static YaltNameValuePair** toCFilter(const std::vector<NameValuePair>& filter, AutoMemory& memory)
    {
        YaltNameValuePair** entries = memory.allocateArray<YaltNameValuePair*>(filter.size() + 1);
        for (std::size_t i = 0; i < filter.size(); ++i) {
            entries[i] =
                memory.own(new YaltNameValuePair{memory.strdup(filter[i].name), memory.strdup(filter[i].value)});
        }
        return entries;
    }

private:
    static inline EventConsumer* _instance = nullptr;

    AutoMemory memory;  // what cFilter points to
    ZorvOamSpiEventConsumer_1T consumer{};
    std::string eventType;
    bool started = false;
    YaltNameValuePair** cFilter = nullptr;  // null when not started
    SubscriberT* subscriber = nullptr;
    CallbackT callback = nullptr;
};

}  // namespace Zorv
