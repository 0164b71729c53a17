#include <gmock/gmock.h>

#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Owners

TEST_P(TransactionContractTest, handlesAreNeverZeroAndAllDifferent)
{
    const unsigned long first = begin();
    const unsigned long second = begin();
    commit(first);
    const unsigned long third = begin();

    EXPECT_NE(0UL, first);
    EXPECT_NE(0UL, second);
    EXPECT_NE(0UL, third);
    EXPECT_NE(first, second);
    EXPECT_NE(second, third);
    EXPECT_NE(first, third);
}

TEST_P(TransactionContractTest, wrongArgumentsAreRefused)
{
    unsigned long tx = 0;

    EXPECT_EQ(-1, master->createTransaction(ZORV_LOCK_POLICY_OPTIMISTIC, 0, &tx));
    EXPECT_EQ(-1, master->createTransaction(ZORV_LOCK_POLICY_OPTIMISTIC, 86401, &tx));
    EXPECT_EQ(-1, master->createTransaction(-1, 60, &tx));
    EXPECT_EQ(-1, master->createTransaction(2, 60, &tx));

    EXPECT_EQ(0UL, tx);
}

TEST_P(TransactionContractTest, theBoundsOfTheTimeoutAreTaken)
{
    EXPECT_EQ(0, commit(begin(ZORV_LOCK_POLICY_NONE, 1)));
    EXPECT_EQ(0, commit(begin(ZORV_LOCK_POLICY_OPTIMISTIC, 86400)));
}

TEST_P(TransactionContractTest, aTransactionEndsOnce)
{
    const unsigned long tx = begin();
    const unsigned long other = begin();

    EXPECT_EQ(0, commit(tx));
    EXPECT_EQ(0, abort(other));

    for (const unsigned long ended : {tx, other, other + 1000, 0UL}) {
        EXPECT_EQ(-2, commit(ended));
        EXPECT_EQ(-2, abort(ended));
        EXPECT_EQ(-2, takePart(ended, 1));
    }
    EXPECT_THAT(journal.lines(), IsEmpty());
}

// --- Participants

TEST_P(TransactionContractTest, allPrepareThenAllCommitThenAllFinish)
{
    const unsigned long tx = beginWith(2);

    EXPECT_EQ(0, commit(tx));

    EXPECT_THAT(heard(tx), ElementsAre("r1 prepare", "r2 prepare", "r1 commit", "r2 commit", "r1 finish", "r2 finish"));
}

TEST_P(TransactionContractTest, allAbortThenAllFinish)
{
    const unsigned long tx = beginWith(2);

    EXPECT_EQ(0, abort(tx));

    EXPECT_THAT(heard(tx), ElementsAre("r1 abort", "r2 abort", "r1 finish", "r2 finish"));
}

TEST_P(TransactionContractTest, oneThatCannotPrepareMakesAllAbort)
{
    reaction = [](int number, const std::string& call) { return number == 2 && call == "prepare" ? -10 : 0; };
    const unsigned long tx = beginWith(3);
    set(tx, "Node=1,Port=1", 42);

    EXPECT_EQ(-1, commit(tx));

    EXPECT_THAT(heard(tx), ElementsAre("r1 prepare", "r2 prepare", "r1 abort", "r2 abort", "r3 abort", "r1 finish",
                                       "r2 finish", "r3 finish"));
    EXPECT_EQ("uint32 7", committed("Node=1,Port=1", "number"));
    EXPECT_EQ(-2, abort(tx));
}

TEST_P(TransactionContractTest, whoeverTakesPartAgainStillTakesPartOnce)
{
    const unsigned long tx = beginWith(1);

    EXPECT_EQ(0, takePart(tx, 1));
    commit(tx);

    EXPECT_THAT(heard(tx), ElementsAre("r1 prepare", "r1 commit", "r1 finish"));
}

TEST_P(TransactionContractTest, aParticipantHearsOnlyOfItsTransactions)
{
    const unsigned long tx = beginWith(1);
    const unsigned long other = begin();

    commit(other);
    EXPECT_THAT(heard(other), IsEmpty());

    takePart(begin(), 1);
    abort(tx);
    EXPECT_THAT(heard(tx), ElementsAre("r1 abort", "r1 finish"));
}

TEST_P(TransactionContractTest, aParticipantMayTakePartInSeveralTransactionsAtOnce)
{
    const unsigned long first = beginWith(1);
    const unsigned long second = beginWith(1);

    commit(second);
    EXPECT_THAT(heard(second), ElementsAre("r1 prepare", "r1 commit", "r1 finish"));

    abort(first);
    EXPECT_THAT(heard(first), ElementsAre("r1 abort", "r1 finish"));
}

TEST_P(TransactionContractTest, nobodyTakesPartInATransactionThatIsEnding)
{
    std::vector<ZorvReturnT> answers;
    unsigned long tx = 0;
    reaction = [&](int, const std::string&) {
        answers.push_back(takePart(tx, 2));
        return 0;
    };

    tx = beginWith(1);
    commit(tx);
    EXPECT_THAT(answers, ElementsAre(-1, -1, -1));

    answers.clear();
    tx = beginWith(1);
    abort(tx);
    EXPECT_THAT(answers, ElementsAre(-1, -1));
}

TEST_P(TransactionContractTest, aParticipantMayUseOtherTransactionsWhileOneEnds)
{
    reaction = [this](int, const std::string&) {
        const unsigned long other = begin(ZORV_LOCK_POLICY_NONE);
        EXPECT_EQ(0, set(other, "Node=1,Port=2", 5));
        return commit(other);
    };
    const unsigned long tx = beginWith(1);
    set(tx, "Node=1,Port=1", 42);

    EXPECT_EQ(0, commit(tx));

    EXPECT_THAT(heard(tx), ElementsAre("r1 prepare", "r1 commit", "r1 finish"));
    EXPECT_EQ("uint32 42", committed("Node=1,Port=1", "number"));
    EXPECT_EQ("uint32 5", committed("Node=1,Port=2", "number"));
}

// --- Bounds and bad participants

TEST_P(FullObjectContractTest, tooManyTransactionsAreRefusedUntilOneHasEnded)
{
    const unsigned long first = begin();
    for (std::size_t number = 1; number < full.transactionBound; ++number) {
        begin();
    }
    unsigned long tx = 0;

    EXPECT_EQ(-10, master->createTransaction(ZORV_LOCK_POLICY_NONE, 60, &tx));
    EXPECT_EQ(0UL, tx);

    commit(first);
    EXPECT_NE(0UL, begin());
}

TEST_P(FullObjectContractTest, aParticipantThatThrowsInPrepareHasRefused)
{
    reaction = [](int number, const std::string& call) {
        return number == 1 && call == "prepare" ? throw std::runtime_error("no memory") : 0;
    };
    const unsigned long tx = beginWith(2);
    set(tx, "Node=1,Port=1", 42);

    EXPECT_EQ(-1, commit(tx));

    EXPECT_THAT(heard(tx), ElementsAre("r1 prepare", "r1 abort", "r2 abort", "r1 finish", "r2 finish"));
    EXPECT_EQ("uint32 7", committed("Node=1,Port=1", "number"));
}

TEST_P(FullObjectContractTest, aParticipantThatThrowsLaterStopsNobody)
{
    reaction = [](int number, const std::string& call) { return number == 1 && call != "prepare" ? throw 7 : 0; };
    const unsigned long tx = beginWith(2);

    EXPECT_EQ(0, commit(tx));
    EXPECT_THAT(heard(tx), ElementsAre("r1 prepare", "r2 prepare", "r1 commit", "r2 commit", "r1 finish", "r2 finish"));

    const unsigned long other = beginWith(2);
    EXPECT_EQ(0, abort(other));
    EXPECT_THAT(heard(other), ElementsAre("r1 abort", "r2 abort", "r1 finish", "r2 finish"));
}

}  // namespace ZorvTest
