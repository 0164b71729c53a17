#include "EventProducer.hpp"

#include <csignal>
#include <thread>

#include "CommonTest.hpp"
#include "EventConsumer.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;
using ZorvFakes::Topic;

namespace Zorv {
namespace {

constexpr const char* eventType = "TestEventType_1";

struct TestValue {
    int number;
};

/// An event that tells of its destruction.
class TestEvent : public RefCounter, public TestValue {
public:
    explicit TestEvent(int itsNumber) : TestValue{itsNumber} { ++alive; }
    ~TestEvent() override { --alive; }

    static std::atomic<int> alive;
};

std::atomic<int> TestEvent::alive{0};

/// Lets pass what its description names first: the events with that number, or all without a description.
class NumberFilter : public FilterMatcher<TestEvent> {
public:
    explicit NumberFilter(YaltNameValuePair** theDescription) : description(theDescription) {}

    bool isMatch(const TestEvent& event) const override
    {
        return description[0] == nullptr || std::to_string(event.number) == description[0]->value;
    }

    YaltNameValuePair** getDescription() const { return description; }

private:
    YaltNameValuePair** description;
};

using Producer = EventProducer<TestEvent, TestValue, MatchAllFilter<TestEvent>>;
using FilteringProducer = EventProducer<TestEvent, TestValue, NumberFilter>;

std::string shown(const void* value)
{
    return "number=" + std::to_string(static_cast<const TestValue*>(value)->number);
}

template <class ProducerT>
class ProducerTest : public CommonTest {
protected:
    ProducerTest() { middleware.router.setRenderer(eventType, &shown); }
    ~ProducerTest() override { EXPECT_EQ(0, TestEvent::alive); }

    void start()
    {
        producer->start(eventType);
        journal();
    }

    /// As the component does it: create, push, release.
    void push(int number)
    {
        auto* event = new TestEvent(number);
        producer->push(*event);
        event->releaseRef();
    }

    std::optional<ProducerT> producer{std::in_place};
};

using EventProducerTest = ProducerTest<Producer>;
using FilteringProducerTest = ProducerTest<FilteringProducer>;

// --- Starting and stopping

TEST_F(EventProducerTest, startRegistersAndAnnouncesTheEventType)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    producer->start(eventType);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Event type TestEventType_1",
                                       "getInterface ZorvOamSpiEventService ZorvOamSpiEventRouter 1 -> 0",
                                       "registerProducer -> 0", "addEventType 1 TestEventType_1 -> 0"));
}

TEST_F(EventProducerTest, stopTakesTheEventTypeBackAndUnregisters)
{
    start();
    middleware.router.addConsumer(eventType);

    producer->stop();

    EXPECT_THAT(journal(), ElementsAre("removeEventType 1 TestEventType_1 -> 0", "unregisterProducer 1 -> 0"));
    EXPECT_FALSE(producer->hasConsumers());
}

TEST_F(EventProducerTest, aSecondStopUnregistersAgain)
{
    start();
    producer->stop();
    journal();

    producer->stop();

    EXPECT_THAT(journal(), ElementsAre("removeEventType 1 TestEventType_1 -> -2", "unregisterProducer 1 -> -2"));
}

TEST_F(EventProducerTest, stopWithoutARouterIsAnErrorAndClearsTheConsumers)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    producer->stop();

    EXPECT_THAT(journal(), ElementsAre("log 3 No event router at stop (wrong stop order)"));
    EXPECT_FALSE(producer->hasConsumers());
}

TEST_F(EventProducerTest, canBeStartedAgain)
{
    start();
    producer->stop();
    start();
    const unsigned long consumer = middleware.router.addConsumer(eventType);

    push(5);

    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=" + std::to_string(consumer) +
                                       " filter=[] number=5 -> 0"));
}

TEST_F(EventProducerTest, aRefusedRegistrationLeavesTheProducerSilent)
{
    middleware.router.addConsumer(eventType);
    middleware.router.failNext("registerProducer", ZORV_RETURN_FAILED);

    producer->start(eventType);
    push(5);

    EXPECT_THAT(journal(), ElementsAre("registerProducer -> -1", "log 3 Could not register event producer"));
}

TEST_F(EventProducerTest, aMissingRouterLeavesTheProducerSilent)
{
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    producer->start(eventType);
    push(5);

    EXPECT_THAT(journal(), ElementsAre("log 3 Could not register event producer"));
}

TEST_F(EventProducerTest, aRefusedEventTypeLeavesTheProducerSilent)
{
    middleware.router.addConsumer(eventType);
    middleware.router.failNext("addEventType", ZORV_RETURN_EXISTS);

    producer->start(eventType);
    push(5);

    EXPECT_THAT(journal(), ElementsAre("registerProducer -> 0", "addEventType 1 TestEventType_1 -> -3",
                                       "log 3 Could not register event producer event"));
}

// --- Consumers

TEST_F(EventProducerTest, consumersThatWereThereFirstAreFoundAtStart)
{
    middleware.router.addConsumer(eventType, {{"a", "1"}});

    start();

    EXPECT_TRUE(producer->hasConsumers());
}

TEST_F(EventProducerTest, consumersOfOtherTypesDoNotCount)
{
    start();
    middleware.router.addConsumer("OtherType_1");

    push(5);

    EXPECT_FALSE(producer->hasConsumers());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(EventProducerTest, addingAFilterIsTraced)
{
    start();
    middleware.journal.show({Topic::Trace});

    middleware.router.addConsumer(eventType);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Adding filter TestEventType_1"));
}

TEST_F(EventProducerTest, eachConsumerIsNotifiedInTheOrderOfArrivalWithItsFilter)
{
    start();
    middleware.router.addConsumer(eventType, {{"a", "1"}, {"b", "2"}});
    middleware.router.addConsumer(eventType);
    middleware.journal.show({Topic::Trace, Topic::Lookup, Topic::Done});

    push(5);

    EXPECT_THAT(journal(),
                ElementsAre("getInterface ZorvOamSpiEventService ZorvOamSpiEventRouter 1 -> 0",
                            "trace 8 FM Sending notification TestEventType_1",
                            "notify TestEventType_1 consumer=1001 filter=[a=1, b=2] number=5 -> 0",
                            "doneWithValue TestEventType_1", "trace 8 FM Sending notification TestEventType_1",
                            "notify TestEventType_1 consumer=1002 filter=[] number=5 -> 0",
                            "doneWithValue TestEventType_1"));
}

TEST_F(EventProducerTest, aConsumerThatLeftIsNotNotified)
{
    start();
    const unsigned long leaving = middleware.router.addConsumer(eventType);
    middleware.router.addConsumer(eventType);
    middleware.router.removeConsumer(leaving);

    push(5);

    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1002 filter=[] number=5 -> 0"));
}

TEST_F(EventProducerTest, twoFiltersOfOneConsumerAreTwoDeliveriesAndOneRemoveTakesTheFirst)
{
    start();
    YaltNameValuePair first{"f", "1"};
    YaltNameValuePair second{"f", "2"};
    YaltNameValuePair* firstFilter[] = {&first, nullptr};
    YaltNameValuePair* secondFilter[] = {&second, nullptr};
    const unsigned long consumer = middleware.router.addConsumer("OtherType_1");
    EXPECT_EQ(0, Producer::evtProdAddFilter(consumer, eventType, firstFilter));
    EXPECT_EQ(0, Producer::evtProdAddFilter(consumer, eventType, secondFilter));

    push(5);
    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1001 filter=[f=1] number=5 -> 0",
                                       "notify TestEventType_1 consumer=1001 filter=[f=2] number=5 -> 0"));

    EXPECT_EQ(0, Producer::evtProdRemoveFilter(consumer, eventType, secondFilter));
    push(6);
    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1001 filter=[f=2] number=6 -> 0"));
}

TEST_F(EventProducerTest, aRemoveThatMatchesNoEntryChangesNothing)
{
    start();
    middleware.router.addConsumer(eventType);

    EXPECT_EQ(0, Producer::evtProdRemoveFilter(1002, eventType, nullptr));
    EXPECT_EQ(0, Producer::evtProdRemoveFilter(1001, "OtherType_1", nullptr));

    push(5);
    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1001 filter=[] number=5 -> 0"));
}

TEST_F(EventProducerTest, theRoutersShutDownClearsAllConsumers)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.router.addConsumer(eventType);

    middleware.router.clearAll();

    EXPECT_FALSE(producer->hasConsumers());
}

TEST_F(FilteringProducerTest, onlyMatchingConsumersAreNotified)
{
    start();
    middleware.router.addConsumer(eventType, {{"number", "5"}});
    middleware.router.addConsumer(eventType);

    push(5);
    push(6);

    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1001 filter=[number=5] number=5 -> 0",
                                       "notify TestEventType_1 consumer=1002 filter=[] number=5 -> 0",
                                       "notify TestEventType_1 consumer=1002 filter=[] number=6 -> 0"));
}

TEST_F(EventProducerTest, theMatchAllFilterMatchesAndIsValid)
{
    YaltNameValuePair* description[] = {nullptr};
    const MatchAllFilter<TestEvent> filter(description);
    auto* event = new TestEvent(1);

    EXPECT_TRUE(filter.isMatch(*event));
    EXPECT_TRUE(filter.isValid());
    EXPECT_EQ(description, filter.getDescription());
    event->releaseRef();
}

// --- References

TEST_F(EventProducerTest, withoutConsumersTheEventEndsWithItsCreatorsReference)
{
    start();
    auto* event = new TestEvent(5);

    producer->push(*event);
    EXPECT_EQ(1, TestEvent::alive);
    event->releaseRef();

    EXPECT_EQ(0, TestEvent::alive);
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(EventProducerTest, theEventLivesUntilTheLastDeliveryIsDone)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.router.addConsumer(eventType);
    middleware.router.hold(true);
    push(5);
    ASSERT_EQ(2U, middleware.router.held());
    EXPECT_EQ(1, TestEvent::alive);

    middleware.router.release(1);
    EXPECT_EQ(1, TestEvent::alive);
    middleware.router.release(0);

    EXPECT_EQ(0, TestEvent::alive);
}

TEST_F(EventProducerTest, theCreatorMayReleaseLast)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.router.hold(true);
    auto* event = new TestEvent(5);
    producer->push(*event);

    middleware.router.release();
    EXPECT_EQ(1, TestEvent::alive);
    event->releaseRef();

    EXPECT_EQ(0, TestEvent::alive);
}

TEST_F(EventProducerTest, aRefusedNotifyReleasesItsReferenceAndTheOthersGoOn)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.router.addConsumer(eventType);
    middleware.router.failNext("notify", ZORV_RETURN_NO_RESOURCES);
    middleware.router.hold(true);
    push(5);

    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1001 filter=[] number=5 -> -10",
                                       "notify TestEventType_1 consumer=1002 filter=[] number=5 -> 0"));
    EXPECT_EQ(1U, middleware.router.held());
    middleware.router.release();
    EXPECT_EQ(0, TestEvent::alive);
}

TEST_F(EventProducerTest, aRouterThatWentAwayGetsNothingAndNoReferenceIsTaken)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    push(5);

    EXPECT_EQ(0, TestEvent::alive);
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(EventProducerTest, valuesStillHeldComeBackAtStop)
{
    start();
    middleware.router.addConsumer(eventType);
    middleware.router.hold(true);
    push(5);

    producer->stop();

    EXPECT_EQ(0, TestEvent::alive);
}

// --- Callbacks from everywhere

TEST_F(EventProducerTest, aConsumerMayComeAndGoDuringADelivery)
{
    struct Busy {
        void notify(const char*, void*) { react(); }
        std::function<void()> react;
    } busy;
    EventConsumer<Busy, 1> consumer;
    start();
    consumer.start({}, &Busy::notify, &busy, eventType);
    busy.react = [&] {
        middleware.router.addConsumer(eventType);
        consumer.stop();
    };
    journal();

    push(5);
    push(6);

    EXPECT_THAT(journal(), ElementsAre("notify TestEventType_1 consumer=1 filter=[] number=5 -> 0",
                                       "removeSubscription TestEventType_1  -> 0", "unregisterConsumer 1 -> 0",
                                       "notify TestEventType_1 consumer=1001 filter=[] number=6 -> 0"));
}

TEST_F(EventProducerTest, callbacksWithoutAnObjectDoNothing)
{
    producer.reset();

    EXPECT_EQ(0, Producer::evtProdAddFilter(1, eventType, nullptr));
    EXPECT_EQ(0, Producer::evtProdRemoveFilter(1, eventType, nullptr));
    EXPECT_EQ(0, Producer::evtProdClearAll());
    TestValue value{5};
    EXPECT_EQ(0, Producer::evtProdDoneWithValue(eventType, &value));
}

TEST_F(EventProducerTest, pushesAndCallbacksMayMeet)
{
    start();
    middleware.journal.showOnly({});
    YaltNameValuePair* filter[] = {nullptr};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([this] {
            for (int event = 0; event < 200; ++event) {
                push(event);
            }
        });
        threads.emplace_back([&filter] {
            for (int round = 0; round < 200; ++round) {
                Producer::evtProdAddFilter(7, eventType, filter);
                Producer::evtProdRemoveFilter(7, eventType, filter);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_FALSE(producer->hasConsumers());
}

// --- What ends the process

using EventProducerDeathTest = EventProducerTest;

TEST_F(EventProducerDeathTest, aSecondObjectOfOneInstantiation)
{
    EXPECT_EXIT(Producer second, KilledBySignal(SIGABRT), "`_instance == __null'");
}

TEST_F(EventProducerDeathTest, aFurtherObjectAfterTheFirstOneIsGone)
{
    producer.reset();
    producer.emplace();
    start();
    middleware.router.addConsumer(eventType);

    EXPECT_TRUE(producer->hasConsumers());
}

}  // namespace
}  // namespace Zorv
