#include "HandlerTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerRaiseTest : public HandlerTest {};

// --- Without filters

TEST_F(FmAlarmHandlerRaiseTest, aRaiseIsNumberedLoggedSentAndStored)
{
    start();

    send(linkDown());

    EXPECT_THAT(
        journal(),
        ElementsAre("listIsEmpty FmStatusSection -> 0 true", "log 6 Put initial status item into FmStatusSection list.",
                    "listPushBack FmStatusSection -> 0",
                    "log 6 Successfully executed listPushBack to FmStatusSection: Returned listItemName=item1",
                    "record 5 <FmLogRecord>\n"
                    "   <LogTimestamp>2023-11-14T22:13:20.000+00:00</LogTimestamp>\n"
                    "   <Alarm>1;2023-11-14T22:13:15.000+00:00;ManagedElement=1,Port=1;1;7;Link failure;14;MAJOR;"
                    "Link down;1;COMMUNICATIONSALARM;2023-11-14T22:13:15.000+00:00;MAJOR;Link down;1;0</Alarm>\n"
                    "</FmLogRecord>",
                    "log 5 Sending alarm: dn=ManagedElement=1,Port=1; majorType=1; minorType=7; "
                    "additionalText=Link down; severity=4; specificProblem=Link failure; seqNo=1; "
                    "eventTime=1699999995000000000; stateful=1; eventType=2; probableCause=14; originalSeqNo=1; "
                    "originalAdditionalText=Link down; originalSeverity=4; originalEventTime=1699999995000000000; "
                    "alarmId=1; additionalInfoSize=0",
                    "notify ZorvOamApiFmNotificationEventType_3 consumer=1001 filter=[] "
                    "{dn='ManagedElement=1,Port=1' majorType=1 minorType=7 eventTime=1699999995000000000 "
                    "additionalText='Link down' severity=4 additionalInfo=null} stateful=true seqNo=1 eventType=2 "
                    "probableCause=14 specificProblem='Link failure' alarmId=1 originalEventTime=1699999995000000000 "
                    "originalAdditionalText='Link down' originalSeverity=4 -> 0",
                    "notify ZorvOamApiFmNotificationEventType_2 consumer=1002 filter=[] "
                    "{dn='ManagedElement=1,Port=1' majorType=1 minorType=7 eventTime=1699999995000000000 "
                    "additionalText='Link down' severity=4 additionalInfo=null} stateful=true seqNo=1 eventType=2 "
                    "probableCause=14 specificProblem='Link failure' originalSeqNo=1 "
                    "originalEventTime=1699999995000000000 originalAdditionalText='Link down' originalSeverity=4 -> 0",
                    "listPushBack FmActiveAlarmList2 -> 0", "listReplaceItem FmActiveAlarmList2 item2 -> 0"));
    EXPECT_THAT(stored(), ElementsAre("TWFuYWdlZEVsZW1lbnQ9MSxQb3J0PTE=;1;7;TGluayBkb3du;;4;TGluayBmYWlsdXJl;1;"
                                      "1699999995000000000;2;14;1;TGluayBkb3du;4;1699999995000000000;2;0;1;0"));
}

TEST_F(FmAlarmHandlerRaiseTest, isTracedFromBeginningToEnd)
{
    start();
    middleware.journal.showOnly({Topic::Trace});

    send(linkDown());

    const std::string received = Reference::debugLine(linkDown());
    const std::string created = Reference::debugLineWithState(listed(linkDown(), 0, 1, 0, 0));
    const std::string activated = Reference::debugLineWithState(listed(linkDown(), 2, 1, 0, 0));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Alarm received: '" + received + "'",
                                       "trace 8 FM Added alarm to active alarm list: '" + created + "', listSize :1",
                                       "trace 8 FM tickAlarm ALARM_ACTIVATED " + activated,
                                       "trace 8 FM  >> Try to get interface ZorvMwSpiLog", "trace 8 FM  << ",
                                       "trace 8 FM  >> sendNotification",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_3",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_2",
                                       "trace 8 FM  << sendNotification", "trace 8 FM listPushBack retval=0 ",
                                       "trace 8 FM listReplaceItem retval=0 ", "trace 8 FM  << "));
}

TEST_F(FmAlarmHandlerRaiseTest, additionalInformationIsReportedAndStoredInItsOrder)
{
    start();
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"slot", "2"}, {"port", "4"}, {"", "<none>"}};

    send(alarm);

    alarm = listed(alarm, 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(), reported(alarm), pushed(), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerRaiseTest, aSecondRaiseOfTheIdentityTakesTheUpdatePath)
{
    raiseOne();

    send(linkDown());

    EXPECT_THAT(journal(),
                ElementsAreArray(all(
                    {{"log 5 Dropping alarm: " + Reference::debugLine(linkDown())}, statusReplaced(), replaced(2)})));
}

TEST_F(FmAlarmHandlerRaiseTest, eachIdentityIsAnAlarmOfItsOwn)
{
    raiseOne();
    ReferenceAlarm otherDn = linkDown("ManagedElement=1,Port=2");
    ReferenceAlarm otherMajor = linkDown();
    otherMajor.majorType = 2;
    ReferenceAlarm otherMinor = linkDown();
    otherMinor.minorType = 8;

    send(otherDn);
    send(otherMajor);
    send(otherMinor);

    otherDn = listed(otherDn, 2, 2, 2, 2);
    otherMajor = listed(otherMajor, 2, 3, 3, 3);
    otherMinor = listed(otherMinor, 2, 4, 4, 4);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(otherDn), pushed(), replaced(3),
                                                 statusReplaced(), reported(otherMajor), pushed(), replaced(4),
                                                 statusReplaced(), reported(otherMinor), pushed(), replaced(5)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(linkDown(), 2, 1, 1, 1)), storedText(otherDn),
                                      storedText(otherMajor), storedText(otherMinor)));
}

TEST_F(FmAlarmHandlerRaiseTest, everySeverityButClearedIsARaise)
{
    start();
    std::uint64_t number = 0;
    for (const std::int32_t severity : {1, 2, 3, 4, 5, 6, -1, INT32_MIN, INT32_MAX}) {
        ReferenceAlarm alarm = linkDown("Port=" + std::to_string(severity));
        alarm.severity = severity;
        alarm.originalSeverity = severity;

        send(alarm);

        ++number;
        alarm = listed(alarm, 2, number, number, number);
        EXPECT_THAT(journal(), ElementsAreArray(all({number == 1 ? statusPushed() : statusReplaced(), reported(alarm),
                                                     pushed(), replaced(static_cast<int>(number) + 1)})));
    }
}

TEST_F(FmAlarmHandlerRaiseTest, theNorthboundNameIsReportedAndTheLocalOneStored)
{
    nameElement("node 7");
    start();

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    ReferenceAlarm northbound = alarm;
    northbound.dn = "ManagedElement=node 7,Port=1";
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(), reported(northbound), pushed(), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerRaiseTest, anAlarmThatTogglesAtOnceSaysSo)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 1;
    start();

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 3, 1, 1, 1);
    EXPECT_EQ("Link down The alarm is currently toggling.", shownText(alarm));
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(), reported(alarm), pushed(), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerRaiseTest, textsAreNeverFormats)
{
    start();
    ReferenceAlarm alarm = linkDown("Port=%s%n");
    alarm.text = "%s%s%n%x";
    alarm.originalText = alarm.text;
    alarm.info = {{"%n", "%s"}};

    send(alarm);

    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusPushed(), reported(listed(alarm, 2, 1, 1, 1)), pushed(), replaced(2)})));
}

// --- With the transient filter

TEST_F(FmAlarmHandlerRaiseTest, aRaiseInItsFilterIsStoredAndNotReported)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    start();

    send(linkDown());

    EXPECT_THAT(journal(), ElementsAreArray(pushed()));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(linkDown(), 1, 1, 0, 0))));
}

TEST_F(FmAlarmHandlerRaiseTest, aTickAfterTheFilterTimeReportsIt)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    raiseOne();

    pass(4 * second);
    tick();
    EXPECT_THAT(journal(), IsEmpty());

    tick();
    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(2), reported(alarm), replaced(1)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

// --- When the middleware fails

TEST_F(FmAlarmHandlerRaiseTest, anAlarmThatCouldNotBePushedIsPushedAtTheNextSave)
{
    start();
    middleware.lists.failNext("listPushBack FmActiveAlarmList2", ZORV_RETURN_NO_RESOURCES);

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(),
                                                 reported(alarm),
                                                 {"listPushBack FmActiveAlarmList2 -> -10",
                                                  "log 3 Failed to push back alarm to replicated list! retval=-10 '" +
                                                      Reference::debugLineWithState(alarm) + "'"},
                                                 pushed()})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerRaiseTest, anAlarmThatCannotBeStoredIsReportedAllTheSame)
{
    start();
    middleware.lists.failAlways("listPushBack", ZORV_RETURN_FAILED);
    middleware.lists.failAlways("listIsEmpty", ZORV_RETURN_FAILED);

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    const Entries failedPush = {"listPushBack FmActiveAlarmList2 -> -1",
                                "log 3 Failed to push back alarm to replicated list! retval=-1 '" +
                                    Reference::debugLineWithState(alarm) + "'"};
    EXPECT_THAT(journal(), ElementsAreArray(all({{"listIsEmpty FmStatusSection -> -1",
                                                  "log 3 Response from replicated listIsEmpty of FmStatusSection: -1",
                                                  "log 6 Put initial status item into FmStatusSection list.",
                                                  "listPushBack FmStatusSection -> -1",
                                                  "log 3 Response from replicated listPushBack to FmStatusSection: -1"},
                                                 reported(alarm),
                                                 failedPush,
                                                 failedPush})));
    EXPECT_EQ(1U, status->get().lastStatefulSeqNo);
}

TEST_F(FmAlarmHandlerRaiseTest, aStatusThatCannotBeReplacedStopsNothing)
{
    raiseOne();
    middleware.lists.failNext("listReplaceItem FmStatusSection", ZORV_RETURN_FAILED);

    send(linkDown("ManagedElement=1,Port=2"));

    EXPECT_THAT(journal(),
                ElementsAreArray(
                    all({{"listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> 0",
                          "listGetNextItemFront FmStatusSection -> 0", "listReplaceItem FmStatusSection item1 -> -1",
                          "log 3 Response from replicated listReplaceItem of FmStatusSection: -1",
                          "listGetFinalize FmStatusSection -> 0"},
                         reported(listed(linkDown("ManagedElement=1,Port=2"), 2, 2, 2, 2)),
                         pushed(),
                         replaced(3)})));
}

TEST_F(FmAlarmHandlerRaiseTest, anAlarmThatCouldNotBeReplacedIsLogged)
{
    start();
    middleware.lists.failNext("listReplaceItem FmActiveAlarmList2", ZORV_RETURN_NOT_FOUND);

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(),
                                                 reported(alarm),
                                                 pushed(),
                                                 {"listReplaceItem FmActiveAlarmList2 item2 -> -2",
                                                  "log 3 Failed to save alarm in replicated list! retval=-2 '" +
                                                      Reference::debugLineWithState(alarm) + "'"}})));
}

TEST_F(FmAlarmHandlerRaiseTest, withoutAnAlarmLogTheAlarmIsSentAllTheSame)
{
    start();
    middleware.portal.withdraw("ZorvMwSpiLog");

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(),
                                                 {"log 3 ZorvMwSpiLog interface missing; failed to log alarm",
                                                  "log 5 Sending alarm: " + Reference::debugLine(alarm),
                                                  notification3(alarm, consumer3), notification2(alarm, consumer2)},
                                                 pushed(),
                                                 replaced(2)})));
}

TEST_F(FmAlarmHandlerRaiseTest, aRecordThatIsLostIsNotMissed)
{
    start();
    middleware.log.failNext("write FmAlarmLog", ZORV_RETURN_FAILED);

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(),
                                                 {"log 5 Sending alarm: " + Reference::debugLine(alarm),
                                                  notification3(alarm, consumer3), notification2(alarm, consumer2)},
                                                 pushed(),
                                                 replaced(2)})));
}

TEST_F(FmAlarmHandlerRaiseTest, withoutAnEventRouterTheAlarmIsNumberedAndStored)
{
    start();
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(),
                                                 recordOf(alarm),
                                                 {"log 5 Sending alarm: " + Reference::debugLine(alarm)},
                                                 pushed(),
                                                 replaced(2)})));
    middleware.offerAll();
}

TEST_F(FmAlarmHandlerRaiseTest, aWallClockThatFailsStampsTheRecordWithTheEpoch)
{
    start();
    middleware.clock.fail(CLOCK_REALTIME);

    send(linkDown());

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusPushed(),
                                      {"log 4 Failed to retrieve system time", "record 5 " + logRecord(alarm, 0),
                                       "log 5 Sending alarm: " + Reference::debugLine(alarm),
                                       notification3(alarm, consumer3), notification2(alarm, consumer2)},
                                      pushed(),
                                      replaced(2)})));
}

}  // namespace
}  // namespace ZorvFm
