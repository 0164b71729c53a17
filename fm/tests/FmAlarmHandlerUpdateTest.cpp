#include "HandlerTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerUpdateTest : public HandlerTest {
protected:
    /// The same notification two seconds later.
    static ReferenceAlarm repeated()
    {
        ReferenceAlarm alarm = linkDown();
        alarm.eventTime += 2 * second;
        alarm.originalEventTime = alarm.eventTime;
        return alarm;
    }

    /// What is kept of the first raise when the contents of a later one are taken over.
    static ReferenceAlarm updated(const ReferenceAlarm& contents, std::uint64_t seqNo)
    {
        ReferenceAlarm alarm = listed(linkDown(), 2, 1, seqNo, 1);
        alarm.severity = contents.severity;
        alarm.text = contents.text;
        alarm.info = contents.info;
        alarm.eventTime = contents.eventTime;
        return alarm;
    }

    static Entries dropped(const ReferenceAlarm& notification)
    {
        return all({{"log 5 Dropping alarm: " + Reference::debugLine(notification)}, statusReplaced()});
    }
};

// --- An active alarm, the same contents

TEST_F(FmAlarmHandlerUpdateTest, aRepetitionIsDroppedAndItsTimeIsRemembered)
{
    raiseOne();

    send(repeated());

    EXPECT_THAT(journal(), ElementsAreArray(all({dropped(repeated()), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(active)));
    EXPECT_EQ(repeated().eventTime, status->get().lastNotificationCheck);
    EXPECT_EQ(linkDown().eventTime, status->get().lastStatefulTimestamp);
    EXPECT_EQ(1U, status->get().lastStatefulSeqNo);
}

TEST_F(FmAlarmHandlerUpdateTest, additionalInformationInAnotherOrderIsTheSame)
{
    start();
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"b", "2"}, {"a", "1"}};
    send(alarm);
    journal();
    ReferenceAlarm again = alarm;
    again.info = {{"a", "1"}, {"b", "2"}};

    send(again);

    EXPECT_THAT(journal(), ElementsAreArray(all({dropped(again), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(alarm, 2, 1, 1, 1))));
}

TEST_F(FmAlarmHandlerUpdateTest, aRepetitionCancelsAPendingCeaseWithoutANotification)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    raiseOne();
    send(linkUp());
    journal();

    send(repeated());

    ReferenceAlarm again = active;
    again.clearEventTime = linkUp().eventTime;
    again.textForClear = "Link up";
    EXPECT_THAT(journal(), ElementsAreArray(all({dropped(repeated()), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(again)));
    pass(60 * second);
    tick();
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerUpdateTest, aStatusThatCannotBeStoredStopsNothing)
{
    raiseOne();
    middleware.lists.failNext("listGetFrontRef FmStatusSection", ZORV_RETURN_FAILED);

    send(repeated());

    EXPECT_THAT(journal(), ElementsAreArray(
                               all({{"log 5 Dropping alarm: " + Reference::debugLine(repeated()),
                                     "listIsEmpty FmStatusSection -> 0 false", "listGetFrontRef FmStatusSection -> -1",
                                     "log 3 Response from replicated listGetFrontRef of FmStatusSection: "
                                     "-1"},
                                    replaced(2)})));
}

// --- An active alarm, other contents

TEST_F(FmAlarmHandlerUpdateTest, anotherSeverityIsReported)
{
    raiseOne();
    ReferenceAlarm change = repeated();
    change.severity = YALT_FM_SEVERITY_WARNING;

    send(change);

    const ReferenceAlarm alarm = updated(change, 2);
    EXPECT_EQ(YALT_FM_SEVERITY_MAJOR, alarm.originalSeverity);
    EXPECT_EQ(linkDown().eventTime, alarm.originalEventTime);
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerUpdateTest, anotherTextIsReported)
{
    raiseOne();
    ReferenceAlarm change = repeated();
    change.text = "Still down";
    change.originalText = "Still down";

    send(change);

    const ReferenceAlarm alarm = updated(change, 2);
    EXPECT_EQ("Link down", alarm.originalText);
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerUpdateTest, otherInformationIsReportedInPlaceOfTheFormer)
{
    start();
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"a", "1"}};
    send(alarm);
    journal();
    ReferenceAlarm change = repeated();
    change.info = {{"a", "1"}, {"a", "1"}};

    send(change);

    alarm = updated(change, 2);
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerUpdateTest, aSeverityOutsideTheTableIsReportedAsItIs)
{
    raiseOne();
    ReferenceAlarm change = repeated();
    change.severity = 6;

    send(change);

    EXPECT_THAT(journal(),
                ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(updated(change, 2)), replaced(2)})));
}

TEST_F(FmAlarmHandlerUpdateTest, aChangeCancelsAPendingCeaseToo)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    raiseOne();
    send(linkUp());
    journal();
    ReferenceAlarm change = repeated();
    change.severity = YALT_FM_SEVERITY_CRITICAL;

    send(change);

    ReferenceAlarm alarm = updated(change, 2);
    alarm.clearEventTime = linkUp().eventTime;
    alarm.textForClear = "Link up";
    EXPECT_THAT(journal(), ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(alarm), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerUpdateTest, whatChangedIsTraced)
{
    start();
    ReferenceAlarm alarm = linkDown();
    alarm.info = {{"slot", "2"}};
    send(alarm);
    journal();
    middleware.journal.showOnly({Topic::Trace});
    ReferenceAlarm change = repeated();
    change.severity = YALT_FM_SEVERITY_WARNING;
    change.text = "Still down";
    change.info = {{"slot", "2"}, {"port", "4"}};

    send(change);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Alarm received: '" + Reference::debugLine(change) + "'",
                                       "trace 8 FM new severity = 2, old severity = 4",
                                       "trace 8 FM new additionalText = Still down, old additionalText = Link down",
                                       "trace 8 FM new additionalInfo = AdditionalInfoSize=2; slot : 2, port : 4, , "
                                       "old additionalInfo = AdditionalInfoSize=1; slot : 2, ",
                                       "trace 8 FM  >> Try to get interface ZorvMwSpiLog", "trace 8 FM  << ",
                                       "trace 8 FM  >> sendNotification",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_3",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_2",
                                       "trace 8 FM  << sendNotification", "trace 8 FM listReplaceItem retval=0 ",
                                       "trace 8 FM  << "));
}

TEST_F(FmAlarmHandlerUpdateTest, aStatelessNotificationUpdatesTheAlarmItMeets)
{
    raiseOne();
    ReferenceAlarm change = repeated();
    change.stateful = false;
    change.text = "Still down";

    send(change);

    EXPECT_THAT(journal(),
                ElementsAreArray(all({contentsDiffer, statusReplaced(), reported(updated(change, 2)), replaced(2)})));
}

// --- An alarm that is not visible

TEST_F(FmAlarmHandlerUpdateTest, aRepetitionInTheRaiseFilterTakesItsContentsAndANewIdentity)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    raiseOne();
    pass(3 * second);
    ReferenceAlarm change = repeated();
    change.text = "Still down";
    change.originalText = change.text;
    change.severity = YALT_FM_SEVERITY_MINOR;
    change.originalSeverity = change.severity;

    send(change);

    EXPECT_THAT(journal(), ElementsAreArray(all({{"log 4 Unexpected alarm raise in state 1"}, replaced(1)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(change, 1, 2, 0, 0))));
    pass(2 * second);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), ElementsAreArray(all({statusPushed(2), reported(listed(change, 2, 2, 1, 1)), replaced(1)})));
}

TEST_F(FmAlarmHandlerUpdateTest, aRepetitionAfterTheRaiseFilterTimeReportsAtOnce)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    raiseOne();
    pass(5 * second);

    send(repeated());

    const ReferenceAlarm alarm = listed(repeated(), 2, 2, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({{"log 4 Unexpected alarm raise in state 1"},
                                                 statusPushed(2),
                                                 reported(alarm),
                                                 replaced(1),
                                                 replaced(1)})));
}

TEST_F(FmAlarmHandlerUpdateTest, aRaiseOfACeasedAlarmIsANewAlarmWithTheOldHistory)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;
    raiseOne();
    send(linkUp());
    journal();

    send(repeated());

    const ReferenceAlarm alarm = listed(repeated(), 3, 2, 3, 3);
    EXPECT_EQ("Link down The alarm is currently toggling.", shownText(alarm));
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(alarm), replaced(2), replaced(2)})));
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

// --- A toggling alarm

TEST_F(FmAlarmHandlerUpdateTest, aChangeOfATogglingAlarmIsIgnored)
{
    config.alarmToggleWindowSize = 60 * second;
    raiseOne();
    ReferenceAlarm change = repeated();
    change.severity = YALT_FM_SEVERITY_CRITICAL;
    change.text = "Still down";
    middleware.journal.show({Topic::Trace});

    send(change);

    const std::string line = Reference::debugLine(change);
    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> Alarm received: '" + line + "'",
                            "trace 8 FM Update on toggling alarm, ignoring alarm: " + line,
                            "log 4 Unexpected alarm raise in state 3", "trace 4 FM Unexpected alarm raise in state 3",
                            "listReplaceItem FmActiveAlarmList2 item2 -> 0", "trace 8 FM listReplaceItem retval=0 ",
                            "trace 8 FM  << "));
    EXPECT_THAT(stored(), ElementsAre(storedText(listed(linkDown(), 3, 1, 1, 1))));
}

TEST_F(FmAlarmHandlerUpdateTest, aRaiseEndsTheSilenceOfATogglingAlarmWithoutANotification)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleSilentTimeout = 10 * second;
    raiseOne();
    send(linkUp());
    journal();

    send(repeated());
    EXPECT_THAT(journal(), ElementsAreArray(replaced(2)));

    pass(60 * second);
    tick();
    EXPECT_THAT(journal(), IsEmpty());
    ReferenceAlarm alarm = listed(linkDown(), 3, 1, 1, 1);
    alarm.clearEventTime = linkUp().eventTime;
    alarm.textForClear = "Link up";
    EXPECT_THAT(stored(), ElementsAre(storedText(alarm)));
}

TEST_F(FmAlarmHandlerUpdateTest, theThirdActivationWithinTheWindowToggles)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 3;
    config.alarmToggleSilentTimeout = 10 * second;
    raiseOne();
    for (std::uint64_t id = 2; id <= 3; ++id) {
        pass(29 * second);
        send(linkUp());
        journal();

        send(repeated());

        const ReferenceAlarm alarm = listed(repeated(), id == 3 ? 3 : 2, id, 2 * id - 1, 2 * id - 1);
        EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(alarm), replaced(2), replaced(2)})));
    }
}

TEST_F(FmAlarmHandlerUpdateTest, activationsOlderThanTheWindowDoNotCount)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 3;
    raiseOne();
    for (std::uint64_t id = 2; id <= 3; ++id) {
        pass(30 * second);
        send(linkUp());
        send(repeated());
    }

    EXPECT_THAT(stored(), ElementsAre(storedText(listed(repeated(), 2, 3, 5, 5))));
}

}  // namespace
}  // namespace ZorvFm
