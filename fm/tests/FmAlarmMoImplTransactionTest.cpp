/// Snapshots, results and iterators from the beginning of a transaction to its end.
#include "MoImplTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

class FmAlarmMoImplTransactionTest : public MoImplTest {
protected:
    FmAlarmMoImplTransactionTest()
    {
        alarms.set({alarmWithId(6, "six"), alarmWithId(17, "seventeen"), alarmWithId(2, "two")});
    }
};

// --- Snapshots

TEST_F(FmAlarmMoImplTransactionTest, aTransactionReadsFromOneSnapshot)
{
    EXPECT_EQ("9 'six'", attribute("additionalText"));
    alarms.set({alarmWithId(17, "changed"), alarmWithId(99)});

    EXPECT_EQ("9 'six'", attribute("additionalText"));
    EXPECT_EQ("9 'seventeen'", attribute("additionalText", "FmAlarm=17"));
    EXPECT_FALSE(exists("FmAlarm=99"));
    EXPECT_EQ(1, alarms.timesRead());
}

TEST_F(FmAlarmMoImplTransactionTest, anExistenceCheckTakesTheSnapshotToo)
{
    EXPECT_TRUE(exists("FmAlarm=6"));
    alarms.set({});

    EXPECT_TRUE(exists("FmAlarm=6"));
    EXPECT_EQ(1, alarms.timesRead());
}

TEST_F(FmAlarmMoImplTransactionTest, everyNewIteratorRenewsTheSnapshot)
{
    EXPECT_TRUE(exists("FmAlarm=6"));
    alarms.set({alarmWithId(99)});

    const std::uint64_t iterator = newIterator();

    EXPECT_THAT(rest(iterator), ElementsAre("FmAlarm=99"));
    EXPECT_FALSE(exists("FmAlarm=6"));
    EXPECT_EQ("9 '99'", attribute("fmAlarmId", "FmAlarm=99"));
    EXPECT_EQ(2, alarms.timesRead());
    newIterator();
    EXPECT_EQ(3, alarms.timesRead());
}

TEST_F(FmAlarmMoImplTransactionTest, anOlderIteratorGoesOnInTheRenewedSnapshot)
{
    const std::uint64_t older = newIterator();
    next(older);
    alarms.set({alarmWithId(7), alarmWithId(8)});
    newIterator();

    EXPECT_THAT(rest(older), ElementsAre("FmAlarm=8"));
}

TEST_F(FmAlarmMoImplTransactionTest, aRenewalWithFewerAlarmsEndsAnOlderIterator)
{
    const std::uint64_t older = newIterator();
    next(older);
    next(older);
    alarms.set({alarmWithId(7)});
    newIterator();

    EXPECT_EQ("-2", next(older));
}

TEST_F(FmAlarmMoImplTransactionTest, everyTransactionHasItsOwnSnapshot)
{
    EXPECT_TRUE(exists("FmAlarm=6", 1));
    alarms.set({alarmWithId(7)});

    EXPECT_FALSE(exists("FmAlarm=6", 2));
    EXPECT_TRUE(exists("FmAlarm=7", 2));
    EXPECT_TRUE(exists("FmAlarm=6", 1));
    newIterator(2);
    EXPECT_TRUE(exists("FmAlarm=6", 1));
}

TEST_F(FmAlarmMoImplTransactionTest, refusedAndFailedCallsTakeNoSnapshot)
{
    std::uint64_t count = 0;
    impl.join(1);
    impl.prepare(1);
    impl.commit(1);
    impl.countMoChildren(1, "FmAlarm=6", "", &count);
    impl.deleteMo(1, "FmAlarm=6");

    EXPECT_EQ(0, alarms.timesRead());
}

// --- Results

TEST_F(FmAlarmMoImplTransactionTest, resultsStayValidWhenTheSnapshotIsRenewed)
{
    const char* const names[] = {"additionalText", "source", "additionalInfo", "lastEventTime", nullptr};
    YaltOamSpiMoAttributesResult_3T results{};
    const char* name = nullptr;
    ASSERT_EQ(0, impl.nextMo(newIterator(), &name));
    ASSERT_EQ(0, impl.getMoAttributes(1, "FmAlarm=6", names, &results));

    for (int renewal = 0; renewal < 10; ++renewal) {
        alarms.set({alarmWithId(99, std::string(1000, 'x'))});
        newIterator();
    }

    EXPECT_STREQ("FmAlarm=6", name);
    EXPECT_EQ("9 'six'", shown(results.attributes[0]));
    EXPECT_EQ("9 'ManagedElement=1,Slot=2,Port=4'", shown(results.attributes[1]));
    EXPECT_EQ("11 [{name='slot' value='two'}, {name='port' value='four'}]", shown(results.attributes[2]));
    EXPECT_EQ("9 '2023-11-14T22:13:20.123+00:00'", shown(results.attributes[3]));
}

TEST_F(FmAlarmMoImplTransactionTest, resultsStayValidWhenTheyAreReleasedAndOtherTransactionsEnd)
{
    YaltOamSpiMoAttributeResult_3T result{};
    ASSERT_EQ(0, impl.getMoAttribute(1, "FmAlarm=6", "additionalText", &result));
    const YaltOamSpiMoAttribute_3T* const kept = result.attribute;
    EXPECT_EQ(0, result.releaseAttrResultCB(&result));
    attribute("additionalText", "FmAlarm=6", 2);

    impl.finish(2);

    EXPECT_EQ("9 'six'", shown(*kept));
}

// --- The end of a transaction

TEST_F(FmAlarmMoImplTransactionTest, finishAndAbortDropSnapshotAndIterators)
{
    for (const auto end : {resource.getInterface().finish, resource.getInterface().abort}) {
        alarms.set({alarmWithId(6)});
        const std::uint64_t iterator = newIterator();
        alarms.set({alarmWithId(7)});

        EXPECT_EQ(0, end(1));

        EXPECT_EQ("-2", next(iterator));
        EXPECT_FALSE(exists("FmAlarm=6"));
        EXPECT_TRUE(exists("FmAlarm=7"));
        impl.finish(1);
    }
}

TEST_F(FmAlarmMoImplTransactionTest, prepareAndCommitKeepSnapshotAndIterators)
{
    const std::uint64_t iterator = newIterator();

    EXPECT_EQ(0, impl.prepare(1));
    EXPECT_EQ(0, impl.commit(1));

    EXPECT_EQ("FmAlarm=6", next(iterator));
    EXPECT_EQ(1, alarms.timesRead());
}

TEST_F(FmAlarmMoImplTransactionTest, theEndOfOneTransactionLeavesTheOthersAlone)
{
    const std::uint64_t iterator = newIterator(1);
    newIterator(2);
    alarms.set({});

    impl.finish(2);

    EXPECT_EQ("FmAlarm=6", next(iterator));
    EXPECT_TRUE(exists("FmAlarm=6", 1));
}

TEST_F(FmAlarmMoImplTransactionTest, theEndOfAnUnknownTransactionIsNoFailure)
{
    EXPECT_EQ(0, impl.abort(4711));
    EXPECT_EQ(0, impl.finish(4711));
}

// --- Transactional resource

TEST_F(FmAlarmMoImplTransactionTest, joinRegistersTheResourceAsParticipant)
{
    const unsigned long txHandle = middleware.transactions.open();

    EXPECT_EQ(0, impl.join(txHandle));
    EXPECT_TRUE(exists("FmAlarm=6", txHandle));
    EXPECT_EQ(0, middleware.transactions.commitTransaction(txHandle));

    EXPECT_THAT(journal(), ElementsAre("registerParticipant -> 0", "commitTransaction -> 0"));
    alarms.set({});
    EXPECT_FALSE(exists("FmAlarm=6", txHandle));
}

TEST_F(FmAlarmMoImplTransactionTest, aRefusedRegistrationIsTheResultOfJoin)
{
    EXPECT_EQ(-2, impl.join(4711));

    EXPECT_THAT(journal(), ElementsAre("registerParticipant -> -2", "log 3 Failed to registerParticipant"));
}

TEST_F(FmAlarmMoImplTransactionTest, withoutATransactionServiceJoinFails)
{
    impl.setTxService(nullptr);

    EXPECT_EQ(-1, impl.join(middleware.transactions.open()));

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to registerParticipant"));
}

TEST_F(FmAlarmMoImplTransactionTest, everyOperationOfTheResourceIsTracedUnderItsName)
{
    const auto traced = [this] { return middleware.trace.last().function + middleware.trace.last().text; };

    impl.join(middleware.transactions.open());
    EXPECT_EQ("FmAlarmMoImpl.join >> txHandle='1'", traced());
    impl.prepare(2);
    EXPECT_EQ("FmAlarmMoImpl.prepare >> txHandle='2'", traced());
    impl.commit(3);
    EXPECT_EQ("FmAlarmMoImpl.commit >> txHandle='3'", traced());
    impl.abort(4);
    EXPECT_EQ("FmAlarmMoImpl.abort >> txHandle='4'", traced());
    impl.finish(5);
    EXPECT_EQ("FmAlarmMoImpl.finish >> txHandle='5'", traced());
    EXPECT_EQ("FM", middleware.trace.last().group);
    EXPECT_THAT(middleware.trace.last().file, testing::EndsWith("FmAlarmMoImpl.cpp"));
}

TEST_F(FmAlarmMoImplTransactionTest, theResourceTracesNothingBelowTheMostDetailedLevel)
{
    middleware.trace.setLevels(YALT_TRACE_DETAILED - 1);
    middleware.journal.showOnly({Topic::Trace});

    impl.finish(5);

    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace ZorvFm
