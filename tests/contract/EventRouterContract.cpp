#include "EventRouterContract.hpp"

#include <algorithm>
#include <deque>

namespace ZorvTest {

namespace {

using LockT = std::lock_guard<std::mutex>;

/// Values travel as the address of their number.
int values[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

int numberOf(const void* value)
{
    return *static_cast<const int*>(value);
}

std::string producerLabel(int producer)
{
    return "p" + std::to_string(producer);
}

/// " a=b, c=d"; "" without entries.
std::string textOf(YaltNameValuePair** filter)
{
    std::string text;
    for (; filter != nullptr && *filter != nullptr; ++filter) {
        text += (text.empty() ? " " : ", ") + std::string((*filter)->name) + "=" + (*filter)->value;
    }
    return text;
}

/// A filter in the form of the interface, gone at the end of the call that it is for.
class FilterArray {
public:
    explicit FilterArray(const std::vector<std::pair<std::string, std::string>>& filter)
    {
        for (const auto& [name, value] : filter) {
            pairs.push_back({name.c_str(), value.c_str()});
            pointers.push_back(&pairs.back());
        }
        pointers.push_back(nullptr);
    }

    YaltNameValuePair** get() { return pointers.data(); }

private:
    std::deque<YaltNameValuePair> pairs;
    std::vector<YaltNameValuePair*> pointers;
};

}  // namespace

// --- The callbacks

EventRouterContractTest* EventRouterContractTest::instance = nullptr;

template <int producer>
struct EventRouterContractTest::Callbacks {
    static ZorvReturnT add(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
    {
        return instance->added(producer, consumerId, eventType, filter);
    }

    static ZorvReturnT remove(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter)
    {
        return instance->removed(producer, consumerId, eventType, filter);
    }

    static ZorvReturnT clear() { return instance->cleared(producer); }

    static ZorvReturnT done(const char* eventType, void* value)
    {
        return instance->handedBack(producer, eventType, value);
    }

    static constexpr ZorvOamSpiEventProducer_1T table = {&add, &remove, &clear, &done};
};

const ZorvOamSpiEventProducer_1T& EventRouterContractTest::tableOf(int producer)
{
    return producer == 1 ? Callbacks<1>::table : Callbacks<2>::table;
}

ZorvReturnT EventRouterContractTest::added(int producer, unsigned long consumerId, const char* eventType,
                                           YaltNameValuePair** filter)
{
    journal.write(producerLabel(producer) + " add " + labelOf(consumerId) + " " + eventType + textOf(filter));
    if (addAnswer == 0) {
        ledger.subscriptionAccepted(producer, consumerId, eventType, filter);
    }
    onAdd(producer, consumerId);
    return addAnswer;
}

ZorvReturnT EventRouterContractTest::removed(int producer, unsigned long consumerId, const char* eventType,
                                             YaltNameValuePair** filter)
{
    journal.write(producerLabel(producer) + " remove " + labelOf(consumerId) + " " + eventType + textOf(filter));
    ledger.subscriptionEnded(producer, consumerId, eventType, filter);
    onRemove(producer);
    return 0;
}

ZorvReturnT EventRouterContractTest::cleared(int producer)
{
    journal.write(producerLabel(producer) + " clear");
    ledger.release(producer);
    onClear(producer);
    return 0;
}

ZorvReturnT EventRouterContractTest::handedBack(int producer, const char* eventType, void* value)
{
    const int number = numberOf(value);
    journal.write(producerLabel(producer) + " done " + eventType + " " + std::to_string(number));
    ledger.valueHandedBack(producer, number);
    onDone(producer, number);
    return 0;
}

ZorvReturnT EventRouterContractTest::onNotified(unsigned long consumerId, const char* eventType,
                                                YaltNameValuePair** filter, void* value)
{
    const int number = numberOf(value);
    instance->journal.write(instance->labelOf(consumerId) + " event " + eventType + textOf(filter) + " " +
                            std::to_string(number));
    instance->onEvent(consumerId, number);
    return instance->eventAnswer;
}

// --- The test's hands

EventRouterContractTest::EventRouterContractTest()
{
    instance = this;
}

EventRouterContractTest::~EventRouterContractTest()
{
    implementation.reset();
    instance = nullptr;
}

void EventRouterContractTest::TearDown()
{
    gate.open();
    std::vector<unsigned long> present;
    {
        const LockT lock(mutex);
        present = consumers;
    }
    for (const unsigned long consumerId : present) {
        spi->unregisterConsumer(consumerId);
    }
    unregisterProducer(1);
    unregisterProducer(2);
    ledger.awaitBalance();
}

std::uint32_t EventRouterContractTest::registerProducer(int producer)
{
    std::uint32_t handle = 0;
    EXPECT_EQ(0, spi->registerProducer(&tableOf(producer), &handle));
    const LockT lock(mutex);
    handles[producer] = handle;
    return handle;
}

ZorvReturnT EventRouterContractTest::unregisterProducer(int producer)
{
    const ZorvReturnT code = spi->unregisterProducer(handleOf(producer), &tableOf(producer));
    ledger.release(producer);
    return code;
}

void EventRouterContractTest::announce(int producer)
{
    registerProducer(producer);
    EXPECT_EQ(0, addEventType("T", producer));
}

ZorvReturnT EventRouterContractTest::addEventType(const char* eventType, int producer)
{
    return spi->addEventType(handleOf(producer), eventType);
}

ZorvReturnT EventRouterContractTest::removeEventType(const char* eventType, int producer)
{
    const ZorvReturnT code = spi->removeEventType(handleOf(producer), eventType);
    ledger.release(producer, eventType);
    return code;
}

ZorvReturnT EventRouterContractTest::notify(unsigned long consumerId, int value, int producer)
{
    const ZorvReturnT code =
        spi->notify(handleOf(producer), consumerId, "T", ledger.latestFilter(producer, consumerId), &values[value]);
    if (code == 0) {
        ledger.valueAccepted(producer, value);
    }
    return code;
}

unsigned long EventRouterContractTest::registerConsumer()
{
    ZorvOamSpiEventConsumer_1T consumer{0, &onNotified};
    EXPECT_EQ(0, spi->registerConsumer(&consumer));
    const LockT lock(mutex);
    consumers.push_back(consumer.consumerId);
    return consumer.consumerId;
}

unsigned long EventRouterContractTest::subscriber(const FilterT& filter)
{
    const unsigned long consumerId = registerConsumer();
    EXPECT_EQ(0, subscribe(consumerId, filter));
    return consumerId;
}

ZorvReturnT EventRouterContractTest::subscribe(unsigned long consumerId, const FilterT& filter, const char* eventType)
{
    return spi->addSubscription(consumerId, eventType, FilterArray(filter).get());
}

ZorvReturnT EventRouterContractTest::unsubscribe(unsigned long consumerId, const FilterT& filter, const char* eventType)
{
    return spi->removeSubscription(consumerId, eventType, FilterArray(filter).get());
}

std::uint32_t EventRouterContractTest::handleOf(int producer) const
{
    const LockT lock(mutex);
    return handles[producer];
}

std::string EventRouterContractTest::labelOf(unsigned long consumerId) const
{
    const LockT lock(mutex);
    const auto found = std::find(consumers.begin(), consumers.end(), consumerId);
    return "c" + (found != consumers.end() ? std::to_string(found - consumers.begin() + 1) : "?");
}

unsigned long QueueingRouterContractTest::subscriberAtGate()
{
    onEvent = [this](unsigned long, int value) {
        if (value == 0) {
            gate.pass();
            journal.write("callback ends");
        }
    };
    const unsigned long consumerId = subscriber();
    EXPECT_EQ(0, notify(consumerId, 0));
    gate.awaitVisitor();
    journal.take();
    return consumerId;
}

}  // namespace ZorvTest
