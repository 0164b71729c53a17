// Operations called from inside callbacks.

#include <gmock/gmock.h>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

// --- From inside a producer's callbacks

TEST_P(EventRouterContractTest, aProducerMayNotifyInsideAddFilter)
{
    onAdd = [this](int, unsigned long consumerId) { EXPECT_EQ(0, notify(consumerId, 1)); };
    announce();

    subscriber();

    EXPECT_THAT(journal.await(3), ElementsAre("p1 add c1 T", "c1 event T 1", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, aProducerMayAnnounceAnotherTypeInsideAddFilter)
{
    onAdd = [this](int, unsigned long) { addEventType("T2"); };
    const unsigned long consumer = registerConsumer();
    subscribe(consumer, {}, "T2");
    announce();

    subscribe(consumer);
    journal.await(2);

    EXPECT_THAT(journal.lines(), UnorderedElementsAre("p1 add c1 T", "p1 add c1 T2"));
}

TEST_P(EventRouterContractTest, aProducerMayTakeItsTypeBackInsideAddFilter)
{
    onAdd = [this](int, unsigned long) { EXPECT_EQ(0, removeEventType()); };
    announce();
    const unsigned long consumer = subscriber();

    EXPECT_EQ(0, unsubscribe(consumer));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T"));
}

TEST_P(EventRouterContractTest, aProducerMayUnregisterInsideAddFilter)
{
    onAdd = [this](int, unsigned long) { EXPECT_EQ(0, unregisterProducer()); };
    announce();

    const unsigned long consumer = subscriber();
    unsubscribe(consumer);

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T"));
}

TEST_P(EventRouterContractTest, theSubscriptionMayEndInsideItsAddFilter)
{
    onAdd = [this](int, unsigned long consumerId) { EXPECT_EQ(0, unsubscribe(consumerId)); };
    announce();

    subscriber();

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T", "p1 remove c1 T"));
}

TEST_P(EventRouterContractTest, theConsumerMayUnregisterInsideAddFilter)
{
    onAdd = [this](int, unsigned long consumerId) { EXPECT_EQ(0, unregisterConsumer(consumerId)); };
    announce();

    subscriber();

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T", "p1 remove c1 T"));
}

TEST_P(EventRouterContractTest, aProducerMayUnregisterInsideRemoveFilter)
{
    onRemove = [this](int) { EXPECT_EQ(0, unregisterProducer()); };
    announce();
    const unsigned long consumer = subscriber({{"a", "b"}});

    EXPECT_EQ(0, unsubscribe(consumer, {{"a", "b"}}));

    EXPECT_THAT(journal.lines(), ElementsAre("p1 add c1 T a=b", "p1 remove c1 T a=b"));
}

TEST_P(EventRouterContractTest, aProducerMayUnregisterInsideClearAll)
{
    onClear = [this](int) { unregisterProducer(); };
    announce();

    implementation->shutdown();

    EXPECT_THAT(journal.lines(), ElementsAre("p1 clear"));
}

TEST_P(EventRouterContractTest, aProducerMayNotifyInsideDoneWithValue)
{
    announce();
    const unsigned long consumer = subscriber();
    onDone = [this, consumer](int, int value) { value < 3 ? notify(consumer, value + 1) : 0; };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(6), ElementsAre("c1 event T 1", "p1 done T 1", "c1 event T 2", "p1 done T 2",
                                              "c1 event T 3", "p1 done T 3"));
}

TEST_P(EventRouterContractTest, aProducerMayUnregisterInsideDoneWithValue)
{
    announce();
    const unsigned long consumer = subscriber();
    onDone = [this](int, int) { journal.write("unregistered: " + std::to_string(unregisterProducer())); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(3), ElementsAre("c1 event T 1", "p1 done T 1", "unregistered: 0"));
}

// --- From inside a consumer's callback

TEST_P(EventRouterContractTest, aConsumerMayUnsubscribeInsideItsCallback)
{
    announce();
    const unsigned long consumer = subscriber();
    onEvent = [this](unsigned long consumerId, int) { EXPECT_EQ(0, unsubscribe(consumerId)); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(3), ElementsAre("c1 event T 1", "p1 remove c1 T", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, aConsumerMayUnregisterInsideItsCallback)
{
    announce();
    const unsigned long consumer = subscriber();
    onEvent = [this](unsigned long consumerId, int) { EXPECT_EQ(0, unregisterConsumer(consumerId)); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(3), ElementsAre("c1 event T 1", "p1 remove c1 T", "p1 done T 1"));
    EXPECT_EQ(-2, unregisterConsumer(consumer));
}

TEST_P(EventRouterContractTest, aConsumerMayRegisterAndSubscribeAnotherInsideItsCallback)
{
    announce();
    const unsigned long consumer = subscriber();
    onEvent = [this](unsigned long, int) { subscriber({{"a", "b"}}); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(3), ElementsAre("c1 event T 1", "p1 add c2 T a=b", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, aConsumerMayUnregisterAnotherInsideItsCallback)
{
    announce();
    const unsigned long consumer = subscriber();
    const unsigned long other = subscriber();
    onEvent = [this, other](unsigned long, int) { EXPECT_EQ(0, unregisterConsumer(other)); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(3), ElementsAre("c1 event T 1", "p1 remove c2 T", "p1 done T 1"));
}

TEST_P(EventRouterContractTest, aConsumersCallbackMayCauseFurtherEvents)
{
    announce();
    const unsigned long consumer = subscriber();
    const unsigned long other = subscriber();
    onEvent = [this, other](unsigned long, int value) { EXPECT_EQ(0, value == 1 ? notify(other, 2) : 0); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(4), UnorderedElementsAre("c1 event T 1", "p1 done T 1", "c2 event T 2", "p1 done T 2"));
}

TEST_P(EventRouterContractTest, aValueBeingDeliveredIsHandedBackThoughItsProducerUnregistersMeanwhile)
{
    announce();
    const unsigned long consumer = subscriber();
    onEvent = [this](unsigned long, int) { EXPECT_EQ(0, unregisterProducer()); };
    journal.take();

    EXPECT_EQ(0, notify(consumer, 1));

    EXPECT_THAT(journal.await(2), ElementsAre("c1 event T 1", "p1 done T 1"));
}

}  // namespace ZorvTest
