// Whoever leaves while callbacks run waits for none of them: it may hold a lock that they want.

#include <gmock/gmock.h>

#include <thread>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;

TEST_P(QueueingRouterContractTest, removeSubscriptionDoesNotWaitForTheRunningCallback)
{
    announce();
    const unsigned long consumer = subscriberAtGate();

    EXPECT_EQ(0, unsubscribe(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 remove c1 T"));
    gate.open();
    EXPECT_THAT(journal.await(3), ElementsAre("p1 remove c1 T", "callback ends", "p1 done T 0"));
}

TEST_P(QueueingRouterContractTest, eventsQueuedForASubscriptionThatEndsAreHandedBack)
{
    announce();
    const unsigned long consumer = subscriberAtGate();
    notify(consumer, 1);
    notify(consumer, 2);

    EXPECT_EQ(0, unsubscribe(consumer));

    gate.open();
    ledger.awaitValues();
    EXPECT_EQ(1U, journal.count("p1 done T 1"));
    EXPECT_EQ(1U, journal.count("p1 done T 2"));
}

TEST_P(QueueingRouterContractTest, unregisterConsumerDoesNotWaitForTheRunningCallback)
{
    announce();
    const unsigned long consumer = subscriberAtGate();

    EXPECT_EQ(0, unregisterConsumer(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 remove c1 T"));
    gate.open();
    EXPECT_THAT(journal.await(3), ElementsAre("p1 remove c1 T", "callback ends", "p1 done T 0"));
}

TEST_P(QueueingRouterContractTest, noCallbackOfAConsumerBeginsAfterItHasUnregistered)
{
    announce();
    const unsigned long consumer = subscriberAtGate();
    notify(consumer, 1);
    notify(consumer, 2);

    EXPECT_EQ(0, unregisterConsumer(consumer));

    gate.open();
    ledger.awaitValues();
    EXPECT_EQ(0U, journal.count("c1 event T 1") + journal.count("c1 event T 2"));
    EXPECT_EQ(1U, journal.count("p1 done T 1"));
    EXPECT_EQ(1U, journal.count("p1 done T 2"));
    EXPECT_EQ(1U, journal.count("p1 done T 0"));
}

TEST_P(QueueingRouterContractTest, unregisterProducerHandsBackWhatIsQueuedBeforeItReturnsAndDoesNotWaitForTheRest)
{
    announce(1);
    announce(2);
    const unsigned long consumer = subscriberAtGate();
    notify(consumer, 1);
    notify(consumer, 2, 2);
    notify(consumer, 3);
    journal.take();

    EXPECT_EQ(0, unregisterProducer());

    EXPECT_THAT(journal.lines(), ElementsAre("p1 done T 1", "p1 done T 3"));
    gate.open();
    EXPECT_THAT(journal.await(6), ElementsAre("p1 done T 1", "p1 done T 3", "callback ends", "p1 done T 0",
                                              "c1 event T 2", "p2 done T 2"));
}

TEST_P(QueueingRouterContractTest, unregisterProducerHandsBackWhatALeavingConsumerStillHas)
{
    announce();
    const unsigned long consumer = subscriberAtGate();
    notify(consumer, 1);
    notify(consumer, 2);
    Gate handedBack;
    onDone = [&handedBack](int, int value) { value == 1 ? handedBack.pass() : void(); };
    std::thread leaving([this, consumer] { EXPECT_EQ(0, unregisterConsumer(consumer)); });
    handedBack.awaitVisitor();

    EXPECT_EQ(0, unregisterProducer());

    EXPECT_THAT(journal.lines(), ElementsAre("p1 done T 1", "p1 done T 2"));
    handedBack.open();
    leaving.join();
}

TEST_P(QueueingRouterContractTest, noOperationWaitsForARunningCallback)
{
    announce();
    const unsigned long busy = subscriberAtGate();

    announce(2);
    const unsigned long other = subscriber();
    EXPECT_EQ(0, notify(other, 1, 2));
    EXPECT_EQ(0, subscribe(busy, {{"a", "b"}}));
    EXPECT_EQ(0, unsubscribe(busy, {{"a", "b"}}));
    EXPECT_EQ(0, removeEventType("T", 2));
    EXPECT_EQ(0, unregisterProducer(2));
    EXPECT_EQ(0, unregisterConsumer(other));

    EXPECT_EQ(0U, journal.count("callback ends"));
}

TEST_P(QueueingRouterContractTest, noOperationWaitsForAnAddFilterThatRuns)
{
    announce();
    onAdd = [this](int, unsigned long) { gate.pass(); };
    std::thread subscribing([this] { subscriber(); });
    gate.awaitVisitor();
    onAdd = [](int, unsigned long) {};

    const unsigned long other = subscriber({{"a", "b"}});
    EXPECT_EQ(0, subscribe(other));
    EXPECT_EQ(0, unsubscribe(other));
    announce(2);
    EXPECT_EQ(0, unregisterConsumer(other));
    EXPECT_EQ(0, removeEventType());
    EXPECT_EQ(0, unregisterProducer());
    journal.write("nobody waited");

    gate.open();
    subscribing.join();
}

TEST_P(QueueingRouterContractTest, shutdownHandsBackWhatIsQueued)
{
    announce();
    const unsigned long consumer = subscriberAtGate();
    notify(consumer, 1);
    notify(consumer, 2);
    std::thread opener([this] {
        journal.awaitLine("p1 done T 2");
        gate.open();
    });

    implementation->shutdown();

    opener.join();
    ledger.awaitValues();
    EXPECT_EQ(0U, journal.count("c1 event T 1") + journal.count("c1 event T 2"));
    EXPECT_EQ(1U, journal.count("p1 done T 0"));
    EXPECT_EQ(1U, journal.count("p1 done T 1"));
    EXPECT_EQ(1U, journal.count("p1 done T 2"));
    EXPECT_EQ(1U, journal.count("p1 clear"));
}

}  // namespace ZorvTest
