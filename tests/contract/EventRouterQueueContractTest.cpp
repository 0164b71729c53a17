// A queue and a thread for each consumer: nobody waits for a slow one, and whatever happens, values come back once.

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;

// --- Slow consumers

TEST_P(QueueingRouterContractTest, aSlowConsumerStallsNeitherItsProducerNorOthers)
{
    announce();
    const unsigned long slow = subscriberAtGate();
    const unsigned long quick = subscriber();
    journal.take();

    EXPECT_EQ(0, notify(slow, 1));
    EXPECT_EQ(0, notify(quick, 2));

    EXPECT_THAT(journal.await(2), ElementsAre("c2 event T 2", "p1 done T 2"));
    gate.open();
    EXPECT_THAT(journal.await(6), ElementsAre("c2 event T 2", "p1 done T 2", "callback ends", "p1 done T 0",
                                              "c1 event T 1", "p1 done T 1"));
}

TEST_P(QueueingRouterContractTest, aFullQueueRefusesCountsAndOwesNothing)
{
    announce();
    const unsigned long consumer = subscriberAtGate();
    for (int value = 1; value <= queueBound; ++value) {
        EXPECT_EQ(0, notify(consumer, value));
    }

    EXPECT_EQ(-10, notify(consumer, 8));
    EXPECT_EQ(-10, notify(consumer, 9));

    EXPECT_EQ(2U, implementation->refusals());
    gate.open();
    ledger.awaitValues();
    EXPECT_EQ(0U, journal.count("c1 event T 8") + journal.count("p1 done T 8"));
    EXPECT_EQ(0U, journal.count("c1 event T 9") + journal.count("p1 done T 9"));
}

TEST_P(QueueingRouterContractTest, aQueueThatWasFullTakesEventsAgain)
{
    announce();
    const unsigned long consumer = subscriberAtGate();
    for (int value = 1; value <= queueBound + 1; ++value) {
        notify(consumer, value);
    }
    gate.open();
    ledger.awaitValues();

    EXPECT_EQ(0, notify(consumer, 9));

    journal.awaitLine("p1 done T 9");
}

TEST_P(QueueingRouterContractTest, aFullQueueOfOneConsumerIsNobodyElsesMatter)
{
    announce();
    const unsigned long full = subscriberAtGate();
    const unsigned long other = subscriber();
    for (int value = 1; value <= queueBound + 1; ++value) {
        notify(full, value);
    }

    EXPECT_EQ(0, notify(other, 9));

    journal.awaitLine("p1 done T 9");
}

TEST_P(QueueingRouterContractTest, callsForOneConsumerComeOneAtATimeAndInOrderWhoeverNotifies)
{
    announce(1);
    announce(2);
    const unsigned long consumer = subscriber();
    std::atomic<int> inside{0};
    onEvent = [this, &inside](unsigned long, int value) {
        EXPECT_EQ(1, ++inside);
        journal.write("event " + std::to_string(value));
        --inside;
    };
    const auto notifyThree = [&](int producer, int first) {
        for (int value = first; value < first + 3; ++value) {
            while (notify(consumer, value, producer) == -10) {
                std::this_thread::yield();
            }
        }
    };

    std::thread one(notifyThree, 1, 1);
    std::thread two(notifyThree, 2, 5);
    one.join();
    two.join();
    ledger.awaitValues();

    std::vector<std::string> ofOne;
    std::vector<std::string> ofTwo;
    for (const std::string& line : journal.lines()) {
        if (line.rfind("event ", 0) == 0) {
            (line < "event 5" ? ofOne : ofTwo).push_back(line);
        }
    }
    EXPECT_THAT(ofOne, ElementsAre("event 1", "event 2", "event 3"));
    EXPECT_THAT(ofTwo, ElementsAre("event 5", "event 6", "event 7"));
}

TEST_P(QueueingRouterContractTest, tooManyConsumersAreRefusedUntilOneHasLeft)
{
    std::vector<unsigned long> present;
    while (present.size() < consumerBound) {
        present.push_back(registerConsumer());
    }
    ZorvOamSpiEventConsumer_1T tooMuch{0, &onNotified};

    EXPECT_EQ(-10, spi->registerConsumer(&tooMuch));
    EXPECT_EQ(0UL, tooMuch.consumerId);

    unregisterConsumer(present.front());
    registerConsumer();
}

// --- Callbacks that throw

TEST_P(QueueingRouterContractTest, aConsumerThatThrowsLosesNothing)
{
    announce();
    const unsigned long consumer = subscriber();
    onEvent = [](unsigned long, int value) {
        if (value == 1) {
            throw std::runtime_error("no memory");
        }
        throw value;
    };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));
    EXPECT_EQ(0, notify(consumer, 2));

    EXPECT_THAT(journal.await(4), ElementsAre("c1 event T 1", "p1 done T 1", "c1 event T 2", "p1 done T 2"));
}

TEST_P(QueueingRouterContractTest, aProducerThatThrowsInAddFilterHasRefused)
{
    announce();
    addAnswer = -1;
    onAdd = [](int, unsigned long) { throw 7; };

    const unsigned long consumer = subscriber();
    EXPECT_EQ(0, unsubscribe(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T"));
}

TEST_P(QueueingRouterContractTest, aProducerThatThrowsElsewhereStopsNothing)
{
    announce();
    const unsigned long consumer = subscriber();
    onRemove = [](int) { throw 7; };
    onDone = [](int, int) { throw 7; };
    onClear = [](int) { throw 7; };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));
    EXPECT_EQ(0, notify(consumer, 2));
    journal.await(4);
    EXPECT_EQ(0, unsubscribe(consumer));
    implementation->shutdown();

    EXPECT_THAT(journal.lines(), ElementsAre("c1 event T 1", "p1 done T 1", "c1 event T 2", "p1 done T 2",
                                             "p1 remove c1 T", "p1 clear"));
}

// --- All at once

TEST_P(QueueingRouterContractTest, everythingComesBackOnceWhileClientsComeAndGo)
{
    constexpr int rounds = 100;
    announce(1);
    announce(2);
    const unsigned long staying = subscriber();
    std::atomic<unsigned long> passing{staying};
    std::vector<std::thread> threads;

    threads.emplace_back([&] {
        for (int round = 0; round < rounds; ++round) {
            passing = subscriber({{"a", "b"}});
            round % 2 == 0 ? unsubscribe(passing, {{"a", "b"}}) : 0;
            EXPECT_EQ(0, unregisterConsumer(passing));
        }
    });
    threads.emplace_back([&] {
        for (int round = 0; round < rounds; ++round) {
            EXPECT_EQ(0, subscribe(staying, {{"c", "d"}}));
            EXPECT_EQ(0, unsubscribe(staying, {{"c", "d"}}));
        }
    });
    for (const int producer : {1, 2}) {
        threads.emplace_back([&, producer] {
            for (int round = 0; round < 5 * rounds; ++round) {
                notify(round % 2 == 0 ? staying : passing.load(), round % 10, producer);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    ledger.awaitValues();
}

}  // namespace ZorvTest
