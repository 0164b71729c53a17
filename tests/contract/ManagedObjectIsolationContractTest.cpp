// Who sees what, and when.

#include <gmock/gmock.h>

#include <thread>

#include "ManagedObjectContract.hpp"

namespace ZorvTest {

using testing::ElementsAre;

TEST_P(ManagedObjectContractTest, whatIsNotYetCommittedIsSeenByNobodyElse)
{
    const unsigned long mine = begin();
    const unsigned long other = begin();
    set(mine, "Node=1,Port=1", 42);
    create(mine, "Node=1", "Port", "3");
    remove(mine, "Node=1,Port=2");

    EXPECT_EQ("uint32 42", get(mine, "Node=1,Port=1", "number"));
    EXPECT_THAT(ports(mine), ElementsAre("Port=1", "Port=3"));

    for (const unsigned long tx : {other, begin()}) {
        EXPECT_EQ("uint32 7", get(tx, "Node=1,Port=1", "number"));
        EXPECT_THAT(ports(tx), ElementsAre("Port=1", "Port=2"));
        EXPECT_EQ("2", count(tx, "Node=1", "Port"));
        EXPECT_EQ("false", exists(tx, "Node=1,Port=3"));
        EXPECT_EQ("true", exists(tx, "Node=1,Port=2"));
    }
}

TEST_P(ManagedObjectContractTest, whatIsCommittedIsSeenByAllThatBeginAfterwards)
{
    const unsigned long tx = begin();
    set(tx, "Node=1,Port=1", 42);
    create(tx, "Node=1", "Port", "3");
    remove(tx, "Node=1,Port=2");

    EXPECT_EQ(0, commit(tx));

    EXPECT_EQ("uint32 42", committed("Node=1,Port=1", "number"));
    EXPECT_THAT(committedPorts(), ElementsAre("Port=1", "Port=3"));
}

TEST_P(ManagedObjectContractTest, whatIsAbortedIsForgotten)
{
    const unsigned long tx = begin();
    set(tx, "Node=1,Port=1", 42);
    create(tx, "Node=1", "Port", "3");
    remove(tx, "Node=1,Port=2");

    EXPECT_EQ(0, abort(tx));

    EXPECT_EQ("uint32 7", committed("Node=1,Port=1", "number"));
    EXPECT_THAT(committedPorts(), ElementsAre("Port=1", "Port=2"));
}

TEST_P(ManagedObjectContractTest, withoutALockPolicyTheLastCommitWins)
{
    const unsigned long first = begin(ZORV_LOCK_POLICY_NONE);
    const unsigned long second = begin(ZORV_LOCK_POLICY_NONE);
    set(first, "Node=1,Port=1", 1);
    set(second, "Node=1,Port=1", 2);

    EXPECT_EQ(0, commit(second));
    EXPECT_EQ(0, commit(first));

    EXPECT_EQ("uint32 1", committed("Node=1,Port=1", "number"));
}

TEST_P(ManagedObjectContractTest, nothingIsReadOrWrittenInATransactionThatIsNotThere)
{
    const unsigned long ended = begin();
    commit(ended);
    std::uint64_t iterator = 0;

    for (const unsigned long tx : {ended, ended + 1000, 0UL}) {
        EXPECT_EQ("-2", get(tx, "Node=1", "number"));
        EXPECT_THAT(get(tx, "Node=1", NamesT{"number"}), ElementsAre("-2"));
        EXPECT_EQ("-2", exists(tx, "Node=1"));
        EXPECT_EQ("-2", count(tx, "Node=1", "Port"));
        EXPECT_EQ(-2, objects->newMoIterator(tx, "Node=1", "Port", &iterator));
        EXPECT_EQ(-2, set(tx, "Node=1", 1));
        EXPECT_EQ(-2, create(tx, "Node=1", "Port", "3"));
        EXPECT_EQ(-2, remove(tx, "Node=1"));
    }
}

// --- Several at once

TEST_P(ManagedObjectContractTest, transactionsOfSeveralThreadsEachGetWhatTheyWrote)
{
    std::vector<std::thread> threads;
    for (std::uint32_t number = 11; number <= 14; ++number) {
        threads.emplace_back([this, number] {
            const std::string key = std::to_string(number);
            const unsigned long tx = begin();
            EXPECT_EQ(0, create(tx, "Node=1", "Port", key, {{"number", MoValue::uint32(number)}}));
            for (int round = 0; round < 20; ++round) {
                EXPECT_EQ("uint32 " + key, get(tx, "Node=1,Port=" + key, "number"));
                EXPECT_EQ("3", count(tx, "Node=1", "Port"));
                EXPECT_EQ("uint32 7", get(tx, "Node=1,Port=1", "number"));
            }
            EXPECT_EQ(0, abort(tx));
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_THAT(committedPorts(), ElementsAre("Port=1", "Port=2"));
}

TEST_P(ManagedObjectContractTest, commitsOfSeveralThreadsAllTakeEffect)
{
    std::vector<std::thread> threads;
    for (int first = 10; first < 50; first += 10) {
        threads.emplace_back([this, first] {
            for (int number = first; number < first + 10; ++number) {
                const unsigned long tx = begin();
                EXPECT_EQ(0, create(tx, "Node=1", "Port", std::to_string(number)));
                EXPECT_EQ(0, commit(tx));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(42U, committedPorts().size());
}

}  // namespace ZorvTest
