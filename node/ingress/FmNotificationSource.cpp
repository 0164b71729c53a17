#include "ingress/FmNotificationSource.hpp"

#include <Poco/NumberParser.h>

#include <chrono>
#include <utility>

#include "ZorvOamSpiFmAlarmSuppress_1.h"

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

const char* const announcedTypes[] = {
    ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
    YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
    YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1,
};

std::uint64_t nowInNanoseconds()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

/// The youngest of the filter's times. False when an entry is no time filter of this event type.
bool readTimeFilter(const char* eventType, YaltNameValuePair* const* filter, std::uint64_t& youngerThan)
{
    const char* const timeFilter = timeFilterOf(eventType);
    for (; *filter != nullptr; ++filter) {
        Poco::UInt64 time = 0;
        if (timeFilter == nullptr || std::string(timeFilter) != (*filter)->name ||
            !Poco::NumberParser::tryParseUnsigned64((*filter)->value, time)) {
            return false;
        }
        youngerThan = std::max<std::uint64_t>(youngerThan, time);
    }
    return true;
}

}  // namespace

FmNotificationSource::FmNotificationSource(EventRouter& eventRouter, std::size_t retainedBound)
    : router(eventRouter),
      bound(retainedBound)
{
    router.registerProducer(std::shared_ptr<RouterProducer>(std::shared_ptr<void>(), this), handle);
    for (const char* eventType : announcedTypes) {
        router.addEventType(handle, eventType);
    }
}

FmNotificationSource::~FmNotificationSource()
{
    router.unregisterProducer(handle);
    router.waitUntilCallbacksEnded(std::chrono::seconds(5));
}

void FmNotificationSource::publish(FmNotification notification)
{
    const std::uint64_t time =
        notification.eventTime != 0 && notification.version != 1 ? notification.eventTime : nowInNanoseconds();
    const Retained published{std::make_shared<PublishedNotification>(std::move(notification)), time};
    const LockT lock(mutex);
    for (const Subscriber& subscriber : subscribers) {
        send(subscriber, published);
    }
    retained.push_back(published);
    if (retained.size() > bound) {
        retained.pop_front();
    }
}

void FmNotificationSource::suppress(bool on)
{
    const auto value =
        std::make_shared<ZorvOamSpiFmAlarmSuppressType_1>(on ? ZORV_FM_ALARM_SUPPRESS_ON : ZORV_FM_ALARM_SUPPRESS_OFF);
    const LockT lock(mutex);
    for (const Subscriber& subscriber : subscribers) {
        if (subscriber.eventType == ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1) {
            notify(subscriber, value, value.get());
        }
    }
}

ZorvReturnT FmNotificationSource::addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    std::uint64_t youngerThan = 0;
    if (!readTimeFilter(eventType, filter, youngerThan)) {
        return ZORV_RETURN_FAILED;
    }
    Subscriber subscriber{consumerId, eventType, filter};
    const bool wantsRetained = *filter != nullptr;
    const LockT lock(mutex);
    for (const Retained& notification : retained) {
        if (wantsRetained && notification.time > youngerThan) {
            send(subscriber, notification);
        }
    }
    subscribers.push_back(std::move(subscriber));
    return ZORV_RETURN_OK;
}

ZorvReturnT FmNotificationSource::removeFilter(unsigned long consumerId, const char* eventType,
                                               YaltNameValuePair** filter)
{
    const LockT lock(mutex);
    subscribers.remove_if([&](const Subscriber& subscriber) {
        return subscriber.consumerId == consumerId && subscriber.eventType == eventType && subscriber.filter == filter;
    });
    return ZORV_RETURN_OK;
}

ZorvReturnT FmNotificationSource::clearAll()
{
    const LockT lock(mutex);
    subscribers.clear();
    return ZORV_RETURN_OK;
}

void FmNotificationSource::send(const Subscriber& subscriber, const Retained& published)
{
    if (subscriber.eventType == published.notification->eventType()) {
        notify(subscriber, published.notification, published.notification->value());
    }
}

void FmNotificationSource::notify(const Subscriber& subscriber, std::shared_ptr<void> keeper, void* value)
{
    {
        const LockT lock(wayMutex);
        OnItsWay& way = onTheirWay[value];
        way.keeper = std::move(keeper);
        ++way.deliveries;
    }
    if (router.notify(handle, subscriber.consumerId, subscriber.eventType.c_str(), subscriber.filter, value) !=
        ZORV_RETURN_OK) {
        doneWithValue(subscriber.eventType.c_str(), value);
    }
}

ZorvReturnT FmNotificationSource::doneWithValue(const char* /*eventType*/, void* value)
{
    const LockT lock(wayMutex);
    const auto found = onTheirWay.find(value);
    if (found == onTheirWay.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    if (--found->second.deliveries == 0) {
        onTheirWay.erase(found);
    }
    return ZORV_RETURN_OK;
}

}  // namespace ZorvNode
