#include "northbound/FollowPrinter.hpp"

#include <utility>

#include "ZorvOamApiFmNotification_3.h"
#include "northbound/NotificationText.hpp"

namespace ZorvNode {

FollowPrinter::FollowPrinter(EventRouter& eventRouter, std::ostream* out, std::function<void()> onStreamFailed)
    : router(eventRouter),
      stream(out),
      streamFailed(std::move(onStreamFailed))
{
    router.registerConsumer(std::shared_ptr<RouterConsumer>(std::shared_ptr<void>(), this), id);
    for (const char* eventType : northboundEventTypes) {
        router.addSubscription(id, eventType, nullptr);
    }
}

FollowPrinter::~FollowPrinter()
{
    router.unregisterConsumer(id);
    router.waitUntilCallbacksEnded(std::chrono::seconds(5));
}

ZorvReturnT FollowPrinter::onEvent(unsigned long /*consumerId*/, const char* eventType, YaltNameValuePair** /*filter*/,
                                   void* value)
{
    ++numberOfNotifications;
    if (std::string(eventType) == ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3) {
        ++numberOfAlarms;
    }
    if (stream == nullptr || failed) {
        return ZORV_RETURN_OK;
    }
    *stream << notificationText(eventType, value) << std::endl;
    if (!*stream) {
        failed = true;
        streamFailed();
        return ZORV_RETURN_FAILED;
    }
    return ZORV_RETURN_OK;
}

}  // namespace ZorvNode
