#include "api/NotificationFollower.hpp"

namespace ZorvNode {

namespace {

constexpr std::chrono::seconds longestCallback(5);

}  // namespace

NotificationFollower::NotificationFollower(EventRouter& eventRouter, std::size_t historyBound)
    : router(eventRouter),
      version2(historyBound),
      version3(historyBound)
{
    router.registerConsumer(std::shared_ptr<RouterConsumer>(std::shared_ptr<void>(), this), id);
    for (const char* eventType : northboundEventTypes) {
        router.addSubscription(id, eventType, nullptr);
    }
}

NotificationFollower::~NotificationFollower()
{
    router.unregisterConsumer(id);
    router.waitUntilCallbacksEnded(longestCallback);
}

ZorvReturnT NotificationFollower::onEvent(unsigned long /*consumerId*/, const char* eventType,
                                          YaltNameValuePair** /*filter*/, void* value)
{
    const NorthboundEvent event = readNorthboundEvent(eventType, value);
    (event.version == 2 ? version2 : version3).add(event);
    return ZORV_RETURN_OK;
}

}  // namespace ZorvNode
