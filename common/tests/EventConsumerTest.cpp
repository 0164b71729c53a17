#include "EventConsumer.hpp"

#include <csignal>
#include <stdexcept>
#include <thread>

#include "CommonTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;
using ZorvFakes::Topic;

namespace Zorv {
namespace {

constexpr const char* eventType = "TestEventType_1";

/// Takes events and does with them what the test says.
class Subscriber {
public:
    void notify(const char* type, void* value)
    {
        received.push_back(std::string(type) + " " + *static_cast<const char*>(value));
        if (reaction) {
            reaction();
        }
    }

    std::vector<std::string> received;
    std::function<void()> reaction;
};

using Consumer = EventConsumer<Subscriber, 1>;
using OtherConsumer = EventConsumer<Subscriber, 2>;

const std::vector<NameValuePair> timeFilter = {{"TimeFilter", "4711"}};

class EventConsumerTest : public CommonTest {
protected:
    void start() { consumer->start(timeFilter, &Subscriber::notify, &subscriber, eventType); }

    std::vector<int32_t> fire(char value = 'x') { return middleware.router.fire(eventType, &value); }

    Subscriber subscriber;
    std::optional<Consumer> consumer{std::in_place};
};

// --- Starting and stopping

TEST_F(EventConsumerTest, startRegistersAndSubscribes)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    start();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> ", "getInterface ZorvOamSpiEventService ZorvOamSpiEventRouter 1 -> 0",
                            "registerConsumer -> 0", "addSubscription TestEventType_1 TimeFilter=4711 -> 0",
                            "trace 8 FM  << "));
}

TEST_F(EventConsumerTest, stopUnsubscribesAndUnregisters)
{
    start();
    journal();
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    consumer->stop();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> ", "getInterface ZorvOamSpiEventService ZorvOamSpiEventRouter 1 -> 0",
                            "removeSubscription TestEventType_1 TimeFilter=4711 -> 0", "unregisterConsumer 1 -> 0",
                            "trace 8 FM  << "));
    EXPECT_THAT(middleware.router.subscriptions(), IsEmpty());
}

TEST_F(EventConsumerTest, startOfAStartedConsumerDoesNothing)
{
    start();
    journal();
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    start();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> "));
}

TEST_F(EventConsumerTest, stopOfAStoppedConsumerDoesNothing)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    consumer->stop();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> "));
}

TEST_F(EventConsumerTest, canBeStartedAgain)
{
    start();
    consumer->stop();
    journal();

    consumer->start({{"Other", "1"}}, &Subscriber::notify, &subscriber, "OtherType_1");
    consumer->stop();

    EXPECT_THAT(journal(), ElementsAre("registerConsumer -> 0", "addSubscription OtherType_1 Other=1 -> 0",
                                       "removeSubscription OtherType_1 Other=1 -> 0", "unregisterConsumer 2 -> 0"));
}

TEST_F(EventConsumerTest, theEventTypeIsCopied)
{
    std::string type = eventType;
    consumer->start({}, &Subscriber::notify, &subscriber, type.c_str());
    type.assign(type.size(), '?');

    consumer->stop();

    EXPECT_THAT(journal(), ElementsAre("registerConsumer -> 0", "addSubscription TestEventType_1  -> 0",
                                       "removeSubscription TestEventType_1  -> 0", "unregisterConsumer 1 -> 0"));
}

TEST_F(EventConsumerTest, failuresAtStopAreTracedAndTheConsumerIsStopped)
{
    start();
    journal();
    middleware.journal.show({Topic::Trace});
    middleware.router.failNext("removeSubscription", ZORV_RETURN_NOT_FOUND);
    middleware.router.failNext("unregisterConsumer", ZORV_RETURN_NOT_FOUND);

    consumer->stop();
    consumer->stop();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ", "removeSubscription TestEventType_1 TimeFilter=4711 -> -2",
                                       "trace 8 FM Could not unregister event subscription, eventType TestEventType_1",
                                       "unregisterConsumer 1 -> -2",
                                       "trace 8 FM Could not unregister event consumer, eventType TestEventType_1",
                                       "trace 8 FM  << ", "trace 8 FM  >> "));
}

TEST_F(EventConsumerTest, aMissingRouterAtStopIsTracedAndTheConsumerIsStopped)
{
    start();
    journal();
    middleware.journal.show({Topic::Trace});
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    consumer->stop();
    middleware.offerAll();
    start();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ",
                                       "trace 8 FM Could not unregister event subscription, eventType TestEventType_1",
                                       "trace 8 FM Could not unregister event consumer, eventType TestEventType_1",
                                       "trace 8 FM  << ", "trace 8 FM  >> ", "registerConsumer -> 0",
                                       "addSubscription TestEventType_1 TimeFilter=4711 -> 0", "trace 8 FM  << "));
}

// --- Events

TEST_F(EventConsumerTest, eventsReachTheSubscriber)
{
    start();

    EXPECT_THAT(fire('a'), ElementsAre(0));
    EXPECT_THAT(fire('b'), ElementsAre(0));

    EXPECT_THAT(subscriber.received, ElementsAre("TestEventType_1 a", "TestEventType_1 b"));
}

TEST_F(EventConsumerTest, theCallbackIsTraced)
{
    start();
    journal();
    middleware.journal.show({Topic::Trace});

    fire();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ", "trace 8 FM  << "));
}

TEST_F(EventConsumerTest, instancesOfOneSubscriberAreToldApart)
{
    Subscriber otherSubscriber;
    OtherConsumer other;
    start();
    other.start({}, &Subscriber::notify, &otherSubscriber, "OtherType_1");

    fire('a');
    char value = 'b';
    middleware.router.fire("OtherType_1", &value);

    EXPECT_THAT(subscriber.received, ElementsAre("TestEventType_1 a"));
    EXPECT_THAT(otherSubscriber.received, ElementsAre("OtherType_1 b"));
    other.stop();
}

TEST_F(EventConsumerTest, aStandardExceptionIsLoggedAndKeptFromTheRouter)
{
    start();
    journal();
    subscriber.reaction = [] { throw std::runtime_error("%s%n"); };

    EXPECT_THAT(fire(), ElementsAre(0));

    EXPECT_THAT(journal(), ElementsAre("log 4 Exception thrown from event consumer :%s%n"));
}

TEST_F(EventConsumerTest, anyOtherExceptionIsLoggedAndKeptFromTheRouter)
{
    start();
    journal();
    subscriber.reaction = [] { throw 5; };

    EXPECT_THAT(fire(), ElementsAre(0));

    EXPECT_THAT(journal(), ElementsAre("log 4 Unknown exception thrown from event consumer"));
}

TEST_F(EventConsumerTest, aSubscriberMayStopItsConsumerFromTheCallback)
{
    start();
    subscriber.reaction = [this] { consumer->stop(); };

    EXPECT_THAT(fire(), ElementsAre(0));
    EXPECT_THAT(fire(), IsEmpty());
}

TEST_F(EventConsumerTest, callbacksMayComeOnSeveralThreadsAtOnce)
{
    std::atomic<int> received{0};
    subscriber.reaction = nullptr;
    struct Counting {
        void notify(const char*, void* value) { ++*static_cast<std::atomic<int>*>(value); }
    } counting;
    EventConsumer<Counting, 1> countingConsumer;
    countingConsumer.start({}, &Counting::notify, &counting, "CountedType_1");

    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int event = 0; event < 500; ++event) {
                middleware.router.fire("CountedType_1", &received);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(2000, received);
    countingConsumer.stop();
}

// --- Filters

TEST_F(EventConsumerTest, anEmptyFilterHoldsOnlyTheTerminator)
{
    AutoMemory memory;

    YaltNameValuePair** filter = Consumer::toCFilter({}, memory);

    ASSERT_NE(nullptr, filter);
    EXPECT_EQ(nullptr, filter[0]);
}

TEST_F(EventConsumerTest, aFilterHoldsCopiesOfItsEntries)
{
    AutoMemory memory;
    std::vector<NameValuePair> entries = {{"a", "1"}, {"", ""}, {"a", "2"}};

    YaltNameValuePair** filter = Consumer::toCFilter(entries, memory);
    for (NameValuePair& entry : entries) {
        entry = {"?", "?"};
    }

    EXPECT_STREQ("a", filter[0]->name);
    EXPECT_STREQ("1", filter[0]->value);
    EXPECT_STREQ("", filter[1]->name);
    EXPECT_STREQ("", filter[1]->value);
    EXPECT_STREQ("a", filter[2]->name);
    EXPECT_STREQ("2", filter[2]->value);
    EXPECT_EQ(nullptr, filter[3]);
}

// --- What ends the process. Without a log service the lines go to standard error.

class EventConsumerDeathTest : public EventConsumerTest {
protected:
    EventConsumerDeathTest() { Logging::close(); }
};

TEST_F(EventConsumerDeathTest, aSecondObjectOfOneInstantiation)
{
    EXPECT_EXIT(Consumer second, KilledBySignal(SIGABRT), "common/inc/EventConsumer.*`_instance == __null'");
}

TEST_F(EventConsumerDeathTest, aFurtherObjectAfterTheFirstOneIsGone)
{
    consumer.reset();
    consumer.emplace();
    start();

    EXPECT_THAT(fire(), ElementsAre(0));
}

TEST_F(EventConsumerDeathTest, aCallbackWithoutAnObject)
{
    consumer.reset();

    EXPECT_EXIT(Consumer::notifyCallback(1, eventType, nullptr, nullptr), KilledBySignal(SIGABRT), "`_instance'");
}

TEST_F(EventConsumerDeathTest, aRefusedRegistration)
{
    middleware.router.failNext("registerConsumer", ZORV_RETURN_NO_RESOURCES);

    EXPECT_EXIT(start(), KilledBySignal(SIGABRT), "^zorv: Could not register consumer\n$");
}

TEST_F(EventConsumerDeathTest, aMissingRouter)
{
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    EXPECT_EXIT(start(), KilledBySignal(SIGABRT), "^zorv: Could not register consumer\n$");
}

TEST_F(EventConsumerDeathTest, aRefusedSubscription)
{
    middleware.router.failNext("addSubscription", ZORV_RETURN_FAILED);

    EXPECT_EXIT(start(), KilledBySignal(SIGABRT), "^zorv: Could not add subscription\n$");
}

}  // namespace
}  // namespace Zorv
