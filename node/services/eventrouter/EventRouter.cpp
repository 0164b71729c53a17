#include "services/eventrouter/EventRouter.hpp"

#include <algorithm>
#include <utility>

#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

namespace {

using SharedLockT = std::shared_lock<std::shared_mutex>;
using UniqueLockT = std::unique_lock<std::shared_mutex>;

}  // namespace

EventRouter::EventRouter(const Limits& routerLimits, LogSinkT logSink) : limits(routerLimits), log(std::move(logSink))
{
}

EventRouter::~EventRouter()
{
    shutdown();
}

// --- producers

ZorvReturnT EventRouter::registerProducer(std::shared_ptr<RouterProducer> port, std::uint32_t& handle)
{
    auto producer = std::make_shared<ProducerRecord>(std::move(port), statistics);
    const UniqueLockT lock(mutex);
    handle = ++lastHandle;
    producers.emplace(handle, std::move(producer));
    return ZORV_RETURN_OK;
}

ZorvReturnT EventRouter::addEventType(std::uint32_t handle, const char* eventType)
{
    ProducerT producer;
    {
        const UniqueLockT lock(mutex);
        producer = findProducer(handle);
        if (!producer) {
            return ZORV_RETURN_NOT_FOUND;
        }
        if (!producer->announce(eventType)) {
            return ZORV_RETURN_EXISTS;
        }
        for (const auto& [id, consumer] : consumers) {
            for (const SubscriptionT& subscription : consumer->subscriptions) {
                if (subscription->eventType == eventType) {
                    producer->queueAdded(subscription);
                }
            }
        }
    }
    producer->tellPending();
    return ZORV_RETURN_OK;
}

ZorvReturnT EventRouter::notify(std::uint32_t handle, unsigned long consumerId, const char* eventType,
                                YaltNameValuePair* const* filter, void* value)
{
    const SharedLockT lock(mutex);
    const auto knownProducer = producers.find(handle);
    const auto knownConsumer = consumers.find(consumerId);
    if (knownProducer == producers.end() || knownConsumer == consumers.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const ConsumerT& consumer = knownConsumer->second;
    const auto& subscriptions = consumer->subscriptions;
    const auto found = std::find_if(subscriptions.begin(), subscriptions.end(), [&](const SubscriptionT& candidate) {
        return candidate->eventType == eventType &&
               (candidate->filter.array() == filter || (filter == nullptr && candidate->filter.isEmpty()));
    });
    if (found == subscriptions.end()) {
        return ZORV_RETURN_NOT_FOUND;  // it has ended meanwhile; its filter may be gone
    }
    ++onTheirWay;
    const ConsumerQueue::Push pushed = consumer->push({knownProducer->second, *found, value});
    if (pushed == ConsumerQueue::Push::taken) {
        ++statistics.accepted;
        return ZORV_RETURN_OK;
    }
    handedBack();
    if (pushed == ConsumerQueue::Push::closed) {
        return ZORV_RETURN_NOT_FOUND;
    }
    ++statistics.lost;
    if (pushed == ConsumerQueue::Push::fullFirst) {
        log(ZORV_LOG_WARNING, "Event queue of consumer " + std::to_string(consumerId) + " is full (" +
                                  std::to_string(limits.queueBound) + "), events are lost: " + eventType);
    }
    return ZORV_RETURN_NO_RESOURCES;
}

ZorvReturnT EventRouter::removeEventType(std::uint32_t handle, const char* eventType)
{
    const UniqueLockT lock(mutex);
    const ProducerT producer = findProducer(handle);
    return producer && producer->takeBack(eventType) ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
}

ZorvReturnT EventRouter::unregisterProducer(std::uint32_t handle)
{
    ProducerT producer;
    {
        const UniqueLockT lock(mutex);
        producer = findProducer(handle);
        if (!producer) {
            return ZORV_RETURN_NOT_FOUND;
        }
        producers.erase(handle);
    }
    end(producer);
    return ZORV_RETURN_OK;
}

void EventRouter::end(const ProducerT& producer)
{
    for (const ConsumerT& consumer : allConsumers()) {
        handBack(consumer, [&producer](const Delivery& delivery) { return delivery.producer == producer; });
    }
    producer->close();
    const UniqueLockT lock(mutex);
    leavingProducers.push_back(producer);
}

// --- consumers

ZorvReturnT EventRouter::registerConsumer(std::shared_ptr<RouterConsumer> port, unsigned long& consumerId)
{
    reap();
    const UniqueLockT lock(mutex);
    if (consumers.size() >= limits.consumerBound) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    const unsigned long id = ++lastConsumerId;
    consumers.emplace(id, std::make_shared<ConsumerQueue>(id, std::move(port), limits.queueBound, statistics,
                                                          [this] { handedBack(); }));
    consumerId = id;
    return ZORV_RETURN_OK;
}

ZorvReturnT EventRouter::addSubscription(unsigned long consumerId, const char* eventType,
                                         YaltNameValuePair* const* filter)
{
    auto subscription = std::make_shared<Subscription>(consumerId, eventType, filter);
    std::vector<ProducerT> concerned;
    {
        const UniqueLockT lock(mutex);
        const ConsumerT consumer = findConsumer(consumerId);
        if (!consumer) {
            return ZORV_RETURN_NOT_FOUND;
        }
        consumer->subscriptions.push_back(subscription);
        concerned = announcers(eventType);
        for (const ProducerT& producer : concerned) {
            producer->queueAdded(subscription);
        }
    }
    for (const ProducerT& producer : concerned) {
        producer->tellPending();
    }
    return ZORV_RETURN_OK;
}

ZorvReturnT EventRouter::removeSubscription(unsigned long consumerId, const char* eventType,
                                            YaltNameValuePair* const* filter)
{
    ConsumerT consumer;
    SubscriptionT ended;
    {
        const UniqueLockT lock(mutex);
        consumer = findConsumer(consumerId);
        if (!consumer) {
            return ZORV_RETURN_NOT_FOUND;
        }
        auto& subscriptions = consumer->subscriptions;
        const auto found =
            std::find_if(subscriptions.begin(), subscriptions.end(), [&](const SubscriptionT& candidate) {
                return candidate->eventType == eventType && candidate->filter.equals(filter);
            });
        if (found == subscriptions.end()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        ended = *found;
        subscriptions.erase(found);
    }
    end(consumer, {ended});
    return ZORV_RETURN_OK;
}

ZorvReturnT EventRouter::unregisterConsumer(unsigned long consumerId)
{
    ConsumerT consumer;
    std::vector<SubscriptionT> ended;
    {
        const UniqueLockT lock(mutex);
        consumer = findConsumer(consumerId);
        if (!consumer) {
            return ZORV_RETURN_NOT_FOUND;
        }
        consumers.erase(consumerId);
        leaving.push_back(consumer);
        ended.swap(consumer->subscriptions);
    }
    consumer->close();
    end(consumer, ended);
    consumer.reset();
    reap();
    return ZORV_RETURN_OK;
}

/// Tells the producers that these subscriptions have ended and hands back what still waits for them.
void EventRouter::end(const ConsumerT& consumer, const std::vector<SubscriptionT>& ended)
{
    std::vector<ProducerT> concerned;
    {
        const UniqueLockT lock(mutex);
        for (const SubscriptionT& subscription : ended) {
            subscription->ended = true;
            for (const ProducerT& producer : announcers(subscription->eventType)) {
                producer->queueRemoved(subscription);
                concerned.push_back(producer);
            }
        }
    }
    handBack(consumer, [](const Delivery& delivery) { return delivery.subscription->ended.load(); });
    for (const ProducerT& producer : concerned) {
        producer->tellPending();
    }
}

// --- common

void EventRouter::shutdown()
{
    for (const ConsumerT& consumer : allConsumers()) {
        unregisterConsumer(consumer->consumerId);
    }
    std::map<std::uint32_t, ProducerT> ending;
    {
        const UniqueLockT lock(mutex);
        ending.swap(producers);
    }
    for (const auto& [handle, producer] : ending) {
        end(producer);
        producer->clearAll();
    }
    std::vector<ConsumerT> remaining;  // their destructors wait for the threads, which may still call the router
    const UniqueLockT lock(mutex);
    remaining.swap(leaving);
}

bool EventRouter::waitUntilIdle(std::chrono::milliseconds bound)
{
    std::unique_lock<std::mutex> lock(idleMutex);
    return idle.wait_for(lock, bound, [this] { return onTheirWay == 0; });
}

bool EventRouter::allCallbacksEnded()
{
    reap();
    const SharedLockT lock(mutex);
    return leaving.empty() && leavingProducers.empty();
}

bool EventRouter::waitUntilCallbacksEnded(std::chrono::milliseconds bound)
{
    const auto latest = std::chrono::steady_clock::now() + bound;
    while (!allCallbacksEnded()) {
        if (std::chrono::steady_clock::now() > latest) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// One by one, so that a producer that leaves meanwhile finds what still waits and hands it back itself.
void EventRouter::handBack(const ConsumerT& consumer, const std::function<bool(const Delivery&)>& fits)
{
    while (const auto delivery = consumer->takeOut(fits)) {
        ++statistics.dropped;
        delivery->producer->doneWithValue(delivery->subscription->eventType, delivery->value);
        delivery->producer->calls.leave();
        handedBack();
    }
}

void EventRouter::handedBack()
{
    if (--onTheirWay == 0) {
        const std::lock_guard<std::mutex> lock(idleMutex);
        idle.notify_all();
    }
}

/// Lets go of the consumers whose threads have ended, and of the producers that no callback runs of any more.
void EventRouter::reap()
{
    std::vector<ConsumerT> gone;
    const UniqueLockT lock(mutex);
    for (auto it = leaving.begin(); it != leaving.end();) {
        if ((*it)->hasEnded()) {
            gone.push_back(std::move(*it));
            it = leaving.erase(it);
        } else {
            ++it;
        }
    }
    const auto busy = std::stable_partition(leavingProducers.begin(), leavingProducers.end(),
                                            [](const ProducerT& producer) { return !producer->calls.isEmpty(); });
    leavingProducers.erase(busy, leavingProducers.end());
}

EventRouter::ProducerT EventRouter::findProducer(std::uint32_t handle) const
{
    const auto found = producers.find(handle);
    return found != producers.end() ? found->second : nullptr;
}

EventRouter::ConsumerT EventRouter::findConsumer(unsigned long consumerId) const
{
    const auto found = consumers.find(consumerId);
    return found != consumers.end() ? found->second : nullptr;
}

std::vector<EventRouter::ProducerT> EventRouter::announcers(const std::string& eventType) const
{
    std::vector<ProducerT> found;
    for (const auto& [handle, producer] : producers) {
        if (producer->announces(eventType)) {
            found.push_back(producer);
        }
    }
    return found;
}

/// Those that are leaving included.
std::vector<EventRouter::ConsumerT> EventRouter::allConsumers() const
{
    const SharedLockT lock(mutex);
    std::vector<ConsumerT> all = leaving;
    for (const auto& [id, consumer] : consumers) {
        all.push_back(consumer);
    }
    return all;
}

}  // namespace ZorvNode
