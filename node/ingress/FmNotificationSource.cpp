#include "ingress/FmNotificationSource.hpp"

#include <algorithm>
#include <utility>

#include "ZorvOamSpiFmAlarmSuppress_1.h"
#include "files/Number.hpp"

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

const char* const announcedTypes[] = {
    ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
    YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
    YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1,
};

/// The youngest of the filter's times. False when an entry is no time filter of this event type.
bool readTimeFilter(const char* eventType, YaltNameValuePair* const* filter, std::uint64_t& lastHandled)
{
    const char* const timeFilter = timeFilterOf(eventType);
    for (; *filter != nullptr; ++filter) {
        std::uint64_t time = 0;
        if (timeFilter == nullptr || std::string(timeFilter) != (*filter)->name ||
            !parseUnsigned((*filter)->value, time)) {
            return false;
        }
        lastHandled = std::max(lastHandled, time);
    }
    return true;
}

/// Not one whose DN can only be meant as a pattern.
bool isClearOfOne(const FmNotification& notification)
{
    return notification.severity == YALT_FM_SEVERITY_CLEARED &&
           notification.dn.find_first_of("*+?[](){}|^$\\") == std::string::npos;
}

/// The pattern that fits one DN and no other. @param dn of a clear of one.
std::string patternOf(const std::string& dn)
{
    std::string pattern = "^";
    for (const char character : dn) {
        pattern.append(character == '.' ? "\\" : "").append(1, character);
    }
    return pattern + "$";
}

/// A clear that may have been handled already has to find that alarm or none.
NotificationInbox::NotificationT asSentAgain(const NotificationInbox::Entry& entry)
{
    FmNotification notification = entry.notification->get();
    if (!entry.wasSent || !isClearOfOne(notification)) {
        return entry.notification;
    }
    notification.dn = patternOf(notification.dn);
    return std::make_shared<PublishedNotification>(std::move(notification));
}

}  // namespace

FmNotificationSource::FmNotificationSource(EventRouter& eventRouter, std::size_t inboxBound, Database* database,
                                           const LogSinkT& logSink)
    : router(eventRouter),
      bound(inboxBound),
      inbox(database, logSink)
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

// --- publishing

bool FmNotificationSource::publish(std::vector<FmNotification> notifications, const std::optional<PublicationId>& id)
{
    std::vector<NotificationInbox::NotificationT> published;
    published.reserve(notifications.size());
    for (FmNotification& notification : notifications) {
        published.push_back(std::make_shared<PublishedNotification>(std::move(notification)));
    }
    const LockT lock(mutex);
    if (id && inbox.hasAccepted(*id)) {
        ++statistics.repeated;
        return inbox.isRecorded();
    }
    requireRoom(published.size());
    const auto first = inbox.append(published, id);
    statistics.accepted += published.size();
    if (!held) {
        sendFrom(first);
    }
    return inbox.isRecorded();
}

void FmNotificationSource::requireRoom(std::size_t coming)
{
    const std::size_t present = inbox.getEntries().size();
    if (present + coming <= bound) {
        return;
    }
    ++statistics.busy;
    const std::size_t waiting = inbox.getNumberWaiting();
    throw SourceBusy((waiting > 0 ? std::to_string(waiting) + " notifications wait for a component that takes them"
                                  : std::to_string(present) + " notifications are not known to be handled yet") +
                     ", and the node keeps " + std::to_string(bound) + "; try again");
}

/// Sends the entries that were not sent yet to those who take them.
void FmNotificationSource::sendFrom(EntriesT::iterator first)
{
    for (auto entry = first; entry != inbox.getEntries().end(); ++entry) {
        const auto notification = entry->second.notification;
        if (entry->second.isSent) {
            continue;
        }
        for (const Subscriber& subscriber : subscribers) {
            if (subscriber.eventType == notification->eventType()) {
                notify(subscriber, notification, notification->value(), entry->first);
                inbox.markSent(entry->second);
            }
        }
    }
}

bool FmNotificationSource::suppress(bool on)
{
    const auto value =
        std::make_shared<ZorvOamSpiFmAlarmSuppressType_1>(on ? ZORV_FM_ALARM_SUPPRESS_ON : ZORV_FM_ALARM_SUPPRESS_OFF);
    bool isTaken = false;
    const LockT lock(mutex);
    for (const Subscriber& subscriber : subscribers) {
        if (subscriber.eventType == ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1) {
            notify(subscriber, value, value.get(), 0);
            isTaken = true;
        }
    }
    suppressed = isTaken ? on : suppressed.load();
    return isTaken;
}

void FmNotificationSource::hold()
{
    const LockT lock(mutex);
    held = true;
}

void FmNotificationSource::release()
{
    const LockT lock(mutex);
    held = false;
    sendFrom(inbox.getEntries().begin());
}

std::uint64_t FmNotificationSource::getLastTaken()
{
    const LockT lock(mutex);
    return lastTaken();
}

void FmNotificationSource::noteHandled(std::uint64_t number)
{
    const LockT lock(mutex);
    inbox.trim(std::min(number, lastTaken()));
}

void FmNotificationSource::noteOrderlyEnd(std::uint64_t number)
{
    const LockT lock(mutex);
    if (!hasNotificationSubscriber()) {
        inbox.trim(number);
    }
}

bool FmNotificationSource::hasNotificationSubscriber() const
{
    return std::any_of(subscribers.begin(), subscribers.end(),
                       [](const Subscriber& subscriber) { return timeFilterOf(subscriber.eventType) != nullptr; });
}

/// What the last one had taken may be lost with it.
void FmNotificationSource::noteLeft()
{
    if (!hasNotificationSubscriber()) {
        inbox.markAllWaiting();
    }
}

/// Everything up to this entry was sent, and its consumers have taken it.
std::uint64_t FmNotificationSource::lastTaken()
{
    std::uint64_t last = inbox.getLastNumber();
    const EntriesT& entries = inbox.getEntries();
    if (inbox.getNumberWaiting() > 0) {
        last =
            std::find_if(entries.begin(), entries.end(), [](const auto& it) { return !it.second.isSent; })->first - 1;
    }
    const LockT lock(wayMutex);
    for (const auto& [value, way] : onTheirWay) {
        if (way.number != 0) {
            last = std::min(last, way.number - 1);
        }
    }
    return last;
}

void FmNotificationSource::catchUp()
{
    const LockT lock(mutex);
    inbox.catchUp();
}

std::size_t FmNotificationSource::getNumberInInbox()
{
    const LockT lock(mutex);
    return inbox.getEntries().size();
}

std::size_t FmNotificationSource::getNumberWaiting()
{
    const LockT lock(mutex);
    return inbox.getNumberWaiting();
}

// --- for the router

ZorvReturnT FmNotificationSource::addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    std::uint64_t lastHandled = 0;
    if (!readTimeFilter(eventType, filter, lastHandled)) {
        return ZORV_RETURN_FAILED;
    }
    Subscriber subscriber{consumerId, eventType, filter};
    const LockT lock(mutex);
    if (*filter != nullptr) {
        sendInbox(subscriber, lastHandled);
    }
    subscribers.push_back(std::move(subscriber));
    return ZORV_RETURN_OK;
}

void FmNotificationSource::sendInbox(const Subscriber& subscriber, std::uint64_t lastHandled)
{
    EntriesT& entries = inbox.getEntries();
    const auto isOfItsType = [&](const NotificationInbox::Entry& entry) {
        return subscriber.eventType == entry.notification->eventType();
    };
    auto begin = std::find_if(entries.begin(), entries.end(), [&](const auto& it) {
        return lastHandled != 0 && isOfItsType(it.second) && it.second.notification->get().eventTime == lastHandled;
    });
    if (begin == entries.end()) {
        begin = entries.begin();
    } else if (isClearOfOne(begin->second.notification->get())) {
        ++begin;
    }
    std::for_each(entries.begin(), begin, [&](auto& it) {
        if (isOfItsType(it.second)) {
            inbox.markSent(it.second);
        }
    });
    for (auto entry = begin; entry != entries.end(); ++entry) {
        if (isOfItsType(entry->second)) {
            const auto notification = asSentAgain(entry->second);
            notify(subscriber, notification, notification->value(), entry->first);
            inbox.markSent(entry->second);
            ++statistics.sentAgain;
        }
    }
}

ZorvReturnT FmNotificationSource::removeFilter(unsigned long consumerId, const char* eventType,
                                               YaltNameValuePair** filter)
{
    const LockT lock(mutex);
    subscribers.remove_if([&](const Subscriber& subscriber) {
        return subscriber.consumerId == consumerId && subscriber.eventType == eventType && subscriber.filter == filter;
    });
    noteLeft();
    return ZORV_RETURN_OK;
}

ZorvReturnT FmNotificationSource::clearAll()
{
    const LockT lock(mutex);
    subscribers.clear();
    noteLeft();
    return ZORV_RETURN_OK;
}

void FmNotificationSource::notify(const Subscriber& subscriber, std::shared_ptr<void> keeper, void* value,
                                  std::uint64_t number)
{
    {
        const LockT lock(wayMutex);
        OnItsWay& way = onTheirWay[value];
        way.keeper = std::move(keeper);
        way.number = number;
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
