// What transactions do to each other, and what time does to them.

#include <gmock/gmock.h>

#include <algorithm>

#include "Gate.hpp"
#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Optimistic transactions

TEST_P(FullObjectContractTest, aCommitFailsWhenAnotherOneChangedAnObjectThatItWrites)
{
    const unsigned long first = begin();
    const unsigned long second = begin();
    set(first, "Node=1,Port=1", 1);
    set(second, "Node=1,Port=1", 2);
    set(second, "Node=1,Port=2", 2);

    EXPECT_EQ(0, commit(first));
    EXPECT_EQ(-1, commit(second));

    EXPECT_EQ("uint32 1", committed("Node=1,Port=1", "number"));
    EXPECT_EQ("uint32 9", committed("Node=1,Port=2", "number")) << "all or nothing";
    EXPECT_EQ(-2, abort(second));
}

TEST_P(FullObjectContractTest, aConflictAbortsTheParticipants)
{
    const unsigned long loser = beginWith(1);
    set(loser, "Node=1,Port=1", 1);
    const unsigned long winner = begin();
    set(winner, "Node=1,Port=1", 2);
    commit(winner);

    EXPECT_EQ(-1, commit(loser));

    const auto lines = heard(loser);
    EXPECT_THAT(lines, testing::IsSupersetOf({"r1 abort", "r1 finish"}));
    EXPECT_EQ(0, std::count(lines.begin(), lines.end(), "r1 commit"));
}

TEST_P(FullObjectContractTest, anotherAttributeOfTheSameObjectIsAConflictToo)
{
    const unsigned long first = begin();
    const unsigned long second = begin();
    set(first, "Node=1", 1);
    set(second, "Node=1", "names", MoValue::text("x"));

    EXPECT_EQ(0, commit(first));
    EXPECT_EQ(-1, commit(second));
}

TEST_P(FullObjectContractTest, aWriteAndADeleteOfAnObjectAreAConflict)
{
    const unsigned long writer = begin();
    const unsigned long deleter = begin();
    set(writer, "Node=1,Port=1", 1);
    remove(deleter, "Node=1,Port=1");

    EXPECT_EQ(0, commit(deleter));
    EXPECT_EQ(-1, commit(writer));

    EXPECT_THAT(committedPorts(), ElementsAre("Port=2"));
}

TEST_P(FullObjectContractTest, twoCreationsOfAnObjectAreAConflict)
{
    const unsigned long first = begin();
    const unsigned long second = begin();
    EXPECT_EQ(0, create(first, "Node=1", "Port", "3"));
    EXPECT_EQ(0, create(second, "Node=1", "Port", "3"));

    EXPECT_EQ(0, commit(first));
    EXPECT_EQ(-1, commit(second));
}

TEST_P(FullObjectContractTest, writesToDifferentObjectsAreNoConflict)
{
    const unsigned long first = begin();
    const unsigned long second = begin();
    set(first, "Node=1,Port=1", 1);
    set(second, "Node=1,Port=2", 2);

    EXPECT_EQ(0, commit(first));
    EXPECT_EQ(0, commit(second));

    EXPECT_EQ("uint32 1", committed("Node=1,Port=1", "number"));
    EXPECT_EQ("uint32 2", committed("Node=1,Port=2", "number"));
}

TEST_P(FullObjectContractTest, aReadIsNoConflict)
{
    const unsigned long reader = begin();
    get(reader, "Node=1,Port=1", "number");
    set(reader, "Node=1,Port=2", 2);
    const unsigned long writer = begin();
    set(writer, "Node=1,Port=1", 1);

    EXPECT_EQ(0, commit(writer));
    EXPECT_EQ(0, commit(reader));
}

TEST_P(FullObjectContractTest, aTransactionKeepsSeeingWhatItHasSeen)
{
    const unsigned long reader = begin();
    get(reader, "Node=1,Port=1", "number");
    const unsigned long writer = begin();
    set(writer, "Node=1,Port=1", 1);
    remove(writer, "Node=1,Port=2");
    commit(writer);

    EXPECT_EQ("uint32 7", get(reader, "Node=1,Port=1", "number"));
    EXPECT_THAT(ports(reader), ElementsAre("Port=1", "Port=2"));
}

// --- Time

TEST_P(FullObjectContractTest, aTransactionIsAbortedWhenItsTimeIsUp)
{
    const unsigned long tx = begin(ZORV_LOCK_POLICY_OPTIMISTIC, 60);
    takePart(tx, 1);
    set(tx, "Node=1,Port=1", 42);

    full.passTime(std::chrono::seconds(60));

    EXPECT_THAT(heard(tx), ElementsAre("r1 abort", "r1 finish"));
    EXPECT_EQ(-2, set(tx, "Node=1,Port=1", 43));
    EXPECT_EQ(-2, takePart(tx, 2));
    EXPECT_EQ(-2, commit(tx));
    EXPECT_EQ("uint32 7", committed("Node=1,Port=1", "number"));
}

TEST_P(FullObjectContractTest, aTransactionLivesUntilItsTimeIsUp)
{
    const unsigned long tx = begin(ZORV_LOCK_POLICY_OPTIMISTIC, 60);
    takePart(tx, 1);
    set(tx, "Node=1,Port=1", 42);

    full.passTime(std::chrono::seconds(50));
    EXPECT_THAT(heard(tx), IsEmpty());

    EXPECT_EQ(0, commit(tx));
    EXPECT_EQ("uint32 42", committed("Node=1,Port=1", "number"));
}

TEST_P(FullObjectContractTest, eachTransactionHasItsOwnTime)
{
    const unsigned long lasting = begin(ZORV_LOCK_POLICY_NONE, 86400);
    const unsigned long brief = begin(ZORV_LOCK_POLICY_NONE, 1);

    full.passTime(std::chrono::seconds(1));

    EXPECT_EQ(-2, commit(brief));
    EXPECT_EQ(0, commit(lasting));
}

TEST_P(FullObjectContractTest, nobodyHasToAskForTheAbort)
{
    Gate aborted;
    reaction = [&aborted](int, const std::string& call) {
        if (call == "finish") {
            aborted.open();
        }
        return 0;
    };
    full.startTimer();
    const unsigned long tx = begin(ZORV_LOCK_POLICY_NONE, 1);
    takePart(tx, 1);

    aborted.pass();

    EXPECT_THAT(heard(tx), ElementsAre("r1 abort", "r1 finish"));
}

}  // namespace ZorvTest
