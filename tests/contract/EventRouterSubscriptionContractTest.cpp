#include <gmock/gmock.h>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Subscriptions are told once

TEST_P(EventRouterContractTest, aProducerIsToldOfASubscriptionToItsEventType)
{
    announce();

    subscriber({{"a", "b"}});

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T a=b"));
}

TEST_P(EventRouterContractTest, everyProducerOfTheTypeIsTold)
{
    announce(1);
    announce(2);

    subscriber();

    EXPECT_THAT(journal.lines(), testing::UnorderedElementsAre("p1 add c1 T", "p2 add c1 T"));
}

TEST_P(EventRouterContractTest, producersOfOtherTypesAreNotTold)
{
    announce();

    subscribe(registerConsumer(), {}, "T2");

    EXPECT_THAT(journal.lines(), IsEmpty());
}

TEST_P(EventRouterContractTest, addEventTypeTellsOfTheExistingSubscriptionsBeforeItReturns)
{
    const unsigned long first = subscriber({{"a", "b"}});
    subscriber();
    subscribe(first, {}, "T2");
    registerProducer();

    EXPECT_EQ(0, addEventType());

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T a=b", "p1 add c2 T"));
}

TEST_P(EventRouterContractTest, anEventTypeIsAnnouncedOnce)
{
    announce();
    subscriber();
    journal.take();

    EXPECT_EQ(-3, addEventType());

    EXPECT_THAT(journal.lines(), IsEmpty());
}

TEST_P(EventRouterContractTest, equalSubscriptionsAreToldOneByOne)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});

    EXPECT_EQ(0, subscribe(consumer, {{"a", "b"}}));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T a=b", "p1 add c1 T a=b"));
}

// --- Ends of subscriptions

TEST_P(EventRouterContractTest, aSubscriptionIsFoundByTypeAndEqualFilter)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});
    subscribe(consumer, {{"a", "c"}});
    journal.take();

    EXPECT_EQ(-2, unsubscribe(consumer, {{"a", "d"}}));
    EXPECT_EQ(-2, unsubscribe(consumer, {{"b", "b"}}));
    EXPECT_EQ(-2, unsubscribe(consumer, {{"a", "b"}, {"a", "c"}}));
    EXPECT_EQ(-2, unsubscribe(consumer, {}));
    EXPECT_EQ(-2, unsubscribe(consumer, {{"a", "b"}}, "T2"));
    EXPECT_THAT(journal.lines(), IsEmpty());

    EXPECT_EQ(0, unsubscribe(consumer, {{"a", "c"}}));
    EXPECT_THAT(journal.lines(), ElementsAre("p1 remove c1 T a=c"));
}

TEST_P(EventRouterContractTest, filtersAreEqualEntryByEntry)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}, {"c", "d"}});

    EXPECT_EQ(-2, unsubscribe(consumer, {{"a", "b, c=d"}}));
    EXPECT_EQ(-2, unsubscribe(consumer, {{"a=b, c", "d"}}));
    EXPECT_EQ(-2, unsubscribe(consumer, {{"a", "b"}}));
}

TEST_P(EventRouterContractTest, equalSubscriptionsEndOneByOne)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});
    subscribe(consumer, {{"a", "b"}});
    journal.take();

    EXPECT_EQ(0, unsubscribe(consumer, {{"a", "b"}}));
    EXPECT_THAT(journal.take(), ElementsAre("p1 remove c1 T a=b"));

    EXPECT_EQ(0, unsubscribe(consumer, {{"a", "b"}}));
    EXPECT_THAT(journal.take(), ElementsAre("p1 remove c1 T a=b"));

    EXPECT_EQ(-2, unsubscribe(consumer, {{"a", "b"}}));
}

TEST_P(EventRouterContractTest, theSubscriptionsOfAConsumerEndWithIt)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});
    subscribe(consumer);
    subscriber();
    journal.take();

    EXPECT_EQ(0, unregisterConsumer(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 remove c1 T a=b", "p1 remove c1 T"));
    EXPECT_EQ(-2, unregisterConsumer(consumer));
    EXPECT_EQ(-2, subscribe(consumer));
}

TEST_P(EventRouterContractTest, aRefusedSubscriptionIsNotTakenBack)
{
    addAnswer = -1;
    announce(1);
    const unsigned long consumer = subscriber();
    addAnswer = 0;
    announce(2);
    journal.take();

    EXPECT_EQ(0, unsubscribe(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p2 remove c1 T"));
}

TEST_P(EventRouterContractTest, noRemoveFilterFollowsForATypeThatWasTakenBack)
{
    announce();
    const unsigned long consumer = subscriber();
    journal.take();

    EXPECT_EQ(0, removeEventType());
    EXPECT_EQ(0, unsubscribe(consumer));

    EXPECT_THAT(journal.lines(), IsEmpty());
    EXPECT_EQ(-2, removeEventType());
}

TEST_P(EventRouterContractTest, aTypeMayBeAnnouncedAgainAndIsToldAnew)
{
    announce();
    const unsigned long consumer = subscriber();
    removeEventType();
    journal.take();

    EXPECT_EQ(0, addEventType());
    EXPECT_EQ(0, unsubscribe(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T", "p1 remove c1 T"));
}

TEST_P(EventRouterContractTest, aProducerThatIsGoneHearsNothingMore)
{
    announce();
    const unsigned long consumer = subscriber();
    journal.take();

    EXPECT_EQ(0, unregisterProducer());
    unsubscribe(consumer);
    subscribe(consumer);
    unregisterConsumer(consumer);

    EXPECT_THAT(journal.lines(), IsEmpty());
    EXPECT_EQ(-2, unregisterProducer());
}

// --- Shut-down

TEST_P(EventRouterContractTest, shutdownEndsAllSubscriptionsAndThenNothingFollows)
{
    announce(1);
    announce(2);
    const unsigned long consumer = subscriber();
    journal.take();

    implementation->shutdown();

    EXPECT_EQ(1U, journal.count("p1 clear"));
    EXPECT_EQ(1U, journal.count("p2 clear"));
    journal.take();
    unsubscribe(consumer);
    unregisterConsumer(consumer);
    unregisterProducer(1);
    EXPECT_THAT(journal.lines(), IsEmpty());
}

}  // namespace ZorvTest
