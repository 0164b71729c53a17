#include "FakeReplicatedList.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFakes {
namespace {

constexpr uint32_t itemSize = 8;

ZorvMwSpiListNameT named(const std::string& text)
{
    ZorvMwSpiListNameT name{};
    text.copy(name.value, sizeof name.value - 1);
    name.length = static_cast<uint16_t>(text.size() + 1);
    return name;
}

class FakeReplicatedListTest : public testing::Test {
protected:
    int32_t push(const std::string& text)
    {
        char data[itemSize] = {};
        text.copy(data, itemSize);
        return spi.listPushBack(&list, &item, data);
    }

    /// The data at the reference, or the code.
    std::string next()
    {
        char data[itemSize + 1] = {};
        const int32_t code = spi.listGetNextItemFront(&list, &reference, &item, data);
        return code == 0 ? data : std::to_string(code);
    }

    Journal journal;
    FakeReplicatedList lists{journal};
    const ZorvMwSpiReplicatedList_1T& spi = *FakeReplicatedList::table();
    const ZorvMwSpiListNameT list = named("Alarms");
    ZorvMwSpiListNameT item{};
    ZorvMwSpiListRefT reference = nullptr;
};

TEST_F(FakeReplicatedListTest, everythingAnswersNotFoundWithoutTheList)
{
    bool isEmpty = true;
    item = named("item1");
    EXPECT_EQ(-2, spi.listDelete(&list));
    EXPECT_EQ(-2, spi.listAttach(&list));
    EXPECT_EQ(-2, spi.listIsEmpty(&list, &isEmpty));
    EXPECT_TRUE(isEmpty);
    EXPECT_EQ(-2, spi.listGetFrontRef(&list, &reference));
    EXPECT_EQ(-2, push("a"));
    EXPECT_EQ(-2, spi.listEraseItem(&list, &item));
    EXPECT_EQ(-2, spi.listReplaceItem(&list, &item, "12345678"));
    EXPECT_EQ("-2", next());

    EXPECT_THAT(journal.take(), ElementsAre("listDelete Alarms -> -2", "listAttach Alarms -> -2",
                                            "listIsEmpty Alarms -> -2", "listGetFrontRef Alarms -> -2",
                                            "listPushBack Alarms -> -2", "listEraseItem Alarms item1 -> -2",
                                            "listReplaceItem Alarms item1 -> -2", "listGetNextItemFront Alarms -> -2"));
}

TEST_F(FakeReplicatedListTest, anExistingListKeepsItsItemsWhenCreatedAgain)
{
    EXPECT_EQ(0, spi.listCreate(&list, itemSize));
    push("a");
    EXPECT_EQ(-3, spi.listCreate(&list, itemSize));
    EXPECT_EQ(0, spi.listAttach(&list));

    EXPECT_THAT(lists.items("Alarms"), ElementsAre("a"));
}

TEST_F(FakeReplicatedListTest, badNamesAndSizesAreRefused)
{
    const ZorvMwSpiListNameT noName{};
    ZorvMwSpiListNameT unterminated = named("Alarms");
    unterminated.length = 6;

    EXPECT_EQ(-1, spi.listCreate(&noName, itemSize));
    EXPECT_EQ(-1, spi.listCreate(&unterminated, itemSize));
    EXPECT_EQ(-1, spi.listCreate(&list, 0));
}

TEST_F(FakeReplicatedListTest, aWalkMeetsTheItemsInOrderAndEndsWithANullReference)
{
    spi.listCreate(&list, itemSize);
    push("a");
    push("b");

    EXPECT_EQ(0, spi.listGetFrontRef(&list, &reference));
    EXPECT_EQ("a", next());
    EXPECT_STREQ("item1", item.value);
    EXPECT_EQ(6, item.length);
    EXPECT_NE(nullptr, reference);
    EXPECT_EQ("b", next());
    EXPECT_EQ(nullptr, reference);
    EXPECT_EQ("-2", next());
    EXPECT_EQ(0, spi.listGetFinalize(&list, reference));

    EXPECT_EQ(1U, lists.opened());
    EXPECT_EQ(1U, lists.finalized());
}

TEST_F(FakeReplicatedListTest, anEmptyListGivesANullReferenceThatWantsItsFinalizeToo)
{
    spi.listCreate(&list, itemSize);
    reference = reinterpret_cast<ZorvMwSpiListRefT>(&item);

    EXPECT_EQ(0, spi.listGetFrontRef(&list, &reference));
    EXPECT_EQ(nullptr, reference);
    EXPECT_EQ(0, spi.listGetFinalize(&list, reference));

    EXPECT_EQ(lists.opened(), lists.finalized());
}

TEST_F(FakeReplicatedListTest, erasedItemsAreNotMet)
{
    spi.listCreate(&list, itemSize);
    push("a");
    push("b");
    const ZorvMwSpiListNameT b = item;
    push("c");
    spi.listGetFrontRef(&list, &reference);
    EXPECT_EQ("a", next());

    EXPECT_EQ(0, spi.listEraseItem(&list, &b));
    EXPECT_EQ(-2, spi.listEraseItem(&list, &b));

    EXPECT_EQ("c", next());
    EXPECT_EQ(nullptr, reference);
}

TEST_F(FakeReplicatedListTest, aReplacedItemKeepsNameAndPlace)
{
    spi.listCreate(&list, itemSize);
    push("a");
    const ZorvMwSpiListNameT a = item;
    push("b");

    EXPECT_EQ(0, spi.listReplaceItem(&list, &a, "changed\0"));

    EXPECT_THAT(lists.items("Alarms"), ElementsAre("changed", "b"));
    EXPECT_THAT(lists.names("Alarms"), ElementsAre("item1", "item2"));
}

TEST_F(FakeReplicatedListTest, aFinalizeOfNoOpenIterationIsRefused)
{
    const ZorvMwSpiListNameT other = named("Other");
    spi.listCreate(&list, itemSize);
    spi.listCreate(&other, itemSize);
    push("a");
    spi.listGetFrontRef(&list, &reference);

    EXPECT_EQ(-1, spi.listGetFinalize(&other, reference));
    EXPECT_EQ(0, spi.listGetFinalize(&list, reference));
    EXPECT_EQ(-1, spi.listGetFinalize(&list, reference));
}

TEST_F(FakeReplicatedListTest, aDeletedListEndsItsIterations)
{
    spi.listCreate(&list, itemSize);
    push("a");
    spi.listGetFrontRef(&list, &reference);

    EXPECT_EQ(0, spi.listDelete(&list));

    EXPECT_FALSE(lists.exists("Alarms"));
    EXPECT_EQ("-2", next());
    EXPECT_EQ(0, spi.listGetFinalize(&list, reference));
}

TEST_F(FakeReplicatedListTest, plantedItemsAreCutOrFilledToTheSize)
{
    lists.plant("Alarms", "a", itemSize);
    lists.plant("Alarms", "0123456789");

    EXPECT_THAT(lists.bytes("Alarms"), ElementsAre(std::string("a\0\0\0\0\0\0\0", 8), "01234567"));
    EXPECT_THAT(lists.items("Alarms"), ElementsAre("a", "01234567"));
    EXPECT_THAT(journal.take(), IsEmpty());
}

TEST_F(FakeReplicatedListTest, unknownListsHaveNoItems)
{
    EXPECT_THAT(lists.items("Unknown"), IsEmpty());
    EXPECT_THAT(lists.names("Unknown"), IsEmpty());
}

// --- Failures by plan

TEST_F(FakeReplicatedListTest, theNextCallsFailAndChangeNothing)
{
    spi.listCreate(&list, itemSize);
    lists.failNext("listPushBack", -10, 2);

    EXPECT_EQ(-10, push("a"));
    EXPECT_EQ(-10, push("b"));
    EXPECT_EQ(0, push("c"));

    EXPECT_THAT(lists.items("Alarms"), ElementsAre("c"));
    EXPECT_EQ(3U, lists.calls("listPushBack"));
    EXPECT_EQ(0U, lists.calls("listDelete"));
}

TEST_F(FakeReplicatedListTest, theNthCallFails)
{
    spi.listCreate(&list, itemSize);
    push("before the plan");
    lists.failAt("listPushBack", 2, -1);

    EXPECT_EQ(0, push("a"));
    EXPECT_EQ(-1, push("b"));
    EXPECT_EQ(0, push("c"));
}

TEST_F(FakeReplicatedListTest, allCallsFailUntilTheyHeal)
{
    spi.listCreate(&list, itemSize);
    lists.failAlways("listPushBack", -1);
    EXPECT_EQ(-1, push("a"));
    EXPECT_EQ(-1, push("b"));

    lists.heal();
    EXPECT_EQ(0, push("c"));
}

TEST_F(FakeReplicatedListTest, aPlanNamesWholeWordsOfTheCall)
{
    const ZorvMwSpiListNameT longer = named("Alarms2");
    lists.failAlways("listCreate Alarms", -1);
    lists.failAlways("list", -5);

    EXPECT_EQ(0, spi.listCreate(&longer, itemSize));
    EXPECT_EQ(-1, spi.listCreate(&list, itemSize));
}

TEST_F(FakeReplicatedListTest, plansAreKeptApart)
{
    spi.listCreate(&list, itemSize);
    lists.failAt("listPushBack", 2, -1);
    lists.failNext("listPushBack Alarms", -10);

    EXPECT_EQ(-10, push("a"));
    EXPECT_EQ(-1, push("b"));
    EXPECT_EQ(0, push("c"));
}

}  // namespace
}  // namespace ZorvFakes
