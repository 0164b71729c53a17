#include "HandlerTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerStatelessTest : public HandlerTest {
protected:
    /// A notification of a stateless type, as it comes from the connector.
    static ReferenceAlarm login()
    {
        ReferenceAlarm alert = linkDown("ManagedElement=1,Users=1");
        alert.stateful = false;
        alert.minorType = 9;
        alert.severity = YALT_FM_SEVERITY_WARNING;
        alert.originalSeverity = YALT_FM_SEVERITY_WARNING;
        alert.specificProblem = "Login failed";
        alert.text = "user=admin";
        alert.originalText = alert.text;
        return alert;
    }

    static ReferenceAlarm numbered(ReferenceAlarm alert, std::uint64_t seqNo)
    {
        alert.seqNo = seqNo;
        alert.originalSeqNo = seqNo;
        return alert;
    }
};

TEST_F(FmAlarmHandlerStatelessTest, anAlertIsLoggedSentAndThenCounted)
{
    start();

    send(login());

    EXPECT_THAT(
        journal(),
        ElementsAre("record 5 <FmLogRecord>\n"
                    "   <LogTimestamp>2023-11-14T22:13:20.000+00:00</LogTimestamp>\n"
                    "   <Alert>0;2023-11-14T22:13:15.000+00:00;ManagedElement=1,Users=1;1;9;Login failed;14;WARNING;"
                    "user=admin;1;COMMUNICATIONSALARM;2023-11-14T22:13:15.000+00:00;WARNING;user=admin;1;0</Alert>\n"
                    "</FmLogRecord>",
                    "log 5 Sending alert: dn=ManagedElement=1,Users=1; majorType=1; minorType=9; "
                    "additionalText=user=admin; severity=2; specificProblem=Login failed; seqNo=1; "
                    "eventTime=1699999995000000000; stateful=0; eventType=2; probableCause=14; originalSeqNo=1; "
                    "originalAdditionalText=user=admin; originalSeverity=2; originalEventTime=1699999995000000000; "
                    "alarmId=0; additionalInfoSize=0",
                    "notify ZorvOamApiFmNotificationEventType_3 consumer=1001 filter=[] "
                    "{dn='ManagedElement=1,Users=1' majorType=1 minorType=9 eventTime=1699999995000000000 "
                    "additionalText='user=admin' severity=2 additionalInfo=null} stateful=false seqNo=1 eventType=2 "
                    "probableCause=14 specificProblem='Login failed' alarmId=0 originalEventTime=1699999995000000000 "
                    "originalAdditionalText='user=admin' originalSeverity=2 -> 0",
                    "notify ZorvOamApiFmNotificationEventType_2 consumer=1002 filter=[] "
                    "{dn='ManagedElement=1,Users=1' majorType=1 minorType=9 eventTime=1699999995000000000 "
                    "additionalText='user=admin' severity=2 additionalInfo=null} stateful=false seqNo=1 eventType=2 "
                    "probableCause=14 specificProblem='Login failed' originalSeqNo=1 "
                    "originalEventTime=1699999995000000000 originalAdditionalText='user=admin' originalSeverity=2 -> 0",
                    "listIsEmpty FmStatusSection -> 0 true", "log 6 Put initial status item into FmStatusSection list.",
                    "listPushBack FmStatusSection -> 0",
                    "log 6 Successfully executed listPushBack to FmStatusSection: Returned listItemName=item1"));
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(FmAlarmHandlerStatelessTest, isTracedFromBeginningToEnd)
{
    start();
    middleware.journal.showOnly({Topic::Trace});

    send(login());

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Alarm received: '" + Reference::debugLine(login()) + "'",
                                       "trace 8 FM  >> Try to get interface ZorvMwSpiLog", "trace 8 FM  << ",
                                       "trace 8 FM  >> sendNotification",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_3",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_2",
                                       "trace 8 FM  << sendNotification", "trace 8 FM  << "));
}

TEST_F(FmAlarmHandlerStatelessTest, eachRepetitionIsAnAlertOfItsOwn)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    start();
    send(login());
    journal();

    send(login());

    EXPECT_THAT(journal(), ElementsAreArray(all({alerted(numbered(login(), 2)), statusReplaced()})));
}

TEST_F(FmAlarmHandlerStatelessTest, alertsAndAlarmsAreNumberedApart)
{
    start();
    send(login());
    send(login());
    journal();
    ReferenceAlarm late = login();
    late.eventTime += second;

    send(linkDown());
    send(late);

    const ReferenceAlarm alarm = listed(linkDown(), 2, 1, 1, 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({statusReplaced(), reported(alarm), pushed(), replaced(2),
                                                 alerted(numbered(late, 3)), statusReplaced()})));
    EXPECT_EQ(1U, status->get().lastStatefulSeqNo);
    EXPECT_EQ(3U, status->get().lastStatelessSeqNo);
    EXPECT_EQ(linkDown().eventTime, status->get().lastStatefulTimestamp);
    EXPECT_EQ(late.eventTime, status->get().lastStatelessTimestamp);
    EXPECT_EQ(late.eventTime, status->get().lastNotificationCheck);
}

TEST_F(FmAlarmHandlerStatelessTest, everySeverityButClearedIsAnAlert)
{
    start();
    send(login());
    journal();
    std::uint64_t number = 1;
    for (const std::int32_t severity : {1, 3, 4, 5, 6, -1}) {
        ReferenceAlarm alert = login();
        alert.severity = severity;

        send(alert);

        EXPECT_THAT(journal(), ElementsAreArray(all({alerted(numbered(alert, ++number)), statusReplaced()})));
    }
}

TEST_F(FmAlarmHandlerStatelessTest, aClearOfAnAlertIsAClearThatFindsNoAlarm)
{
    start();
    send(login());
    journal();
    ReferenceAlarm clear = login();
    clear.severity = YALT_FM_SEVERITY_CLEARED;

    send(clear);

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerStatelessTest, theNorthboundNameIsReported)
{
    nameElement("node 7");
    start();
    ReferenceAlarm alert = login();
    alert.info = {{"from", "10.0.0.1"}, {"tty", "1"}};

    send(alert);

    alert.dn = "ManagedElement=node 7,Users=1";
    EXPECT_THAT(journal(), ElementsAreArray(all({alerted(numbered(alert, 1)), statusPushed()})));
}

TEST_F(FmAlarmHandlerStatelessTest, leavesNothingToWriteToTheFmObject)
{
    start();

    send(login());
    journal();
    handler->saveVeskFmAttributes();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerStatelessTest, suppressionDoesNotStopAlerts)
{
    start();
    handler->suppressAlarm(ZORV_FM_ALARM_SUPPRESS_ON);

    send(login());

    EXPECT_THAT(journal(), ElementsAreArray(all({alerted(numbered(login(), 1)), statusPushed()})));
}

// --- When the middleware fails

TEST_F(FmAlarmHandlerStatelessTest, withoutAnAlarmLogTheAlertIsSentAllTheSame)
{
    start();
    middleware.portal.withdraw("ZorvMwSpiLog");

    send(login());

    const ReferenceAlarm alert = numbered(login(), 1);
    EXPECT_THAT(journal(), ElementsAreArray(all({{"log 3 ZorvMwSpiLog interface missing; failed to log alarm",
                                                  "log 5 Sending alert: " + Reference::debugLine(alert),
                                                  notification3(alert, consumer3), notification2(alert, consumer2)},
                                                 statusPushed()})));
}

TEST_F(FmAlarmHandlerStatelessTest, aStatusThatCannotBeStoredCountsOn)
{
    start();
    middleware.lists.failNext("listPushBack FmStatusSection", ZORV_RETURN_NO_RESOURCES);

    send(login());
    EXPECT_THAT(journal(),
                ElementsAreArray(all(
                    {alerted(numbered(login(), 1)),
                     {"listIsEmpty FmStatusSection -> 0 true",
                      "log 6 Put initial status item into FmStatusSection list.", "listPushBack FmStatusSection -> -10",
                      "log 3 Response from replicated listPushBack to FmStatusSection: -10"}})));

    send(login());
    EXPECT_THAT(journal(), ElementsAreArray(all({alerted(numbered(login(), 2)), statusPushed()})));
}

TEST_F(FmAlarmHandlerStatelessTest, aRefusedNotificationIsCounted)
{
    start();
    middleware.router.failAlways("notify", ZORV_RETURN_NO_RESOURCES);

    send(login());

    const ReferenceAlarm alert = numbered(login(), 1);
    const auto refused = [](std::string notification) { return notification.erase(notification.size() - 1) + "-10"; };
    EXPECT_THAT(journal(), ElementsAreArray(all(
                               {recordOf(alert),
                                {"log 5 Sending alert: " + Reference::debugLine(alert),
                                 refused(notification3(alert, consumer3)), refused(notification2(alert, consumer2))},
                                statusPushed()})));
}

}  // namespace
}  // namespace ZorvFm
