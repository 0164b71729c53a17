#include <gmock/gmock.h>

#include "ReplicatedListContract.hpp"

namespace ZorvTest {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(ReplicatedListContractTest, theFrontOfAnEmptyListIsANullReferenceThatIsFinalized)
{
    create();
    int anywhere = 0;
    ZorvMwSpiListRefT ref = reinterpret_cast<ZorvMwSpiListRefT>(&anywhere);

    EXPECT_EQ(0, spi->listGetFrontRef(&list, &ref));

    EXPECT_EQ(nullptr, ref);
    EXPECT_EQ(0, spi->listGetFinalize(&list, ref));
}

TEST_P(ReplicatedListContractTest, aWalkMeetsEachItemWithTheNameThatItGotWhenItWasPushed)
{
    const auto names = create({1, 2});
    Walk all = walk();

    EXPECT_EQ(0, all.next());
    EXPECT_EQ(names[0].value, all.name());
    EXPECT_EQ(names[0].length, all.itemName.length);
    EXPECT_EQ(1U, all.value);
    EXPECT_EQ(0, all.next());
    EXPECT_EQ(names[1].value, all.name());
    EXPECT_EQ(2U, all.value);

    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, theReferenceIsNullAfterTheLastItem)
{
    create({1, 2});
    Walk all = walk();

    all.next();
    EXPECT_NE(nullptr, all.ref);
    all.next();
    EXPECT_EQ(nullptr, all.ref);

    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, aStepBehindTheLastItemFindsNothingAndChangesNothing)
{
    const auto names = create({1});
    Walk all = walk();
    all.next();

    EXPECT_EQ(-2, all.next());

    EXPECT_EQ(nullptr, all.ref);
    EXPECT_EQ(names[0].value, all.name());
    EXPECT_EQ(1U, all.value);
    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, aStepCopiesTheItemAsItIsThen)
{
    const auto names = create({1, 2});
    Walk all = walk();

    replace(names[0], 10);
    all.next();
    replace(names[0], 11);

    EXPECT_EQ(10U, all.value);
    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, aWalkPassesOverItemsErasedMeanwhile)
{
    const auto names = create({1, 2, 3, 4});
    Walk all = walk();

    erase(names[0]);
    erase(names[2]);

    EXPECT_THAT(all.rest(), ElementsAre(2, 4));
    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, aWalkWhoseRemainingItemsWereErasedEnds)
{
    const auto names = create({1, 2});
    Walk all = walk();
    all.next();
    erase(names[1]);

    EXPECT_EQ(-2, all.next());

    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, theItemJustMetMayBeErased)
{
    const auto names = create({1, 2, 3});
    Walk all = walk();

    for (const auto& name : names) {
        EXPECT_EQ(0, all.next());
        EXPECT_EQ(0, erase(name));
    }

    EXPECT_EQ(0, all.finalize());
    EXPECT_THAT(items(), IsEmpty());
}

TEST_P(ReplicatedListContractTest, itemsAppendedMeanwhileAreMetAtTheEndOrNotAtAll)
{
    create({1, 2});
    Walk all = walk();
    all.next();

    push(3);

    EXPECT_THAT(all.rest(), AnyOf(ElementsAre(2), ElementsAre(2, 3)));
    EXPECT_EQ(nullptr, all.ref);
    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, walksDoNotDisturbEachOther)
{
    create({1, 2, 3});
    Walk first = walk();
    first.next();
    Walk second = walk();
    second.next();
    second.next();

    EXPECT_THAT(first.rest(), ElementsAre(2, 3));
    EXPECT_EQ(0, first.finalize());

    EXPECT_THAT(second.rest(), ElementsAre(3));
    EXPECT_EQ(0, second.finalize());
}

TEST_P(ReplicatedListContractTest, aWalkMayBeGivenUpHalfWay)
{
    create({1, 2});
    Walk some = walk();
    some.next();

    EXPECT_EQ(0, some.finalize());

    EXPECT_THAT(items(), ElementsAre(1, 2));
}

TEST_P(ReplicatedListContractTest, aReferenceIsFinalizedOnce)
{
    create({1});
    Walk some = walk();

    EXPECT_EQ(0, some.finalize());
    EXPECT_EQ(-1, some.finalize());
}

TEST_P(ReplicatedListContractTest, aFinalizedWalkDoesNotGoOn)
{
    create({1});
    Walk some = walk();
    some.finalize();

    EXPECT_NE(0, some.next());

    EXPECT_EQ(0, some.itemName.length);
    EXPECT_EQ(0U, some.value);
}

TEST_P(ReplicatedListContractTest, aReferenceBelongsToItsList)
{
    create({1});
    spi->listCreate(&otherList, sizeof(ItemT));
    Walk all = walk();

    EXPECT_NE(0, spi->listGetNextItemFront(&otherList, &all.ref, &all.itemName, &all.value));
    EXPECT_EQ(-1, spi->listGetFinalize(&otherList, all.ref));

    EXPECT_THAT(all.rest(), ElementsAre(1));
    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, aWalkEndsWithItsListAndStillWantsItsFinalize)
{
    create({1});
    Walk all = walk();

    spi->listDelete(&list);

    EXPECT_NE(0, all.next());
    EXPECT_EQ(0, all.finalize());
}

TEST_P(ReplicatedListContractTest, aWalkDoesNotGoOnInANewListOfTheSameName)
{
    create({1});
    Walk all = walk();
    spi->listDelete(&list);
    create({2});

    EXPECT_NE(0, all.next());

    EXPECT_EQ(0, all.itemName.length);
    EXPECT_EQ(0, all.finalize());
    EXPECT_THAT(items(), ElementsAre(2));
}

TEST_P(ReplicatedListContractTest, aNewListTellsReferencesOfItsPredecessorApart)
{
    create({1});
    Walk old = walk();
    spi->listDelete(&list);
    create({2});
    Walk fresh = walk();

    EXPECT_EQ(0, old.finalize());

    EXPECT_THAT(fresh.rest(), ElementsAre(2));
    EXPECT_EQ(0, fresh.finalize());
}

}  // namespace ZorvTest
