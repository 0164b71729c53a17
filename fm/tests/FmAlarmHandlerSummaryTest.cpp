#include "HandlerTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerSummaryTest : public HandlerTest {
protected:
    void raise(const std::string& dn, std::int32_t severity)
    {
        ReferenceAlarm alarm = linkDown(dn);
        alarm.severity = severity;
        send(alarm);
    }

    /// total, critical, major, minor, warning
    std::vector<std::uint32_t> counters()
    {
        std::vector<std::uint32_t> values(5, 77);
        handler->countAlarmSummaries(values[0], values[1], values[2], values[3], values[4]);
        return values;
    }

    static std::string set(const std::string& attribute, const std::string& value, int code = 0)
    {
        return "setMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 " + attribute + " " + value + " -> " +
               std::to_string(code);
    }
};

// --- Counting

TEST_F(FmAlarmHandlerSummaryTest, anEmptyListCountsNothing)
{
    start();

    EXPECT_THAT(counters(), ElementsAre(0, 0, 0, 0, 0));
}

TEST_F(FmAlarmHandlerSummaryTest, eachSeverityHasItsCounter)
{
    start();

    raise("Port=1", YALT_FM_SEVERITY_WARNING);
    EXPECT_THAT(counters(), ElementsAre(1, 0, 0, 0, 1));
    raise("Port=2", YALT_FM_SEVERITY_MINOR);
    EXPECT_THAT(counters(), ElementsAre(2, 0, 0, 1, 1));
    raise("Port=3", YALT_FM_SEVERITY_MAJOR);
    EXPECT_THAT(counters(), ElementsAre(3, 0, 1, 1, 1));
    raise("Port=4", YALT_FM_SEVERITY_CRITICAL);
    EXPECT_THAT(counters(), ElementsAre(4, 1, 1, 1, 1));
    raise("Port=5", YALT_FM_SEVERITY_INDETERMINATE);
    EXPECT_THAT(counters(), ElementsAre(5, 2, 1, 1, 1));
    raise("Port=6", 6);
    EXPECT_THAT(counters(), ElementsAre(6, 3, 1, 1, 1));
    raise("Port=7", -1);
    EXPECT_THAT(counters(), ElementsAre(7, 4, 1, 1, 1));
}

TEST_F(FmAlarmHandlerSummaryTest, anActiveAlarmOfSeverityClearedCountsInTheTotalOnly)
{
    ReferenceAlarm damaged = listed(linkDown(), 2, 1, 1, 1);
    damaged.severity = YALT_FM_SEVERITY_CLEARED;
    middleware.lists.plant("FmActiveAlarmList2", storedText(damaged));
    start();

    EXPECT_THAT(counters(), ElementsAre(1, 0, 0, 0, 0));
}

TEST_F(FmAlarmHandlerSummaryTest, aChangedSeverityChangesTheCounters)
{
    start();
    raise("Port=1", YALT_FM_SEVERITY_WARNING);
    raise("Port=1", YALT_FM_SEVERITY_CRITICAL);

    EXPECT_THAT(counters(), ElementsAre(1, 1, 0, 0, 0));
}

TEST_F(FmAlarmHandlerSummaryTest, alarmsThatAreNotVisibleAreTracedAndNotCounted)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;
    start();
    send(linkDown());
    send(linkUp());
    config.transientRaiseAlarmFilterTime = 5 * second;
    send(linkDown("ManagedElement=1,Port=2"));
    journal();
    middleware.journal.showOnly({Topic::Trace});

    EXPECT_THAT(counters(), ElementsAre(0, 0, 0, 0, 0));

    const ReferenceAlarm ofPort1 = ceased(cleared(listed(linkDown(), 2, 1, 1, 1), linkUp(), 2));
    const ReferenceAlarm ofPort2 = listed(linkDown("ManagedElement=1,Port=2"), 1, 2, 0, 0);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Alarm not visible :" + Reference::debugLineWithState(ofPort1),
                                       "trace 8 FM Alarm not visible :" + Reference::debugLineWithState(ofPort2)));
}

TEST_F(FmAlarmHandlerSummaryTest, pendingCeasesAndTogglingAlarmsAreCounted)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    config.alarmToggleSilentTimeout = 5 * second;
    start();
    send(linkDown());
    send(linkUp());
    handler.reset();
    config.alarmToggleWindowSize = 60 * second;
    start();
    send(linkDown("ManagedElement=1,Port=2"));
    send(linkDown("ManagedElement=1,Port=3"));
    send(linkUp("ManagedElement=1,Port=3"));

    EXPECT_THAT(counters(), ElementsAre(3, 0, 3, 0, 0));
}

// --- Writing

TEST_F(FmAlarmHandlerSummaryTest, whatWasReportedLastIsWrittenWithTheCounters)
{
    start();
    send(linkDown());
    ReferenceAlarm other = linkDown("ManagedElement=1,Port=2");
    other.eventTime += 1500000000;
    send(other);
    journal();

    handler->saveVeskFmAttributes();

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", set("lastSequenceNo", "2"),
                                       set("lastChanged", "'2023-11-14T22:13:16.500+00:00'"), set("totalActive", "2"),
                                       set("sumMajor", "2"), "commitTransaction -> 0"));
    EXPECT_EQ("lastSequenceNo=2 lastChanged='2023-11-14T22:13:16.500+00:00' totalActive=2 sumCritical=0 sumMajor=2 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerSummaryTest, aClearIsWrittenWithItsTime)
{
    start();
    send(linkDown());
    send(linkUp());

    handler->saveVeskFmAttributes();

    EXPECT_EQ("lastSequenceNo=2 lastChanged='2023-11-14T22:13:17.000+00:00' totalActive=0 sumCritical=0 sumMajor=0 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerSummaryTest, withNothingPendingTheModelIsNotOpened)
{
    start();
    send(linkDown());
    handler->saveVeskFmAttributes();
    journal();

    handler->saveVeskFmAttributes();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerSummaryTest, whatIsDroppedLeavesNothingToWrite)
{
    start();
    send(linkDown());
    handler->saveVeskFmAttributes();
    send(linkDown());
    journal();

    handler->saveVeskFmAttributes();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerSummaryTest, aFailedWriteIsLoggedAndTriedAgain)
{
    raiseOne();
    middleware.transactions.failNext("commitTransaction", ZORV_RETURN_FAILED);
    const Entries writes = {"createTransaction 1 60 -> 0", set("lastSequenceNo", "1"),
                            set("lastChanged", "'2023-11-14T22:13:15.000+00:00'"), set("totalActive", "1"),
                            set("sumMajor", "1")};

    handler->saveVeskFmAttributes();
    EXPECT_THAT(journal(), ElementsAreArray(all({writes,
                                                 {"commitTransaction -> -1",
                                                  "log 4 Did not succeed writing alarm sequence number to database, "
                                                  "will try again later"}})));

    handler->saveVeskFmAttributes();
    EXPECT_THAT(journal(), ElementsAreArray(all({writes, {"commitTransaction -> 0"}})));

    handler->saveVeskFmAttributes();
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerSummaryTest, aLaterReportTakesThePlaceOfWhatCouldNotBeWritten)
{
    start();
    send(linkDown());
    middleware.transactions.failNext("createTransaction", ZORV_RETURN_NO_RESOURCES);
    handler->saveVeskFmAttributes();
    send(linkDown("ManagedElement=1,Port=2"));

    handler->saveVeskFmAttributes();

    EXPECT_EQ("lastSequenceNo=2 lastChanged='2023-11-14T22:13:15.000+00:00' totalActive=2 sumCritical=0 sumMajor=2 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

}  // namespace
}  // namespace ZorvFm
