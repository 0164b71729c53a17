/// A producer that sends a value to whoever subscribed to its type, and waits until they have taken it.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

class SendingProducer : public RouterProducer {
public:
    explicit SendingProducer(EventRouter& eventRouter) : router(eventRouter)
    {
        router.registerProducer(std::shared_ptr<RouterProducer>(std::shared_ptr<void>(), this), handle);
    }

    ~SendingProducer() override
    {
        router.unregisterProducer(handle);
        router.waitUntilCallbacksEnded(std::chrono::seconds(10));
    }

    SendingProducer(const SendingProducer&) = delete;
    SendingProducer& operator=(const SendingProducer&) = delete;

    void announce(const char* eventType) { router.addEventType(handle, eventType); }

    template <class ValueT>
    void send(const std::string& eventType, ValueT value)
    {
        std::multimap<std::string, SubscriberT> now;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            now = subscribers;
        }
        const auto [first, last] = now.equal_range(eventType);
        for (auto it = first; it != last; ++it) {
            router.notify(handle, it->second.first, eventType.c_str(), it->second.second, &value);
        }
        router.waitUntilIdle(std::chrono::seconds(10));
    }

    ZorvReturnT addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        subscribers.emplace(eventType, SubscriberT(consumerId, filter));
        return ZORV_RETURN_OK;
    }
    ZorvReturnT removeFilter(unsigned long, const char*, YaltNameValuePair**) override { return ZORV_RETURN_OK; }
    ZorvReturnT clearAll() override { return ZORV_RETURN_OK; }
    ZorvReturnT doneWithValue(const char*, void*) override { return ZORV_RETURN_OK; }

private:
    using SubscriberT = std::pair<unsigned long, YaltNameValuePair**>;

    EventRouter& router;
    std::uint32_t handle = 0;
    std::mutex mutex;
    std::multimap<std::string, SubscriberT> subscribers;  // guarded by mutex
};

}  // namespace ZorvNode
