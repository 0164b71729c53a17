#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <thread>

#include "ReplicatedListContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;

TEST_P(ReplicatedListContractTest, itemsKeepTheOrderInWhichTheyWerePushed)
{
    create({3, 1, 2});

    EXPECT_THAT(items(), ElementsAre(3, 1, 2));
}

TEST_P(ReplicatedListContractTest, itemsKeepAllTheirBytesWhateverTheirSize)
{
    for (const std::uint32_t size : {1U, 7U, 1000U}) {
        const ZorvMwSpiListNameT sized = nameOf("items of " + std::to_string(size));
        std::string data(size, '\0');
        data.back() = '\xff';
        spi->listCreate(&sized, size);
        ZorvMwSpiListNameT name{};
        spi->listPushBack(&sized, &name, data.data());
        ZorvMwSpiListRefT ref = nullptr;
        spi->listGetFrontRef(&sized, &ref);
        std::string found(size + 1, 'x');

        EXPECT_EQ(0, spi->listGetNextItemFront(&sized, &ref, &name, found.data()));

        EXPECT_EQ(data + 'x', found) << "no byte more or less than the size of the items";
        EXPECT_EQ(0, spi->listGetFinalize(&sized, ref));
    }
}

TEST_P(ReplicatedListContractTest, whatIsGivenIsCopied)
{
    ZorvMwSpiListNameT given = list;
    ItemT value = 1;
    spi->listCreate(&given, sizeof(ItemT));
    spi->listPushBack(&given, &given, &value);
    value = 2;
    spi->listPushBack(&list, &given, &value);
    value = 3;
    spi->listReplaceItem(&list, &given, &value);
    value = 4;

    EXPECT_THAT(items(), ElementsAre(1, 3));
}

TEST_P(ReplicatedListContractTest, itemNamesAreUniqueAndCountTheirFinalZero)
{
    create();
    std::set<std::string> names;

    for (ItemT value = 0; value < 20; ++value) {
        const ZorvMwSpiListNameT name = push(value);
        EXPECT_EQ(std::string(name.value).size() + 1, name.length);
        names.insert(name.value);
    }

    EXPECT_EQ(20U, names.size());
}

TEST_P(ReplicatedListContractTest, aRefusedPushLeavesTheItemUnnamed)
{
    ZorvMwSpiListNameT name{};
    const ItemT value = 1;

    EXPECT_EQ(-2, spi->listPushBack(&list, &name, &value));

    EXPECT_EQ(0, name.length);
}

TEST_P(ReplicatedListContractTest, eraseRemovesOneItem)
{
    const auto names = create({1, 2, 3});

    EXPECT_EQ(0, erase(names[1]));

    EXPECT_THAT(items(), ElementsAre(1, 3));
}

TEST_P(ReplicatedListContractTest, anErasedItemIsNotFoundAndItsNameIsNotUsedAgain)
{
    const auto names = create({1});
    erase(names[0]);

    const ZorvMwSpiListNameT next = push(2);

    EXPECT_STRNE(names[0].value, next.value);
    EXPECT_EQ(-2, erase(names[0]));
    EXPECT_EQ(-2, replace(names[0], 3));
    EXPECT_THAT(items(), ElementsAre(2));
}

TEST_P(ReplicatedListContractTest, aListWhoseItemsWereErasedIsEmptyAgain)
{
    const auto names = create({1});
    bool isEmpty = false;

    erase(names[0]);

    EXPECT_EQ(0, spi->listIsEmpty(&list, &isEmpty));
    EXPECT_TRUE(isEmpty);
}

TEST_P(ReplicatedListContractTest, replaceKeepsTheItemsPlaceAndName)
{
    const auto names = create({1, 2, 3});

    EXPECT_EQ(0, replace(names[1], 20));
    EXPECT_EQ(0, replace(names[1], 21));

    EXPECT_THAT(items(), ElementsAre(1, 21, 3));
}

TEST_P(ReplicatedListContractTest, itemsThatNobodyNamedSoAreNotFound)
{
    create({1});
    const ZorvMwSpiListNameT strange = nameOf("no such item");
    const ZorvMwSpiListNameT noneYet{};

    EXPECT_EQ(-2, erase(strange));
    EXPECT_EQ(-2, replace(strange, 2));
    EXPECT_EQ(-2, erase(noneYet));
    EXPECT_EQ(-2, replace(noneYet, 2));

    EXPECT_THAT(items(), ElementsAre(1));
}

TEST_P(ReplicatedListContractTest, anItemOfAnotherListIsNotFound)
{
    create({1});
    spi->listCreate(&otherList, sizeof(ItemT));
    ZorvMwSpiListNameT foreign{};
    const ItemT value = 2;
    spi->listPushBack(&otherList, &foreign, &value);

    EXPECT_EQ(-2, erase(foreign));
    EXPECT_EQ(-2, replace(foreign, 3));

    EXPECT_THAT(items(), ElementsAre(1));
}

// --- Several threads

TEST_P(ReplicatedListContractTest, itemsPushedFromSeveralThreadsAreAllThere)
{
    constexpr ItemT each = 25;
    std::vector<std::thread> threads;
    create();

    for (ItemT first = 0; first < 4 * each; first += each) {
        threads.emplace_back([this, first] {
            for (ItemT value = first; value < first + each; ++value) {
                push(value);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    const auto all = items();
    const std::set<ItemT> different(all.begin(), all.end());
    EXPECT_EQ(4 * each, all.size());
    EXPECT_EQ(4 * each, different.size());
}

TEST_P(ReplicatedListContractTest, walksGoOnWhileAnotherThreadPushesErasesAndReplaces)
{
    constexpr ItemT last = 200;
    create({0, 1});
    std::thread writer([this] {
        ZorvMwSpiListNameT previous = push(2);
        for (ItemT value = 3; value <= last; ++value) {
            const ZorvMwSpiListNameT name = push(value);
            EXPECT_EQ(0, replace(previous, value - 1));
            EXPECT_EQ(0, erase(previous));
            previous = name;
        }
    });

    for (std::vector<ItemT> met; met.empty() || met.back() != last;) {
        met = items();
        EXPECT_TRUE(std::is_sorted(met.begin(), met.end()));
        ASSERT_LE(2U, met.size());
        EXPECT_EQ(0U, met[0]);
        EXPECT_EQ(1U, met[1]);
    }

    writer.join();
    EXPECT_THAT(items(), ElementsAre(0, 1, last));
}

// --- Bounds

TEST_P(BoundedListContractTest, aFullListTakesNothingMoreAndKeepsWhatItHas)
{
    create(std::vector<ItemT>(itemBound, 1));
    ZorvMwSpiListNameT name{};
    const ItemT tooMuch = 2;

    EXPECT_EQ(-10, spi->listPushBack(&list, &name, &tooMuch));

    EXPECT_EQ(0, name.length);
    EXPECT_EQ(std::vector<ItemT>(itemBound, 1), items());
}

TEST_P(BoundedListContractTest, anErasedItemMakesRoomInAFullList)
{
    const auto names = create(std::vector<ItemT>(itemBound, 1));

    erase(names[0]);
    push(2);

    EXPECT_EQ(2U, items().back());
}

}  // namespace ZorvTest
