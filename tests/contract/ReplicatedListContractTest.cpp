#include <gmock/gmock.h>

#include "ReplicatedListContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Lists

TEST_P(ReplicatedListContractTest, aNewListIsEmpty)
{
    bool isEmpty = false;

    EXPECT_EQ(0, create());

    EXPECT_EQ(0, spi->listIsEmpty(&list, &isEmpty));
    EXPECT_TRUE(isEmpty);
}

TEST_P(ReplicatedListContractTest, aListWithAnItemIsNotEmpty)
{
    create({7});
    bool isEmpty = true;

    EXPECT_EQ(0, spi->listIsEmpty(&list, &isEmpty));

    EXPECT_FALSE(isEmpty);
}

TEST_P(ReplicatedListContractTest, createRefusesAnItemSizeOfZero)
{
    EXPECT_EQ(-1, spi->listCreate(&list, 0));

    EXPECT_EQ(-2, spi->listAttach(&list));
}

TEST_P(ReplicatedListContractTest, createRefusesANameWithoutItsFinalZero)
{
    ZorvMwSpiListNameT cutShort = list;
    cutShort.length = 3;
    ZorvMwSpiListNameT tooLong = list;
    tooLong.length = ZORV_LIST_NAME_SIZE + 1;
    const ZorvMwSpiListNameT noneYet{};

    EXPECT_EQ(-1, spi->listCreate(&cutShort, sizeof(ItemT)));
    EXPECT_EQ(-1, spi->listCreate(&tooLong, sizeof(ItemT)));
    EXPECT_EQ(-1, spi->listCreate(&noneYet, sizeof(ItemT)));
}

TEST_P(ReplicatedListContractTest, aNameCountsWithAllItsCharacters)
{
    const ZorvMwSpiListNameT longest = nameOf(std::string(ZORV_LIST_NAME_SIZE - 2, 'x') + "1");
    const ZorvMwSpiListNameT differsAtItsEnd = nameOf(std::string(ZORV_LIST_NAME_SIZE - 2, 'x') + "2");

    EXPECT_EQ(0, spi->listCreate(&longest, sizeof(ItemT)));

    EXPECT_EQ(0, spi->listAttach(&longest));
    EXPECT_EQ(-2, spi->listAttach(&differsAtItsEnd));
}

TEST_P(ReplicatedListContractTest, createOfAnExistingListKeepsItsItemsAndTheirSize)
{
    create({7});

    EXPECT_EQ(-3, create());
    EXPECT_EQ(-3, spi->listCreate(&list, 1));

    EXPECT_THAT(items(), ElementsAre(7));
}

TEST_P(ReplicatedListContractTest, aFurtherUserFindsWhatIsThere)
{
    create({1, 2});

    EXPECT_EQ(0, spi->listAttach(&list));

    EXPECT_THAT(items(), ElementsAre(1, 2));
}

TEST_P(ReplicatedListContractTest, deleteRemovesTheListWithItsItems)
{
    create({1});

    EXPECT_EQ(0, spi->listDelete(&list));

    EXPECT_EQ(-2, spi->listAttach(&list));
    EXPECT_EQ(0, create());
    EXPECT_THAT(items(), IsEmpty());
}

TEST_P(ReplicatedListContractTest, deleteLeavesOtherListsAlone)
{
    create({1});
    spi->listCreate(&otherList, sizeof(ItemT));

    EXPECT_EQ(0, spi->listDelete(&otherList));

    EXPECT_THAT(items(), ElementsAre(1));
}

TEST_P(ReplicatedListContractTest, everyOperationOnAMissingListIsNotFound)
{
    spi->listCreate(&otherList, sizeof(ItemT));
    ZorvMwSpiListNameT item = nameOf("some item");
    ZorvMwSpiListRefT ref = nullptr;
    const ItemT value = 0;
    bool isEmpty = false;

    EXPECT_EQ(-2, spi->listDelete(&list));
    EXPECT_EQ(-2, spi->listAttach(&list));
    EXPECT_EQ(-2, spi->listIsEmpty(&list, &isEmpty));
    EXPECT_EQ(-2, spi->listGetFrontRef(&list, &ref));
    EXPECT_EQ(-2, spi->listPushBack(&list, &item, &value));
    EXPECT_EQ(-2, spi->listEraseItem(&list, &item));
    EXPECT_EQ(-2, spi->listReplaceItem(&list, &item, &value));
}

TEST_P(ReplicatedListContractTest, isEmptyOfAMissingListLeavesTheFlagAsItWas)
{
    for (const bool preset : {false, true}) {
        bool isEmpty = preset;

        EXPECT_EQ(-2, spi->listIsEmpty(&list, &isEmpty));

        EXPECT_EQ(preset, isEmpty);
    }
}

}  // namespace ZorvTest
