#include "services/eventrouter/ProducerRecord.hpp"

#include <utility>

namespace ZorvNode {

ProducerRecord::ProducerRecord(std::shared_ptr<RouterProducer> producerPort, RouterStatistics& routerStatistics)
    : port(std::move(producerPort)),
      statistics(routerStatistics)
{
}

bool ProducerRecord::announces(const std::string& eventType) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return eventTypes.count(eventType) > 0;
}

bool ProducerRecord::announce(const std::string& eventType)
{
    const std::lock_guard<std::mutex> lock(mutex);
    return eventTypes.insert(eventType).second;
}

bool ProducerRecord::takeBack(const std::string& eventType)
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (auto it = accepted.begin(); it != accepted.end();) {
        if ((*it)->eventType == eventType) {
            retired.push_back(*it);
            it = accepted.erase(it);
        } else {
            ++it;
        }
    }
    return eventTypes.erase(eventType) > 0;
}

void ProducerRecord::queueAdded(const SubscriptionT& subscription)
{
    const std::lock_guard<std::mutex> lock(mutex);
    pending.push_back({subscription, true});
}

void ProducerRecord::queueRemoved(const SubscriptionT& subscription)
{
    const std::lock_guard<std::mutex> lock(mutex);
    pending.push_back({subscription, false});
}

void ProducerRecord::tellPending()
{
    std::unique_lock<std::mutex> lock(mutex);
    if (telling) {
        return;
    }
    telling = true;
    while (!pending.empty() && !closed) {
        const Change change = std::move(pending.front());
        pending.pop_front();
        {
            const ActiveCalls::Scope scope(calls);
            lock.unlock();
            tell(change);
            lock.lock();
        }
    }
    telling = false;
}

void ProducerRecord::tell(const Change& change)
{
    if (change.added) {
        tellAdded(change.subscription);
    } else {
        tellRemoved(change.subscription);
    }
}

void ProducerRecord::tellAdded(const SubscriptionT& subscription)
{
    if (subscription->ended || !announces(subscription->eventType)) {
        return;
    }
    const ZorvReturnT result = call([&] {
        return port->addFilter(subscription->consumerId, subscription->eventType.c_str(), subscription->filter.array());
    });
    if (result != ZORV_RETURN_OK) {
        return;
    }
    const std::lock_guard<std::mutex> lock(mutex);
    if (eventTypes.count(subscription->eventType) > 0) {
        accepted.insert(subscription);
    } else {
        retired.push_back(subscription);  // taken back while it was being told
    }
}

void ProducerRecord::tellRemoved(const SubscriptionT& subscription)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (accepted.erase(subscription) == 0) {
            return;
        }
    }
    call([&] {
        return port->removeFilter(subscription->consumerId, subscription->eventType.c_str(),
                                  subscription->filter.array());
    });
}

void ProducerRecord::doneWithValue(const std::string& eventType, void* value)
{
    call([&] { return port->doneWithValue(eventType.c_str(), value); });
}

void ProducerRecord::close()
{
    const std::lock_guard<std::mutex> lock(mutex);
    closed = true;
}

void ProducerRecord::clearAll()
{
    call([this] { return port->clearAll(); });
}

template <class CallT>
ZorvReturnT ProducerRecord::call(CallT callback)
{
    try {
        return callback();
    } catch (...) {
        ++statistics.threw;
        return ZORV_RETURN_FAILED;
    }
}

}  // namespace ZorvNode
