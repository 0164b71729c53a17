#include "HandlerTest.hpp"
#include "NbiAlarmList.hpp"
#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerSuppressionTest : public HandlerTest {
protected:
    void suppress() { handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_ON); }

    static ReferenceAlarm critical(ReferenceAlarm alarm)
    {
        alarm.severity = YALT_FM_SEVERITY_CRITICAL;
        alarm.originalSeverity = YALT_FM_SEVERITY_CRITICAL;
        return alarm;
    }

    Entries suppressed(const ReferenceAlarm& alarm) const
    {
        return all({{"log 5 Suppressing alarm: " + Reference::debugLine(alarm)}, recordOf(alarm)});
    }

    const Entries rebuilt = {"notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1003 filter=[] noData=0 -> 0",
                             "notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=1004 filter=[] noData=0 -> 0"};
};

class FmAlarmHandlerRebuiltTest : public FmAlarmHandlerSuppressionTest {
protected:
    FmAlarmHandlerRebuiltTest()
    {
        middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
        middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2);
        start();
    }
};

// --- While it is on

TEST_F(FmAlarmHandlerSuppressionTest, anAlarmIsRecordedAndStoredAndNotSent)
{
    start();
    suppress();

    send(linkDown());

    EXPECT_THAT(
        journal(),
        ElementsAre("log 5 Suppressing alarm: dn=ManagedElement=1,Port=1; majorType=1; minorType=7; "
                    "additionalText=Link down; severity=4; specificProblem=Link failure; seqNo=0; "
                    "eventTime=1699999995000000000; stateful=1; eventType=2; probableCause=14; originalSeqNo=0; "
                    "originalAdditionalText=Link down; originalSeverity=4; originalEventTime=1699999995000000000; "
                    "alarmId=1; additionalInfoSize=0",
                    "record 5 <FmLogRecord>\n"
                    "   <LogTimestamp>2023-11-14T22:13:20.000+00:00</LogTimestamp>\n"
                    "   <Alarm>1;2023-11-14T22:13:15.000+00:00;ManagedElement=1,Port=1;1;7;Link failure;14;MAJOR;"
                    "Link down;0;COMMUNICATIONSALARM;2023-11-14T22:13:15.000+00:00;MAJOR;Link down;0;0</Alarm>\n"
                    "</FmLogRecord>",
                    "listPushBack FmActiveAlarmList2 -> 0", "listReplaceItem FmActiveAlarmList2 item1 -> 0"));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(linkDown(), 2, 1, 0, 0))));
    EXPECT_EQ(0U, status->get().lastStatefulSeqNo);
}

TEST_F(FmAlarmHandlerSuppressionTest, aCriticalAlarmIsSent)
{
    start();
    suppress();

    send(critical(linkDown()));

    const ReferenceAlarm alarm = listed(critical(linkDown()), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(), reported(alarm), pushed(), replaced(2)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, theEndOfACriticalAlarmIsSent)
{
    start();
    suppress();
    send(critical(linkDown()));
    journal();

    send(linkUp());

    const ReferenceAlarm alarm = cleared(listed(critical(linkDown()), 2, 1, 1, 1), linkUp(), 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2), statusReplaced(), reported(alarm), replaced(2)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, aChangeToCriticalIsSent)
{
    start();
    suppress();
    send(linkDown());
    journal();
    ReferenceAlarm change = linkDown();
    change.severity = YALT_FM_SEVERITY_CRITICAL;

    send(change);

    const ReferenceAlarm alarm = listed(change, 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusPushed(2), reported(alarm), replaced(1)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, aChangeFromCriticalIsSent)
{
    start();
    suppress();
    send(critical(linkDown()));
    journal();
    ReferenceAlarm change = critical(linkDown());
    change.severity = YALT_FM_SEVERITY_MINOR;

    send(change);

    const ReferenceAlarm alarm = listed(change, 2, 1, 2, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(alarm), replaced(2)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, severitiesAboveCriticalAreNotSent)
{
    start();
    suppress();
    ReferenceAlarm alarm = linkDown();
    alarm.severity = 6;
    alarm.originalSeverity = 6;

    send(alarm);

    alarm = listed(alarm, 2, 1, 0, 0);
    EXPECT_THAT(journal(), ElementsAreArray(all({suppressed(alarm), pushed(), replaced(1)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, theRecordKeepsTheNumberAndTheAlarmLosesIt)
{
    start();
    send(linkDown());
    suppress();
    journal();
    ReferenceAlarm change = linkDown();
    change.text = "Still down";

    send(change);

    change.originalText = "Link down";
    EXPECT_THAT(journal(),
                ElementsAreArray(all({contentsDiffer, suppressed(listed(change, 2, 1, 1, 1)), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(change, 2, 1, 0, 1))));
}

TEST_F(FmAlarmHandlerSuppressionTest, theEndOfAnAlarmIsRecordedAndNotSent)
{
    start();
    send(linkDown());
    suppress();
    journal();

    send(linkUp());

    const ReferenceAlarm alarm = cleared(listed(linkDown(), 2, 1, 1, 1), linkUp(), 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2), suppressed(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(alarm))));
}

TEST_F(FmAlarmHandlerSuppressionTest, anAlarmFirstSentAfterwardsGetsItsOriginalNumberThen)
{
    start();
    suppress();
    send(linkDown());
    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_OFF);
    journal();
    ReferenceAlarm change = linkDown();
    change.severity = YALT_FM_SEVERITY_MINOR;

    send(change);

    const ReferenceAlarm alarm = listed(change, 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusPushed(2), reported(alarm), replaced(1)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, whatIsWrittenToTheFmObjectComesFromTheStatus)
{
    start();
    send(linkDown());
    ReferenceAlarm change = linkDown();
    change.text = "Still down";
    change.eventTime += second;
    send(change);
    suppress();
    ReferenceAlarm other = linkDown("ManagedElement=1,Port=2");
    other.eventTime += 60 * second;

    send(other);
    handler->saveVeskFmAttributes();

    EXPECT_EQ("lastSequenceNo=2 lastChanged='2023-11-14T22:13:16.000+00:00' totalActive=2 sumCritical=0 sumMajor=2 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerSuppressionTest, aSuppressedAlarmLeavesSomethingToWriteToTheFmObject)
{
    start();
    suppress();
    middleware.journal.showOnly({Topic::Transaction});

    send(linkDown());
    handler->saveVeskFmAttributes();

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0", "commitTransaction -> 0"));
    EXPECT_EQ("lastSequenceNo=0 lastChanged='1970-01-01T00:00:00.000+00:00' totalActive=1 sumCritical=0 sumMajor=1 "
              "sumMinor=0 sumWarning=0",
              middleware.fmModel.summary());
}

TEST_F(FmAlarmHandlerSuppressionTest, withoutAnAlarmLogTheAlarmIsStoredAllTheSame)
{
    start();
    suppress();
    middleware.portal.withdraw("ZorvMwSpiLog");

    send(linkDown());

    EXPECT_THAT(journal(), ElementsAreArray(
                               all({{"log 5 Suppressing alarm: " + Reference::debugLine(listed(linkDown(), 2, 1, 0, 0)),
                                     "log 3 ZorvMwSpiLog interface missing; failed to log alarm"},
                                    pushed(),
                                    replaced(1)})));
}

TEST_F(FmAlarmHandlerSuppressionTest, theListTellsInItsTraceWhetherItIsOn)
{
    start();
    middleware.journal.showOnly({Topic::Trace});
    std::vector<AlarmData> alarms;

    NbiAlarmList::getAlarms(alarms);
    suppress();
    NbiAlarmList::getAlarms(alarms);
    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_OFF);
    journal();
    NbiAlarmList::getAlarms(alarms);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Get NBI alarms, size: 0, suppression : off"));
    suppress();
    NbiAlarmList::getAlarms(alarms);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Get NBI alarms, size: 0, suppression : on"));
}

// --- On and off

TEST_F(FmAlarmHandlerRebuiltTest, turningItOnSaysNothing)
{
    suppress();
    suppress();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerRebuiltTest, turningItOffTellsThatTheListIsToBeReadAgain)
{
    suppress();

    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_OFF);
    EXPECT_THAT(journal(), ElementsAreArray(rebuilt));

    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_OFF);
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerRebuiltTest, turningOffWhatWasNeverOnSaysNothing)
{
    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_OFF);

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerRebuiltTest, everyValueButOneTurnsItOff)
{
    for (const ZorvOamSpiFmAlarmSuppressType_1 value : {2, -1, INT32_MAX}) {
        suppress();
        handler->suppressAlarm(value);

        EXPECT_THAT(journal(), ElementsAreArray(rebuilt));
    }
}

TEST_F(FmAlarmHandlerRebuiltTest, alarmsAreSentAgainAfterwards)
{
    suppress();
    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_OFF);
    journal();

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(), reported(alarm), pushed(), replaced(2)})));
}

}  // namespace
}  // namespace ZorvFm
