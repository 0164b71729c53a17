// A null pointer where the interfaces allow none is refused, and takes nobody down. The fakes do not promise this.

#include "EventRouterContract.hpp"
#include "ManagedObjectContract.hpp"
#include "ReplicatedListContract.hpp"

namespace ZorvTest {

TEST_P(BoundedListContractTest, nullArgumentsAreRefused)
{
    create({1});
    ZorvMwSpiListNameT name{};
    ItemT value = 0;
    ZorvMwSpiListRefT ref = nullptr;
    spi->listGetFrontRef(&list, &ref);
    bool isEmpty = true;

    EXPECT_EQ(-1, spi->listCreate(nullptr, sizeof(ItemT)));
    EXPECT_EQ(-1, spi->listDelete(nullptr));
    EXPECT_EQ(-1, spi->listAttach(nullptr));
    EXPECT_EQ(-1, spi->listIsEmpty(nullptr, &isEmpty));
    EXPECT_EQ(-1, spi->listIsEmpty(&list, nullptr));
    EXPECT_EQ(-1, spi->listGetFrontRef(nullptr, &ref));
    EXPECT_EQ(-1, spi->listGetFrontRef(&list, nullptr));
    EXPECT_EQ(-1, spi->listPushBack(nullptr, &name, &value));
    EXPECT_EQ(-1, spi->listPushBack(&list, nullptr, &value));
    EXPECT_EQ(-1, spi->listPushBack(&list, &name, nullptr));
    EXPECT_EQ(-1, spi->listEraseItem(&list, nullptr));
    EXPECT_EQ(-1, spi->listReplaceItem(&list, &name, nullptr));
    EXPECT_EQ(-1, spi->listGetNextItemFront(&list, nullptr, &name, &value));
    EXPECT_EQ(-1, spi->listGetNextItemFront(&list, &ref, nullptr, &value));
    EXPECT_EQ(-1, spi->listGetNextItemFront(&list, &ref, &name, nullptr));
    EXPECT_EQ(-1, spi->listGetFinalize(nullptr, ref));

    EXPECT_EQ(0, spi->listGetFinalize(&list, ref));
    EXPECT_EQ(std::vector<ItemT>{1}, items());
}

TEST_P(QueueingRouterContractTest, nullArgumentsAreRefused)
{
    const std::uint32_t producer = registerProducer();
    const unsigned long consumer = subscriber();
    std::uint32_t handle = 0;

    EXPECT_EQ(-1, spi->registerProducer(nullptr, &handle));
    EXPECT_EQ(-1, spi->registerProducer(&tableOf(1), nullptr));
    EXPECT_EQ(-1, spi->addEventType(producer, nullptr));
    EXPECT_EQ(-1, spi->notify(producer, consumer, nullptr, nullptr, nullptr));
    EXPECT_EQ(-1, spi->removeEventType(producer, nullptr));
    EXPECT_EQ(-1, spi->registerConsumer(nullptr));
    EXPECT_EQ(-1, spi->addSubscription(consumer, nullptr, nullptr));
    EXPECT_EQ(-1, spi->removeSubscription(consumer, nullptr, nullptr));
}

TEST_P(FullObjectContractTest, nullArgumentsAreRefused)
{
    const unsigned long tx = begin();
    const char* const names[] = {"number", nullptr};
    YaltOamSpiMoAttributeResult_3T result{};
    YaltOamSpiMoAttributesResult_3T results{};
    const YaltOamSpiMoAttribute_3T none = {YALT_MO_ATTRIBUTE_UINT32, 0, nullptr};
    const YaltOamSpiTransactionalResource_1T incomplete{};
    std::uint64_t number = 0;
    bool flag = false;

    EXPECT_EQ(-1, objects->newMoIterator(tx, nullptr, "Port", &number));
    EXPECT_EQ(-1, objects->newMoIterator(tx, "Node=1", nullptr, &number));
    EXPECT_EQ(-1, objects->newMoIterator(tx, "Node=1", "Port", nullptr));
    EXPECT_EQ(-1, objects->nextMo(1, nullptr));
    EXPECT_EQ(-1, objects->existsMo(tx, nullptr, &flag));
    EXPECT_EQ(-1, objects->existsMo(tx, "Node=1", nullptr));
    EXPECT_EQ(-1, objects->countMoChildren(tx, nullptr, "Port", &number));
    EXPECT_EQ(-1, objects->countMoChildren(tx, "Node=1", nullptr, &number));
    EXPECT_EQ(-1, objects->countMoChildren(tx, "Node=1", "Port", nullptr));
    EXPECT_EQ(-1, objects->getMoAttribute(tx, nullptr, "number", &result));
    EXPECT_EQ(-1, objects->getMoAttribute(tx, "Node=1", nullptr, &result));
    EXPECT_EQ(-1, objects->getMoAttribute(tx, "Node=1", "number", nullptr));
    EXPECT_EQ(-1, objects->getMoAttributes(tx, nullptr, names, &results));
    EXPECT_EQ(-1, objects->getMoAttributes(tx, "Node=1", nullptr, &results));
    EXPECT_EQ(-1, objects->getMoAttributes(tx, "Node=1", names, nullptr));
    EXPECT_EQ(-1, objects->setMoAttribute(tx, nullptr, "number", &none));
    EXPECT_EQ(-1, objects->setMoAttribute(tx, "Node=1", nullptr, &none));
    EXPECT_EQ(-1, objects->setMoAttribute(tx, "Node=1", "number", nullptr));
    EXPECT_EQ(-1, objects->createMo(tx, nullptr, "Port", "3", nullptr, 0));
    EXPECT_EQ(-1, objects->createMo(tx, "Node=1", nullptr, "3", nullptr, 0));
    EXPECT_EQ(-1, objects->createMo(tx, "Node=1", "Port", nullptr, nullptr, 0));
    EXPECT_EQ(-1, objects->createMo(tx, "Node=1", "Port", "3", nullptr, 1));
    EXPECT_EQ(-1, objects->deleteMo(tx, nullptr));
    EXPECT_EQ(-1, master->createTransaction(ZORV_LOCK_POLICY_NONE, 60, nullptr));
    EXPECT_EQ(-1, participants->registerParticipant(tx, nullptr));
    EXPECT_EQ(-1, participants->registerParticipant(tx, &incomplete));

    EXPECT_EQ(0, commit(tx));
}

}  // namespace ZorvTest
