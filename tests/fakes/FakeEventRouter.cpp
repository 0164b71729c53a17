#include "FakeEventRouter.hpp"

#include <algorithm>
#include <utility>

#include "EventText.hpp"

namespace ZorvFakes {

namespace {

const ZorvOamSpiEventRouter_1T theTable = {forward<&FakeEventRouter::registerProducer>,
                                           forward<&FakeEventRouter::addEventType>,
                                           forward<&FakeEventRouter::notify>,
                                           forward<&FakeEventRouter::removeEventType>,
                                           forward<&FakeEventRouter::unregisterProducer>,
                                           forward<&FakeEventRouter::registerConsumer>,
                                           forward<&FakeEventRouter::addSubscription>,
                                           forward<&FakeEventRouter::removeSubscription>,
                                           forward<&FakeEventRouter::unregisterConsumer>};

int32_t foundOrNot(bool found)
{
    return found ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
}

}  // namespace

FakeEventRouter::FakeEventRouter(Journal& theJournal) : Fake(theJournal, Topic::Router)
{
}

const ZorvOamSpiEventRouter_1T* FakeEventRouter::table()
{
    return &theTable;
}

// --- Look-ups

std::string FakeEventRouter::rendered(const std::string& eventType, const void* value) const
{
    Renderer renderer;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (const auto found = renderers.find(eventType); found != renderers.end()) {
            renderer = found->second;
        }
    }
    return renderer ? renderer(value) : eventText(eventType, value);
}

FakeEventRouter::NotifyCallback FakeEventRouter::callbackOf(unsigned long consumerId) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = consumers.find(consumerId);
    return found == consumers.end() ? nullptr : found->second;
}

std::optional<ZorvOamSpiEventProducer_1T> FakeEventRouter::callbacksOf(uint32_t producerHandle) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = producers.find(producerHandle);
    return found == producers.end() ? std::nullopt : std::make_optional(found->second.callbacks);
}

bool FakeEventRouter::announces(uint32_t producerHandle, const std::string& eventType) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = producers.find(producerHandle);
    return found != producers.end() && found->second.eventTypes.count(eventType) != 0;
}

bool FakeEventRouter::isProducer(uint32_t producerHandle) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return producers.count(producerHandle) != 0;
}

bool FakeEventRouter::isConsumer(unsigned long consumerId) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return consumers.count(consumerId) != 0;
}

// --- For the test

void FakeEventRouter::setRenderer(const std::string& eventType, Renderer renderer)
{
    const std::lock_guard<std::mutex> lock(mutex);
    renderers[eventType] = std::move(renderer);
}

std::vector<int32_t> FakeEventRouter::fire(const std::string& eventType, void* value)
{
    std::vector<int32_t> codes;
    for (const Subscriptions::Ref& subscription : subscribed.to(eventType)) {
        if (const NotifyCallback callback = callbackOf(subscription->consumerId)) {
            codes.push_back(callback(subscription->consumerId, eventType.c_str(), subscription->filter.get(), value));
        }
    }
    return codes;
}

std::vector<std::string> FakeEventRouter::subscriptions() const
{
    std::vector<std::string> texts;
    for (const Subscriptions::Ref& subscription : subscribed.all()) {
        texts.push_back(subscription->eventType + " " + subscription->filter.toString());
    }
    return texts;
}

unsigned long FakeEventRouter::addConsumer(const std::string& eventType, const EventFilter::Entries& filter)
{
    unsigned long consumerId = 0;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        consumerId = ++lastTestConsumer;
        consumers[consumerId] = nullptr;
    }
    subscribe(consumerId, eventType, EventFilter(filter).get());
    return consumerId;
}

void FakeEventRouter::removeConsumer(unsigned long consumerId)
{
    for (const Subscriptions::Ref& subscription : subscribed.of(consumerId)) {
        endSubscription(subscription);
    }
    {
        const std::lock_guard<std::mutex> lock(mutex);
        consumers.erase(consumerId);
    }
    handBackAll([&](const Delivery& delivery) { return delivery.consumerId == consumerId; });
}

void FakeEventRouter::clearAll()
{
    std::vector<ZorvOamSpiEventProducer_1T> callbacks;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const auto& [handle, producer] : producers) {
            callbacks.push_back(producer.callbacks);
        }
    }
    subscribed.endAll();
    for (const ZorvOamSpiEventProducer_1T& producer : callbacks) {
        producer.evtProdClearAll();
    }
}

void FakeEventRouter::hold(bool on)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        holding = on;
    }
    if (!on) {
        handBackAll([](const Delivery&) { return true; });
    }
}

size_t FakeEventRouter::held() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return heldValues.size();
}

void FakeEventRouter::release(size_t place)
{
    Delivery delivery{};
    {
        const std::lock_guard<std::mutex> lock(mutex);
        delivery = heldValues.at(place);
        heldValues.erase(heldValues.begin() + static_cast<std::ptrdiff_t>(place));
    }
    handBack(delivery);
}

// --- Producers

int32_t FakeEventRouter::registerProducer(const ZorvOamSpiEventProducer_1T* producer, uint32_t* producerHandle)
{
    return answer("registerProducer", [&](std::string&) -> int32_t {
        if (!producer || !producer->evtProdAddFilter || !producer->evtProdRemoveFilter || !producer->evtProdClearAll ||
            !producer->evtProdDoneWithValue) {
            return ZORV_RETURN_FAILED;
        }
        const std::lock_guard<std::mutex> lock(mutex);
        *producerHandle = ++lastProducer;
        producers[*producerHandle] = {*producer, {}};
        return ZORV_RETURN_OK;
    });
}

int32_t FakeEventRouter::addEventType(uint32_t producerHandle, const char* eventType)
{
    const std::string call = "addEventType " + std::to_string(producerHandle) + " " + eventType;
    const int32_t code = answer(call, [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto producer = producers.find(producerHandle);
        if (producer == producers.end()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        return producer->second.eventTypes.insert(eventType).second ? ZORV_RETURN_OK : ZORV_RETURN_EXISTS;
    });
    if (code == ZORV_RETURN_OK) {
        for (const Subscriptions::Ref& subscription : subscribed.to(eventType)) {
            offer(producerHandle, subscription);
        }
    }
    return code;
}

/// The callback may end the subscription, the event type or the producer.
void FakeEventRouter::offer(uint32_t producerHandle, const Subscriptions::Ref& subscription)
{
    const auto callbacks = callbacksOf(producerHandle);
    const char* eventType = subscription->eventType.c_str();
    if (!callbacks ||
        callbacks->evtProdAddFilter(subscription->consumerId, eventType, subscription->filter.get()) != 0 ||
        !announces(producerHandle, eventType)) {
        return;
    }
    if (!subscribed.accept(subscription, producerHandle)) {
        callbacks->evtProdRemoveFilter(subscription->consumerId, eventType, subscription->filter.get());
    }
}

int32_t FakeEventRouter::removeEventType(uint32_t producerHandle, const char* eventType)
{
    return answer("removeEventType " + std::to_string(producerHandle) + " " + eventType, [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto producer = producers.find(producerHandle);
        if (producer == producers.end() || producer->second.eventTypes.erase(eventType) == 0) {
            return ZORV_RETURN_NOT_FOUND;
        }
        subscribed.withdraw(producerHandle, eventType);
        return ZORV_RETURN_OK;
    });
}

int32_t FakeEventRouter::unregisterProducer(uint32_t producerHandle, const ZorvOamSpiEventProducer_1T* /*producer*/)
{
    const int32_t code = answer("unregisterProducer " + std::to_string(producerHandle),
                                [&](std::string&) { return foundOrNot(isProducer(producerHandle)); });
    if (code == ZORV_RETURN_OK) {
        subscribed.withdraw(producerHandle);
        handBackAll([&](const Delivery& delivery) { return delivery.producer == producerHandle; });
        const std::lock_guard<std::mutex> lock(mutex);
        producers.erase(producerHandle);
    }
    return code;
}

// --- Notifications

int32_t FakeEventRouter::notify(uint32_t producerHandle, unsigned long consumerId, const char* eventType,
                                YaltNameValuePair** filter, void* value)
{
    const std::string call = std::string("notify ") + eventType + " consumer=" + std::to_string(consumerId) +
                             " filter=[" + EventFilter::toString(filter) + "] " + rendered(eventType, value);
    const int32_t code =
        answer(call, [&](std::string&) { return foundOrNot(isProducer(producerHandle) && isConsumer(consumerId)); });
    if (const auto callbacks = callbacksOf(producerHandle); callbacks && code == ZORV_RETURN_OK) {
        deliver({producerHandle, *callbacks, consumerId, eventType, value}, filter);
    }
    return code;
}

void FakeEventRouter::deliver(const Delivery& delivery, YaltNameValuePair** filter)
{
    if (const NotifyCallback callback = callbackOf(delivery.consumerId)) {
        callback(delivery.consumerId, delivery.eventType.c_str(), filter, delivery.value);
    }
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (holding && producers.count(delivery.producer) != 0) {
            heldValues.push_back(delivery);
            return;
        }
    }
    handBack(delivery);
}

void FakeEventRouter::handBack(const Delivery& delivery)
{
    journal.record(Topic::Done, "doneWithValue " + delivery.eventType);
    delivery.callbacks.evtProdDoneWithValue(delivery.eventType.c_str(), delivery.value);
}

void FakeEventRouter::handBackAll(const std::function<bool(const Delivery&)>& isMeant)
{
    std::vector<Delivery> meant;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto rest = std::stable_partition(heldValues.begin(), heldValues.end(),
                                                [&](const Delivery& delivery) { return !isMeant(delivery); });
        meant.assign(rest, heldValues.end());
        heldValues.erase(rest, heldValues.end());
    }
    for (const Delivery& delivery : meant) {
        handBack(delivery);
    }
}

// --- Consumers

int32_t FakeEventRouter::registerConsumer(ZorvOamSpiEventConsumer_1T* consumer)
{
    return answer("registerConsumer", [&](std::string&) -> int32_t {
        if (!consumer || !consumer->notifyCallback) {
            return ZORV_RETURN_FAILED;
        }
        const std::lock_guard<std::mutex> lock(mutex);
        consumer->consumerId = ++lastConsumer;
        consumers[consumer->consumerId] = consumer->notifyCallback;
        return ZORV_RETURN_OK;
    });
}

int32_t FakeEventRouter::addSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    const int32_t code = answer(std::string("addSubscription ") + eventType + " " + EventFilter::toString(filter),
                                [&](std::string&) { return foundOrNot(isConsumer(consumerId)); });
    if (code == ZORV_RETURN_OK) {
        subscribe(consumerId, eventType, filter);
    }
    return code;
}

void FakeEventRouter::subscribe(unsigned long consumerId, const std::string& eventType, YaltNameValuePair** filter)
{
    const Subscriptions::Ref subscription = subscribed.add(consumerId, eventType, filter);
    std::vector<uint32_t> interested;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const auto& [handle, producer] : producers) {
            if (producer.eventTypes.count(eventType) != 0) {
                interested.push_back(handle);
            }
        }
    }
    for (const uint32_t handle : interested) {
        offer(handle, subscription);
    }
}

int32_t FakeEventRouter::removeSubscription(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
{
    Subscriptions::Ref ended;
    const int32_t code =
        answer(std::string("removeSubscription ") + eventType + " " + EventFilter::toString(filter),
               [&](std::string&) -> int32_t {
                   for (const Subscriptions::Ref& subscription : subscribed.of(consumerId)) {
                       if (subscription->eventType == eventType && subscription->filter.equals(filter)) {
                           ended = subscription;
                           return ZORV_RETURN_OK;
                       }
                   }
                   return ZORV_RETURN_NOT_FOUND;
               });
    if (ended) {
        endSubscription(ended);
    }
    return code;
}

void FakeEventRouter::endSubscription(const Subscriptions::Ref& subscription)
{
    for (const uint32_t handle : subscribed.end(subscription)) {
        if (const auto callbacks = callbacksOf(handle)) {
            callbacks->evtProdRemoveFilter(subscription->consumerId, subscription->eventType.c_str(),
                                           subscription->filter.get());
        }
    }
}

int32_t FakeEventRouter::unregisterConsumer(unsigned long consumerId)
{
    const int32_t code = answer("unregisterConsumer " + std::to_string(consumerId),
                                [&](std::string&) { return foundOrNot(isConsumer(consumerId)); });
    if (code == ZORV_RETURN_OK) {
        removeConsumer(consumerId);
    }
    return code;
}

}  // namespace ZorvFakes
