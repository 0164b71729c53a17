#include "HandlerTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerClearTest : public HandlerTest {
protected:
    const std::string port1 = "ManagedElement=1,Port=1";
    const std::string port2 = "ManagedElement=1,Port=2";
    const std::string port3 = "ManagedElement=1,Port=3";
};

// --- Without filters

TEST_F(FmAlarmHandlerClearTest, aCeaseIsReportedAtOnceWithItsTimeAndItsText)
{
    raiseOne();
    pass(second);

    send(linkUp());

    EXPECT_THAT(
        journal(),
        ElementsAre("listReplaceItem FmActiveAlarmList2 item2 -> 0", "listIsEmpty FmStatusSection -> 0 false",
                    "listGetFrontRef FmStatusSection -> 0", "listGetNextItemFront FmStatusSection -> 0",
                    "listReplaceItem FmStatusSection item1 -> 0", "log 6 Updated status item in FmStatusSection list.",
                    "listGetFinalize FmStatusSection -> 0",
                    "record 5 <FmLogRecord>\n"
                    "   <LogTimestamp>2023-11-14T22:13:21.000+00:00</LogTimestamp>\n"
                    "   <Alarm>1;2023-11-14T22:13:17.000+00:00;ManagedElement=1,Port=1;1;7;Link failure;14;CLEARED;"
                    "Link up;2;COMMUNICATIONSALARM;2023-11-14T22:13:15.000+00:00;MAJOR;Link down;1;0</Alarm>\n"
                    "</FmLogRecord>",
                    "log 5 Sending alarm: dn=ManagedElement=1,Port=1; majorType=1; minorType=7; "
                    "additionalText=Link up; severity=0; specificProblem=Link failure; seqNo=2; "
                    "eventTime=1699999997000000000; stateful=1; eventType=2; probableCause=14; originalSeqNo=1; "
                    "originalAdditionalText=Link down; originalSeverity=4; originalEventTime=1699999995000000000; "
                    "alarmId=1; additionalInfoSize=0",
                    "notify ZorvOamApiFmNotificationEventType_3 consumer=1001 filter=[] "
                    "{dn='ManagedElement=1,Port=1' majorType=1 minorType=7 eventTime=1699999997000000000 "
                    "additionalText='Link up' severity=0 additionalInfo=null} stateful=true seqNo=2 eventType=2 "
                    "probableCause=14 specificProblem='Link failure' alarmId=1 originalEventTime=1699999995000000000 "
                    "originalAdditionalText='Link down' originalSeverity=4 -> 0",
                    "notify ZorvOamApiFmNotificationEventType_2 consumer=1002 filter=[] "
                    "{dn='ManagedElement=1,Port=1' majorType=1 minorType=7 eventTime=1699999997000000000 "
                    "additionalText='Link up' severity=0 additionalInfo=null} stateful=true seqNo=2 eventType=2 "
                    "probableCause=14 specificProblem='Link failure' originalSeqNo=1 "
                    "originalEventTime=1699999995000000000 originalAdditionalText='Link down' originalSeverity=4 -> 0",
                    "listReplaceItem FmActiveAlarmList2 item2 -> 0"));
}

TEST_F(FmAlarmHandlerClearTest, theClearedAlarmStaysWithoutNumbersUntilTheNextTick)
{
    raiseOne();

    send(linkUp());
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(cleared(active, linkUp(), 2)))));
    journal();

    tick();
    EXPECT_THAT(journal(), ElementsAreArray(erased(2)));
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(FmAlarmHandlerClearTest, isTracedFromBeginningToEnd)
{
    raiseOne();
    middleware.journal.showOnly({Topic::Trace});

    send(linkUp());
    tick();

    ReferenceAlarm atTick = active;
    atTick.state = 6;
    const std::string left = Reference::debugLineWithState(ceased(cleared(active, linkUp(), 2)));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Alarm received: '" + Reference::debugLine(linkUp()) + "'",
                                       "trace 8 FM Found 1 alarms", "trace 8 FM listReplaceItem retval=0 ",
                                       "trace 8 FM tickAlarm ALARM_CLEARED " + Reference::debugLineWithState(atTick),
                                       "trace 8 FM  >> Try to get interface ZorvMwSpiLog", "trace 8 FM  << ",
                                       "trace 8 FM  >> sendNotification",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_3",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_2",
                                       "trace 8 FM  << sendNotification", "trace 8 FM listReplaceItem retval=0 ",
                                       "trace 8 FM  << ", "trace 8 FM tickAlarm ALARM_TO_DELETE " + left,
                                       "trace 8 FM  >> eraseAlarm alarms, size: 1, " + left));
}

TEST_F(FmAlarmHandlerClearTest, aCeaseWithoutAlarmDoesNothing)
{
    start();

    send(linkUp());

    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(FmAlarmHandlerClearTest, aStatelessCeaseTakesTheSamePath)
{
    raiseOne();
    ReferenceAlarm clear = linkUp();
    clear.stateful = false;

    send(clear);

    EXPECT_THAT(journal(), ElementsAreArray(
                               all({replaced(2), statusReplaced(), reported(cleared(active, clear, 2)), replaced(2)})));
}

// --- The text for clear

TEST_F(FmAlarmHandlerClearTest, theCeasesTextAndInformationTakeThePlaceOfTheAlarms)
{
    start();
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"slot", "2"}};
    send(alarm);
    journal();
    ReferenceAlarm clear = linkUp();
    clear.text = "";
    clear.info = {{"by", "hand"}};

    send(clear);

    alarm = cleared(listed(alarm, 2, 1, 1, 1), clear, 2);
    EXPECT_EQ("", alarm.text);
    EXPECT_EQ(clear.info, alarm.info);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2), statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(alarm))));
}

TEST_F(FmAlarmHandlerClearTest, theAlarmsTextAndInformationMayBeReused)
{
    config.reuseAdditionalTextFromAalAtClear = true;
    start();
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"slot", "2"}};
    send(alarm);
    journal();
    ReferenceAlarm clear = linkUp();
    clear.info = {{"by", "hand"}};

    send(clear);

    ReferenceAlarm reused = clear;
    reused.text = alarm.text;
    reused.info = alarm.info;
    alarm = cleared(listed(alarm, 2, 1, 1, 1), reused, 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2), statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(alarm))));
}

TEST_F(FmAlarmHandlerClearTest, theReusedTextOfATogglingAlarmKeepsTheRemark)
{
    config.reuseAdditionalTextFromAalAtClear = true;
    config.alarmToggleWindowSize = 60 * second;
    raiseOne();

    send(linkUp());

    ReferenceAlarm reused = linkUp();
    reused.text = "Link down The alarm is currently toggling.";
    const ReferenceAlarm alarm = cleared(listed(linkDown(), 3, 1, 1, 1), reused, 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2), statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(alarm))));
}

// --- Clearing by pattern

TEST_F(FmAlarmHandlerClearTest, aPatternClearsEveryMatchingAlarmOfTheTypeInTheOrderOfTheList)
{
    start();
    send(linkDown(port2));
    send(linkDown("ManagedElement=1,Fan=1"));
    send(linkDown(port1));
    ReferenceAlarm otherType = linkDown(port3);
    otherType.minorType = 8;
    send(otherType);
    journal();
    const ReferenceAlarm clear = linkUp("Port=[0-9]");

    send(clear);

    const ReferenceAlarm ofPort2 = cleared(listed(linkDown(port2), 2, 1, 1, 1), clear, 5);
    const ReferenceAlarm ofPort1 = cleared(listed(linkDown(port1), 2, 3, 3, 3), clear, 6);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2), statusReplaced(), reported(ofPort2), replaced(2),
                                                 replaced(4), statusReplaced(), reported(ofPort1), replaced(4)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(ofPort2)),
                                      storedText(listed(linkDown("ManagedElement=1,Fan=1"), 2, 2, 2, 2)),
                                      storedText(ceased(ofPort1)), storedText(listed(otherType, 2, 4, 4, 4))));
}

TEST_F(FmAlarmHandlerClearTest, anEqualIdentityKeepsThePatternFromBeingUsed)
{
    start();
    send(linkDown("ManagedElement=1,Port=12"));
    send(linkDown(port1));
    journal();

    send(linkUp());

    const ReferenceAlarm alarm = cleared(listed(linkDown(port1), 2, 2, 2, 2), linkUp(), 3);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(3), statusReplaced(), reported(alarm), replaced(3)})));
}

TEST_F(FmAlarmHandlerClearTest, anInvalidPatternIsLoggedForEachAlarmOfTheTypeAndClearsNothing)
{
    start();
    send(linkDown(port1));
    send(linkDown(port2));
    journal();

    send(linkUp("Port=("));

    EXPECT_THAT(journal(), ElementsAre("log 3 DnUtil::doRegexp, regcomp failed for DN: Port=( :missing ): Port=(",
                                       "log 3 DnUtil::doRegexp, regcomp failed for DN: Port=( :missing ): Port=("));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(linkDown(port1), 2, 1, 1, 1)),
                                      storedText(listed(linkDown(port2), 2, 2, 2, 2))));
}

TEST_F(FmAlarmHandlerClearTest, alarmsInTheirRaiseFilterThatAPatternClearsAreDroppedTogether)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    start();
    send(linkDown(port1));
    send(linkDown(port2));
    journal();

    send(linkUp("Port="));

    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(1), erased(1), replaced(2), erased(2)})));
    EXPECT_THAT(stored(), IsEmpty());
}

// --- With filters

TEST_F(FmAlarmHandlerClearTest, aCeaseInItsFilterIsStoredAndNotReported)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    raiseOne();

    send(linkUp());

    ReferenceAlarm pending = active;
    pending.state = 5;
    pending.clearEventTime = linkUp().eventTime;
    pending.textForClear = "Link up";
    EXPECT_THAT(journal(), ElementsAreArray(replaced(2)));
    EXPECT_THAT(stored(), ElementsAre(storedText(pending)));
}

TEST_F(FmAlarmHandlerClearTest, aTickAfterTheFilterTimeReportsTheCeaseWithItsOwnTime)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    raiseOne();
    send(linkUp());
    journal();

    pass(4 * second);
    tick();
    EXPECT_THAT(journal(), IsEmpty());

    tick();
    const ReferenceAlarm alarm = cleared(active, linkUp(), 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(alarm), replaced(2)})));
}

TEST_F(FmAlarmHandlerClearTest, aRaiseThatIsCeasedInItsFilterIsNeverReported)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    raiseOne();
    pass(2 * second);

    send(linkUp());

    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(1), erased(1)})));
    pass(10 * second);
    tick();
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerClearTest, aSecondCeaseInTheFilterIsUnexpectedAndItsContentsCount)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    raiseOne();
    send(linkUp());
    journal();
    ReferenceAlarm later = linkUp();
    later.eventTime += second;
    later.text = "Link up again";

    send(later);
    EXPECT_THAT(journal(), ElementsAreArray(all({{"log 4 Unexpected alarm cease in state 5"}, replaced(2)})));

    pass(5 * second);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(cleared(active, later, 2)), replaced(2)})));
}

TEST_F(FmAlarmHandlerClearTest, aTogglingAlarmCeasesAfterItsSilentTimeoutOnly)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleSilentTimeout = 10 * second;
    raiseOne();

    send(linkUp());
    EXPECT_THAT(journal(), ElementsAreArray(replaced(2)));
    send(linkUp());
    EXPECT_THAT(journal(), ElementsAreArray(all({{"log 4 Unexpected alarm cease in state 4"}, replaced(2)})));

    pass(10 * second);
    handler->tickAllAlarms();
    const ReferenceAlarm alarm = cleared(active, linkUp(), 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(ceased(alarm))));

    tick();
    EXPECT_THAT(journal(), ElementsAreArray(erased(2)));
}

TEST_F(FmAlarmHandlerClearTest, aCeaseOfACeasedAlarmIsUnexpectedAndTheAlarmLeavesWithItsHistory)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;
    raiseOne();
    send(linkUp());
    journal();

    send(linkUp());
    EXPECT_THAT(journal(), ElementsAreArray(all({{"log 4 Unexpected alarm cease in state 6"}, replaced(2)})));

    pass(60 * second);
    send(linkUp());
    EXPECT_THAT(journal(),
                ElementsAreArray(all({{"log 4 Unexpected alarm cease in state 6"}, replaced(2), erased(2)})));
}

// --- When the middleware fails

TEST_F(FmAlarmHandlerClearTest, anAlarmWhoseItemCannotBeErasedLeavesMemory)
{
    raiseOne();
    send(linkUp());
    journal();
    middleware.lists.failNext("listEraseItem", ZORV_RETURN_FAILED);

    tick();
    EXPECT_THAT(journal(),
                ElementsAre("listEraseItem FmActiveAlarmList2 item2 -> -1", "log 4 Retval from listEraseItem: -1"));

    tick();
    send(linkUp());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerClearTest, anAlarmThatCouldNeverBeStoredLeavesMemory)
{
    start();
    middleware.lists.failAlways("listPushBack FmActiveAlarmList2", ZORV_RETURN_NO_RESOURCES);
    send(linkDown());
    send(linkUp());
    journal();

    tick();

    EXPECT_THAT(journal(),
                ElementsAre("listEraseItem FmActiveAlarmList2  -> -2", "log 4 Retval from listEraseItem: -2"));
}

TEST_F(FmAlarmHandlerClearTest, aCeaseThatCannotBeStoredIsReportedAllTheSame)
{
    raiseOne();
    middleware.lists.failNext("listReplaceItem FmActiveAlarmList2", ZORV_RETURN_FAILED);

    send(linkUp());

    ReferenceAlarm pending = active;
    pending.state = 5;
    EXPECT_THAT(journal(), ElementsAreArray(all({{"listReplaceItem FmActiveAlarmList2 item2 -> -1",
                                                  "log 3 Failed to save alarm in replicated list! retval=-1 '" +
                                                      Reference::debugLineWithState(pending) + "'"},
                                                 statusReplaced(),
                                                 reported(cleared(active, linkUp(), 2)),
                                                 replaced(2)})));
}

TEST_F(FmAlarmHandlerClearTest, withoutAnAlarmLogTheCeaseIsSentAllTheSame)
{
    raiseOne();
    middleware.portal.withdraw("ZorvMwSpiLog");

    send(linkUp());

    const ReferenceAlarm alarm = cleared(active, linkUp(), 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({replaced(2),
                                                 statusReplaced(),
                                                 {"log 3 ZorvMwSpiLog interface missing; failed to log alarm",
                                                  "log 5 Sending alarm: " + Reference::debugLine(alarm),
                                                  notification3(alarm, consumer3), notification2(alarm, consumer2)},
                                                 replaced(2)})));
}

}  // namespace
}  // namespace ZorvFm
