#include <gmock/gmock.h>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::ElementsAreArray;

TEST_P(EventRouterContractTest, anEventIsDeliveredWithItsFilterAndHandedBack)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(3), ElementsAre("p1 add c1 T a=b", "c1 event T a=b 1", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, theValueItselfTravelsAndNoCopyOfIt)
{
    const std::uint32_t producer = registerProducer();
    addEventType();
    const unsigned long consumer = subscriber();
    int value = 7;
    onEvent = [&value](unsigned long, int) { value = 8; };
    journal.take();

    EXPECT_EQ(0, spi->notify(producer, consumer, "T", ledger.latestFilter(1, consumer), &value));
    ledger.valueAccepted(1, 8);

    EXPECT_THAT(journal.await(2), ElementsAre("c1 event T 7", "p1 done T 8"));
}

TEST_P(EventRouterContractTest, eventsReachTheirConsumerInTheOrderInWhichTheyWereNotified)
{
    announce();
    const unsigned long consumer = subscriber();
    journal.take();
    std::vector<std::string> expected;

    for (int value = 1; value <= 3; ++value) {
        EXPECT_EQ(0, notify(consumer, value));
        expected.push_back("c1 event T " + std::to_string(value));
        expected.push_back("p1 done T " + std::to_string(value));
    }

    EXPECT_THAT(journal.await(6), ElementsAreArray(expected));
}

TEST_P(EventRouterContractTest, onlyTheNotifiedConsumerGetsTheEvent)
{
    announce();
    subscriber();
    const unsigned long second = subscriber();
    journal.take();

    EXPECT_EQ(0, notify(second, 1));

    EXPECT_THAT(journal.await(2), ElementsAre("c2 event T 1", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, aValueGoesBackToTheProducerThatNotifiedIt)
{
    announce(1);
    announce(2);
    const unsigned long consumer = subscriber();
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1, 2));

    EXPECT_THAT(journal.await(2), ElementsAre("c1 event T 1", "p2 done T 1"));
}

TEST_P(EventRouterContractTest, theSameValueMayGoToSeveralConsumers)
{
    announce();
    const unsigned long first = subscriber();
    const unsigned long second = subscriber();
    journal.take();

    EXPECT_EQ(0, notify(first, 1));
    EXPECT_EQ(0, notify(second, 1));

    EXPECT_THAT(journal.await(4),
                testing::UnorderedElementsAre("c1 event T 1", "p1 done T 1", "c2 event T 1", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, eachSubscriptionsEventsCarryItsOwnFilter)
{
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});
    notify(consumer, 1);
    journal.awaitLine("p1 done T 1");
    subscribe(consumer, {{"c", "d"}});
    notify(consumer, 2);
    journal.awaitLine("p1 done T 2");

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T a=b", "c1 event T a=b 1", "p1 done T 1", "p1 add c1 T c=d",
                                             "c1 event T c=d 2", "p1 done T 2"));
}

TEST_P(EventRouterContractTest, theConsumersResultIsNotActedUpon)
{
    eventAnswer = -1;
    announce();
    const unsigned long consumer = subscriber();
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));
    journal.await(2);
    EXPECT_EQ(0, notify(consumer, 2));

    EXPECT_THAT(journal.await(4), ElementsAre("c1 event T 1", "p1 done T 1", "c1 event T 2", "p1 done T 2"));
}

TEST_P(EventRouterContractTest, aRefusedNotificationIsNeitherDeliveredNorHandedBack)
{
    announce();
    const unsigned long consumer = subscriber();
    YaltNameValuePair** const filter = ledger.latestFilter(1, consumer);
    const unsigned long stranger = registerProducer(2) + 1;
    int value = 1;
    journal.take();

    EXPECT_EQ(-2, spi->notify(static_cast<std::uint32_t>(stranger), consumer, "T", filter, &value));
    EXPECT_EQ(-2, notify(consumer + 1, 2));
    unregisterProducer();
    EXPECT_EQ(-2, notify(consumer, 3));

    EXPECT_THAT(journal.lines(), testing::IsEmpty());
}

TEST_P(EventRouterContractTest, nothingIsNotifiedToAConsumerThatIsGone)
{
    announce();
    const unsigned long consumer = subscriber();
    unregisterConsumer(consumer);
    journal.take();

    EXPECT_EQ(-2, notify(consumer, 1));

    EXPECT_THAT(journal.lines(), testing::IsEmpty());
}

}  // namespace ZorvTest
