#include "ingress/FmNotificationSource.hpp"

#include <algorithm>
#include <thread>
#include <utility>

#include "ZorvOamSpiFmAlarmSuppress_1.h"
#include "files/Number.hpp"

namespace ZorvNode {

namespace {

constexpr std::size_t sentAtOnce = 100;
constexpr std::chrono::microseconds pauseOfSender(50);

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
    if (!entry.wasSent || !isClearOfOne(entry.notification->get())) {
        return entry.notification;
    }
    FmNotification notification = entry.notification->get();
    notification.dn = patternOf(notification.dn);
    return std::make_shared<PublishedNotification>(std::move(notification));
}

}  // namespace

FmNotificationSource::FmNotificationSource(EventRouter& eventRouter, const InboxBounds& inboxBounds, Database* database,
                                           const LogSinkT& logSink)
    : router(eventRouter),
      bounds(inboxBounds),
      inbox(database, logSink),
      allowed(inboxBounds.sent),
      budget(inboxBounds.portion())
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
    const bool wasEmpty = inbox.getEntries().empty();
    inbox.append(published, id);
    if (wasEmpty && filled) {
        filled();
    }
    statistics.accepted += published.size();
    sendWaiting();
    return inbox.isRecorded();
}

void FmNotificationSource::requireRoom(std::size_t coming)
{
    const std::size_t present = inbox.getEntries().size();
    if (present + coming <= bounds.kept) {
        return;
    }
    ++statistics.busy;
    const std::size_t waiting = numberWaiting();
    throw SourceBusy((waiting > 0 ? std::to_string(waiting) + " notifications wait for a component that takes them"
                                  : std::to_string(present) + " notifications are not known to be handled yet") +
                     ", and the node keeps " + std::to_string(bounds.kept) + "; try again");
}

/// Sends the entries that were not sent yet to those who take them, as many as they may have at a time.
void FmNotificationSource::sendWaiting()
{
    if (held || !hasNotificationSubscriber()) {
        return;
    }
    for (auto entry = inbox.firstWaiting(); entry != inbox.getEntries().end() && maySend(); ++entry) {
        if (!entry->second.isSent) {
            send(entry->first, entry->second);
        }
    }
}

void FmNotificationSource::send(std::uint64_t number, NotificationInbox::Entry& entry)
{
    const auto notification = asSentAgain(entry);
    for (const Subscriber& subscriber : subscribers) {
        if (number >= subscriber.from && subscriber.eventType == notification->eventType()) {
            notify(subscriber, notification, notification->value(), number);
            inbox.markSent(entry);
        }
    }
    budget -= entry.isSent ? 1 : 0;
}

bool FmNotificationSource::maySend() const
{
    return budget > 0 && inbox.getNumberSent() < allowed;
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
    sendWaiting();
}

FmNotificationSource::Taken FmNotificationSource::getLastTaken()
{
    const LockT lock(mutex);
    return {lastTaken(), life};
}

void FmNotificationSource::noteHandled(const Taken& handled)
{
    const LockT lock(mutex);
    if (handled.life == life) {
        inbox.trim(std::min(handled.number, lastTaken()));
        allowed = bounds.sent;
        sendWaiting();
    }
}

/// In pieces: whoever publishes meanwhile waits for one of them at most.
void FmNotificationSource::sendPortion()
{
    std::size_t left = bounds.portion();
    while (!sendPiece(left)) {
        std::this_thread::sleep_for(pauseOfSender);
    }
}

/// True when there is nothing left to send; what is left of the portion is for what comes.
bool FmNotificationSource::sendPiece(std::size_t& left)
{
    const LockT lock(mutex);
    budget = std::min(left, sentAtOnce);
    left -= budget;
    sendWaiting();
    if (budget > 0) {
        budget += left;
        return true;
    }
    return left == 0;
}

void FmNotificationSource::allowMore()
{
    const LockT lock(mutex);
    const LockT wayLock(wayMutex);
    if (numbersOnTheirWay.empty()) {
        allowed = inbox.getNumberSent() + bounds.sent;
    }
}

void FmNotificationSource::noteOrderlyEnd(const Taken& handled)
{
    const LockT lock(mutex);
    if (!hasNotificationSubscriber()) {
        inbox.trim(handled.number);
    }
}

void FmNotificationSource::whenFilled(std::function<void()> call)
{
    const LockT lock(mutex);
    filled = std::move(call);
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
        ++life;
    }
}

/// Everything up to this entry was sent, and its consumers have taken it.
std::uint64_t FmNotificationSource::lastTaken()
{
    const auto waiting = inbox.firstWaiting();
    const std::uint64_t last = waiting == inbox.getEntries().end() ? inbox.getLastNumber() : waiting->first - 1;
    const LockT lock(wayMutex);
    return numbersOnTheirWay.empty() ? last : std::min(last, numbersOnTheirWay.begin()->first - 1);
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
    return numberWaiting();
}

/// What waits until there is room again has somebody who takes it.
std::size_t FmNotificationSource::numberWaiting() const
{
    return isWindowFull() ? 0 : inbox.getNumberWaiting();
}

bool FmNotificationSource::isWindowFull() const
{
    return hasNotificationSubscriber() && !maySend();
}

bool FmNotificationSource::hasMoreToSend()
{
    const LockT lock(mutex);
    return isWindowFull() && inbox.getNumberWaiting() > 0;
}

// --- for the router

ZorvReturnT FmNotificationSource::addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    std::uint64_t lastHandled = 0;
    if (!readTimeFilter(eventType, filter, lastHandled)) {
        return ZORV_RETURN_FAILED;
    }
    Subscriber subscriber{consumerId, eventType, filter, 0};
    const LockT lock(mutex);
    if (*filter != nullptr) {
        sendInbox(subscriber, lastHandled);
    } else {
        subscriber.from = inbox.getLastNumber() + 1;
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
        if (isOfItsType(entry->second) && (entry->second.isSent || maySend())) {
            budget -= entry->second.isSent ? 0 : 1;
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
        if (number != 0) {
            ++numbersOnTheirWay[number];
        }
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
    const auto number = numbersOnTheirWay.find(found->second.number);
    if (number != numbersOnTheirWay.end() && --number->second == 0) {
        numbersOnTheirWay.erase(number);
    }
    if (--found->second.deliveries == 0) {
        onTheirWay.erase(found);
    }
    return ZORV_RETURN_OK;
}

}  // namespace ZorvNode
