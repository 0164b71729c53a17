#include <gmock/gmock.h>

#include "EventRouterContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(EventRouterContractTest, handlesAndIdentitiesAreNeverZeroAndAllDifferent)
{
    const std::uint32_t producer = registerProducer(1);
    const std::uint32_t otherProducer = registerProducer(2);
    const unsigned long consumer = registerConsumer();
    const unsigned long otherConsumer = registerConsumer();

    EXPECT_NE(0U, producer);
    EXPECT_NE(0U, otherProducer);
    EXPECT_NE(producer, otherProducer);
    EXPECT_NE(0UL, consumer);
    EXPECT_NE(0UL, otherConsumer);
    EXPECT_NE(consumer, otherConsumer);
}

TEST_P(EventRouterContractTest, incompleteProducersAreRefused)
{
    std::uint32_t handle = 0;
    ZorvOamSpiEventProducer_1T noAdd = tableOf(1);
    noAdd.evtProdAddFilter = nullptr;
    ZorvOamSpiEventProducer_1T noRemove = tableOf(1);
    noRemove.evtProdRemoveFilter = nullptr;
    ZorvOamSpiEventProducer_1T noClear = tableOf(1);
    noClear.evtProdClearAll = nullptr;
    ZorvOamSpiEventProducer_1T noDone = tableOf(1);
    noDone.evtProdDoneWithValue = nullptr;

    EXPECT_EQ(-1, spi->registerProducer(&noAdd, &handle));
    EXPECT_EQ(-1, spi->registerProducer(&noRemove, &handle));
    EXPECT_EQ(-1, spi->registerProducer(&noClear, &handle));
    EXPECT_EQ(-1, spi->registerProducer(&noDone, &handle));
    EXPECT_EQ(0U, handle);
}

TEST_P(EventRouterContractTest, aConsumerWithoutCallbackIsRefused)
{
    ZorvOamSpiEventConsumer_1T consumer{0, nullptr};

    EXPECT_EQ(-1, spi->registerConsumer(&consumer));

    EXPECT_EQ(0UL, consumer.consumerId);
}

TEST_P(EventRouterContractTest, tableAndRecordAreCopied)
{
    ZorvOamSpiEventProducer_1T table = tableOf(1);
    std::uint32_t handle = 0;
    spi->registerProducer(&table, &handle);
    table = {};
    ZorvOamSpiEventConsumer_1T consumer{0, &onNotified};
    spi->registerConsumer(&consumer);
    consumer.notifyCallback = nullptr;
    int value = 5;

    spi->addEventType(handle, "T");
    spi->addSubscription(consumer.consumerId, "T", nullptr);
    ledger.valueAccepted(1, value);
    spi->notify(handle, consumer.consumerId, "T", ledger.latestFilter(1, consumer.consumerId), &value);

    EXPECT_THAT(journal.await(3), ElementsAre("p1 add c? T", "c? event T 5", "p1 done T 5"));
    EXPECT_EQ(0, spi->unregisterConsumer(consumer.consumerId));
    EXPECT_EQ(0, spi->unregisterProducer(handle, &tableOf(1)));
}

TEST_P(EventRouterContractTest, unknownProducersAreNotFound)
{
    const std::uint32_t unknown = registerProducer(1) + 1;

    EXPECT_EQ(-2, spi->addEventType(unknown, "T"));
    EXPECT_EQ(-2, spi->removeEventType(unknown, "T"));
    EXPECT_EQ(-2, spi->unregisterProducer(unknown, &tableOf(1)));
}

TEST_P(EventRouterContractTest, unknownConsumersAreNotFound)
{
    announce();
    const unsigned long unknown = registerConsumer() + 1;

    EXPECT_EQ(-2, subscribe(unknown));
    EXPECT_EQ(-2, unsubscribe(unknown));
    EXPECT_EQ(-2, unregisterConsumer(unknown));

    EXPECT_THAT(journal.lines(), IsEmpty());
}

}  // namespace ZorvTest
