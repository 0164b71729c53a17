/// The operations on the managed objects, one by one. What belongs to their transactions is in
/// FmAlarmMoImplTransactionTest.cpp.
#include "FmAlarmMoImpl.hpp"

#include "MoImplTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

class FmAlarmMoImplTest : public MoImplTest {
protected:
    FmAlarmMoImplTest() { alarms.set({alarmWithId(6, "six"), alarmWithId(17, "seventeen"), alarmWithId(2, "two")}); }
};

// --- Iterations

TEST_F(FmAlarmMoImplTest, anIterationNamesTheAlarmsInTheOrderOfTheList)
{
    const std::uint64_t iterator = newIterator();

    EXPECT_EQ("FmAlarm=6", next(iterator));
    EXPECT_EQ("FmAlarm=17", next(iterator));
    EXPECT_EQ("FmAlarm=2", next(iterator));
    EXPECT_EQ("-2", next(iterator));
    EXPECT_EQ("-2", next(iterator));
}

TEST_F(FmAlarmMoImplTest, anIterationOfAnEmptyListEndsAtOnce)
{
    alarms.set({});

    EXPECT_EQ("-2", next(newIterator()));
}

TEST_F(FmAlarmMoImplTest, onlyTheOwnClassIsIterated)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});
    std::uint64_t iterator = 4711;

    EXPECT_EQ(-1, impl.newMoIterator(1, "ManagedElement=1", "FmAlarmModel", &iterator));
    EXPECT_EQ(-1, impl.newMoIterator(1, "ManagedElement=1", "", &iterator));

    EXPECT_EQ(4711U, iterator);
    EXPECT_EQ(0, alarms.timesRead());
    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM RPC (newMoIterator) call failed: className FmAlarmModel is not correct",
                            "trace 8 FM RPC (newMoIterator) call failed: className  is not correct"));
}

TEST_F(FmAlarmMoImplTest, iteratorsCountFrom1OverAllTransactions)
{
    EXPECT_EQ(1U, newIterator(1));
    EXPECT_EQ(2U, newIterator(2));
    impl.finish(2);
    EXPECT_EQ(3U, newIterator(1));
}

TEST_F(FmAlarmMoImplTest, iteratorsOfOneTransactionMoveByThemselves)
{
    const std::uint64_t first = newIterator();
    EXPECT_EQ("FmAlarm=6", next(first));
    const std::uint64_t second = newIterator();

    EXPECT_EQ("FmAlarm=6", next(second));
    EXPECT_EQ("FmAlarm=17", next(first));
    EXPECT_EQ("FmAlarm=17", next(second));
}

TEST_F(FmAlarmMoImplTest, anUnknownIteratorIsNotFound)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});

    EXPECT_EQ("-2", next(1));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM RPC (nextMo) call failed: iterator does not exist"));
}

TEST_F(FmAlarmMoImplTest, finalizingAnIteratorDoesNothing)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});
    const std::uint64_t iterator = newIterator();

    EXPECT_EQ(0, impl.finalizeMoIterator(iterator));
    EXPECT_EQ(0, impl.finalizeMoIterator(4711));

    EXPECT_EQ("FmAlarm=6", next(iterator));
    EXPECT_THAT(journal(), IsEmpty());
}

// --- Look-ups

TEST_F(FmAlarmMoImplTest, anAlarmExistsUnderItsIdentity)
{
    EXPECT_TRUE(exists("FmAlarm=6"));
    EXPECT_TRUE(exists("FmAlarm=17"));
    EXPECT_TRUE(exists("ManagedElement=1,SystemFunctions=1,Fm=1,FmAlarm=2"));
    EXPECT_TRUE(exists("FmAlarm=9,FmAlarm=6"));
}

TEST_F(FmAlarmMoImplTest, otherIdentitiesDoNotExist)
{
    for (const char* dn :
         {"FmAlarm=7", "FmAlarm=1", "FmAlarm=06", "FmAlarm=+6", "FmAlarm=-6", "FmAlarm= 6", "FmAlarm=6 ",
          "FmAlarm=6,A=1", "FmAlarm=6,FmAlarm=9", "FmAlarm=", "FmAlarm=x", "FmAlarm=0", "FmAlarm=00", "FmAlarm=0x6",
          "FmAlarm=18446744073709551622", "6", "", "fmAlarm=6", "ManagedElement=1"}) {
        EXPECT_FALSE(exists(dn)) << dn;
    }
}

TEST_F(FmAlarmMoImplTest, alarmsHaveNoChildren)
{
    std::uint64_t count = 4711;

    EXPECT_EQ(0, impl.countMoChildren(1, "FmAlarm=6", "FmAlarm", &count));

    EXPECT_EQ(0U, count);
}

// --- Attributes

TEST_F(FmAlarmMoImplTest, anAttributeOfAnUnknownAlarmIsNotFound)
{
    EXPECT_EQ("-2", attribute("fmAlarmId", "FmAlarm=7"));
}

TEST_F(FmAlarmMoImplTest, readingAnAttributeIsTraced)
{
    middleware.journal.showOnly({Topic::Trace});

    attribute("fmAlarmId", "FmAlarm=17", 42);
    attribute("unknown", "FmAlarm=17", 42);
    attribute("fmAlarmId", "FmAlarm=7", 42);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> '42', 'FmAlarm=17', 'fmAlarmId'", "trace 8 FM  << Retval: 0",
                                       "trace 8 FM  >> '42', 'FmAlarm=17', 'unknown'", "trace 8 FM  << Retval: -2",
                                       "trace 8 FM  >> '42', 'FmAlarm=7', 'fmAlarmId'", "trace 8 FM  << Retval: -2"));
}

TEST_F(FmAlarmMoImplTest, severalAttributesAreReadInTheirOrder)
{
    const char* const names[] = {"additionalText", "fmAlarmId", "sequenceNumber", nullptr};
    YaltOamSpiMoAttributesResult_3T results{};

    ASSERT_EQ(0, impl.getMoAttributes(1, "FmAlarm=17", names, &results));

    ASSERT_EQ(3U, results.numberOfAttributes);
    EXPECT_EQ("9 'seventeen'", shown(results.attributes[0]));
    EXPECT_EQ("9 '17'", shown(results.attributes[1]));
    EXPECT_EQ("4 17", shown(results.attributes[2]));
    EXPECT_EQ(0, results.releaseAttributesResultCB(&results));
}

TEST_F(FmAlarmMoImplTest, readingSeveralAttributesStopsAtTheFirstFailure)
{
    middleware.journal.showOnly({Topic::Trace});
    const char* const names[] = {"fmAlarmId", "unknown", "source", nullptr};
    YaltOamSpiMoAttributesResult_3T results{4711, nullptr, nullptr};

    EXPECT_EQ(-2, impl.getMoAttributes(1, "FmAlarm=17", names, &results));

    EXPECT_EQ(4711U, results.numberOfAttributes);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> '1', 'FmAlarm=17', 'fmAlarmId'", "trace 8 FM  << Retval: 0",
                                       "trace 8 FM  >> '1', 'FmAlarm=17', 'unknown'", "trace 8 FM  << Retval: -2"));
}

TEST_F(FmAlarmMoImplTest, attributesOfAnUnknownAlarmAreNotFound)
{
    const char* const names[] = {"fmAlarmId", nullptr};
    YaltOamSpiMoAttributesResult_3T results{};

    EXPECT_EQ(-2, impl.getMoAttributes(1, "FmAlarm=7", names, &results));
}

TEST_F(FmAlarmMoImplTest, noNamesGiveNoAttributes)
{
    const char* const names[] = {nullptr};
    YaltOamSpiMoAttributesResult_3T results{};

    EXPECT_EQ(0, impl.getMoAttributes(1, "FmAlarm=6", names, &results));

    EXPECT_EQ(0U, results.numberOfAttributes);
    EXPECT_EQ(0, results.releaseAttributesResultCB(&results));
}

// --- Refused operations

TEST_F(FmAlarmMoImplTest, theClassIsReadOnly)
{
    const YaltOamSpiMoAttribute_3T value{YALT_MO_ATTRIBUTE_STRING, 0, nullptr};

    EXPECT_EQ(-1, impl.setMoAttribute(1, "FmAlarm=6", "additionalText", &value));
    EXPECT_EQ(-1, impl.createMo(1, "ManagedElement=1", "FmAlarm", "7", nullptr, 0));
    EXPECT_EQ(-1, impl.deleteMo(1, "FmAlarm=6"));
    EXPECT_TRUE(exists("FmAlarm=6"));
}

TEST_F(FmAlarmMoImplTest, theClassHasNoActions)
{
    YaltOamSpiMoAttributeResult_3T result{};

    EXPECT_EQ(-2, impl.action(1, "FmAlarm=6", "acknowledge", nullptr, 0, &result));
}

}  // namespace
}  // namespace ZorvFm
