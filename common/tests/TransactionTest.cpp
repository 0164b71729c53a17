#include "Transaction.hpp"

#include "CommonTest.hpp"
#include "ZorvException.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace Zorv {
namespace {

using TransactionTest = CommonTest;

std::string constructionFailure()
{
    try {
        const Transaction transaction(ZORV_LOCK_POLICY_OPTIMISTIC, 60);
    } catch (const ZorvException& e) {
        return e.what();
    }
    return "";
}

TEST_F(TransactionTest, beginsWithTheGivenPolicyAndTimeout)
{
    const Transaction transaction(ZORV_LOCK_POLICY_OPTIMISTIC, 60);

    EXPECT_TRUE(middleware.transactions.isOpen(transaction.getHandle()));
    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0"));
}

TEST_F(TransactionTest, isAbortedAtTheEndOfItsScope)
{
    {
        const Transaction transaction(ZORV_LOCK_POLICY_NONE, 5);
    }

    EXPECT_THAT(journal(), ElementsAre("createTransaction 0 5 -> 0", "abortTransaction -> 0"));
    EXPECT_EQ(1U, middleware.transactions.aborted());
}

TEST_F(TransactionTest, isNotAbortedAfterItsCommit)
{
    {
        Transaction transaction(ZORV_LOCK_POLICY_NONE, 5);
        EXPECT_EQ(0, transaction.commit());
    }

    EXPECT_THAT(journal(), ElementsAre("createTransaction 0 5 -> 0", "commitTransaction -> 0"));
    EXPECT_EQ(1U, middleware.transactions.committed());
}

TEST_F(TransactionTest, aFailedCommitAnswersWithTheCodeAndEndsToo)
{
    middleware.transactions.failNext("commitTransaction", ZORV_RETURN_FAILED);
    {
        Transaction transaction(ZORV_LOCK_POLICY_NONE, 5);
        EXPECT_EQ(-1, transaction.commit());
    }

    EXPECT_THAT(journal(), ElementsAre("createTransaction 0 5 -> 0", "commitTransaction -> -1"));
    EXPECT_EQ(1U, middleware.transactions.aborted());
}

TEST_F(TransactionTest, aFailingAbortIsSurvived)
{
    middleware.transactions.failNext("abortTransaction", ZORV_RETURN_NOT_FOUND);
    {
        const Transaction transaction(ZORV_LOCK_POLICY_NONE, 5);
    }

    EXPECT_THAT(journal(), ElementsAre("createTransaction 0 5 -> 0", "abortTransaction -> -2"));
}

TEST_F(TransactionTest, aRefusedBeginThrows)
{
    middleware.transactions.failNext("createTransaction", ZORV_RETURN_NO_RESOURCES);

    EXPECT_EQ("Failed to create transaction, reason (-10 )!", constructionFailure());
    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> -10"));
}

TEST_F(TransactionTest, aMissingServiceThrows)
{
    middleware.portal.withdraw("ZorvOamSpiTransactionMaster");

    EXPECT_EQ("Transaction service is missing", constructionFailure());
    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace Zorv
