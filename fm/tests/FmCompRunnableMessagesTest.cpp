/// What the worker does with a batch of messages.
#include <memory>

#include "WorkerTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

const std::string rebuilt = "notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1003 filter=[] noData=0 -> 0";
const std::string readInterval = "getMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 heartbeatInterval -> 0";
const std::string sendingAlarm = "log 5 Sending alarm: dn=";
const std::string suppressingAlarm = "log 5 Suppressing alarm: dn=";

/// A message of a kind that the worker does not know; it tells of its end.
class StrangeMessage : public Zorv::PipeMessage {
public:
    explicit StrangeMessage(int& deathCount) : PipeMessage(7), deaths(deathCount) {}
    ~StrangeMessage() override { ++deaths; }

private:
    int& deaths;
};

/// Handles its batches on the test's thread, without a loop.
class FmCompRunnableMessagesTest : public WorkerTest {
protected:
    FmCompRunnableMessagesTest()
    {
        middleware.router.addConsumer(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3);
        middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
        middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
        worker.start();
        journal();
    }

    template <class... MessageT>
    void handle(MessageT*... messages)
    {
        [[maybe_unused]] const std::tuple<std::unique_ptr<MessageT>...> owned(messages...);
        worker.handleMessages({messages...});
    }

    std::string lastTrace() const { return middleware.trace.last().text; }

    static FmStateChangeMessage* aStateChange(int reason)
    {
        return new FmStateChangeMessage(static_cast<ZorvStateChangeReason>(reason));
    }
};

// --- Order

TEST_F(FmCompRunnableMessagesTest, cmEventsAreHandledOnceAndBeforeTheAlarms)
{
    middleware.journal.showOnly({Topic::Router, Topic::Model});
    middleware.fmModel.setHeartbeatInterval(5);

    handle(new FmNewCmRouterEventMessage, anAlarm("ManagedElement=1,Port=2"), new FmNewCmRouterEventMessage,
           anAlarm("ManagedElement=1,Port=1"), new FmNewCmRouterEventMessage);

    EXPECT_THAT(journal(),
                ElementsAre(readInterval, "newMoIterator ManagedElement=1,SystemFunctions=1,Fm=1 FmAlarmModel -> 0",
                            "nextMo -> -2", "finalizeMoIterator -> 0",
                            "getMoAttribute ManagedElement=1 externalId -> 0", alertSent("ManagedElement=1,Port=2", 1),
                            alertSent("ManagedElement=1,Port=1", 2)));
    EXPECT_EQ(5U, config.getHeartbeatInterval());
    EXPECT_EQ("Events received:  FM=2 CM=3", lastTrace());
}

TEST_F(FmCompRunnableMessagesTest, stateAndSuppressionChangesAreHandledAtOnce)
{
    middleware.fmModel.plantType("1", "1", {});
    middleware.journal.showOnly({Topic::Router, Topic::Log});

    handle(anAlarm("ManagedElement=1,Port=1"), new FmNewAlarmSuppressionMessage(1), new FmNewCmRouterEventMessage,
           aStateChange(1), new FmNewAlarmSuppressionMessage(0), aStateChange(4), new FmNewAlarmSuppressionMessage(1));

    EXPECT_THAT(journal(), ElementsAre("log 5 Activating FmComponent while it is active - ignoring.", rebuilt,
                                       "log 5 Switching over FmComponent while it is active - stopping.",
                                       StartsWith(suppressingAlarm + "ManagedElement=1,Port=1;")));
}

TEST_F(FmCompRunnableMessagesTest, aBatchSavesTheAttributesOnceAtItsEnd)
{
    middleware.fmModel.plantType("1", "1", {});
    handle(anAlarm("ManagedElement=1,Port=1"));
    journal();
    middleware.journal.showOnly({Topic::Router, Topic::Model});

    handle(anAlarm("ManagedElement=1,Port=2"), anAlarm("ManagedElement=1,Port=3", YALT_FM_SEVERITY_MAJOR));

    const std::string write = "setMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 ";
    EXPECT_THAT(journal(),
                ElementsAre(alarmSent("ManagedElement=1,Port=2", 2, 2), alarmSent("ManagedElement=1,Port=3", 3, 3),
                            write + "lastSequenceNo 3 -> 0", write + "lastChanged '2023-11-14T22:13:20.000+00:00' -> 0",
                            write + "totalActive 3 -> 0", write + "sumMajor 3 -> 0"));
}

TEST_F(FmCompRunnableMessagesTest, anEmptyBatchSavesAndCounts)
{
    middleware.journal.showOnly({Topic::Trace});

    handle();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Events received:  FM=0 CM=0"));
}

TEST_F(FmCompRunnableMessagesTest, everyMessageIsTracedInTheOrderOfArrival)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});

    handle(new FmNewAlarmSuppressionMessage(1), new FmNewCmRouterEventMessage, aStateChange(1),
           anAlarm("ManagedElement=1"));

    auto entries = journal();
    EXPECT_EQ("trace 8 FM Events received:  FM=1 CM=1", entries.back());
    entries.resize(5);
    EXPECT_THAT(entries, ElementsAre("trace 8 FM Received notification on NTF_NEW_ALARM_SUPPRESSION",
                                     "trace 8 FM Received notification on CM_ROUTER_EVENT",
                                     "trace 8 FM Received notification on HA_STATE_CHANGED",
                                     "log 5 Activating FmComponent while it is active - ignoring.",
                                     "trace 8 FM Received notification on NTF_NEW_ALARM"));
}

// --- State changes

TEST_F(FmCompRunnableMessagesTest, everyStateChangeHasItsLine)
{
    handle(aStateChange(0), aStateChange(1), aStateChange(2), aStateChange(3), aStateChange(4), aStateChange(5));

    EXPECT_THAT(journal(),
                ElementsAre("log 3 Unknown state (0) is requested for FmComponent while it is active -- ignoring.",
                            "log 5 Activating FmComponent while it is active - ignoring.",
                            "log 5 Deactivating FmComponent while it is active - stopping.",
                            "log 5 Failing over FmComponent while it is active - stopping.",
                            "log 5 Switching over FmComponent while it is active - stopping.",
                            "log 3 Unknown state (5) is requested for FmComponent while it is active -- ignoring."));
}

TEST_F(FmCompRunnableMessagesTest, deactivationFailOverAndSwitchOverEndTheLoop)
{
    for (const int reason : {2, 3, 4}) {
        middleware.journal.showOnly({Topic::Clock});

        run({silence(), arrival(aStateChange(reason)), silence()});

        EXPECT_THAT(journal(), ElementsAre(waiting, waiting)) << reason;
    }
}

TEST_F(FmCompRunnableMessagesTest, activationAndUnknownReasonsDoNotEndTheLoop)
{
    middleware.journal.showOnly({Topic::Clock});

    run({arrival(aStateChange(1), aStateChange(0), aStateChange(5)), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, waiting));
}

TEST_F(FmCompRunnableMessagesTest, aStopHandlesTheRestOfTheBatchAndOfTheRound)
{
    middleware.journal.showOnly({Topic::Clock, Topic::Router, Topic::Log});
    middleware.log.setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_ERROR);
    config.setHeartbeatInterval(60);

    run({arrival(aStateChange(2), new FmNewAlarmSuppressionMessage(1), new FmNewAlarmSuppressionMessage(0),
                 anAlarm("ManagedElement=1,Port=1")),
         silence()});

    EXPECT_THAT(journal(), ElementsAre(rebuilt, waiting, rebuilt, alertSent("ManagedElement=1,Port=1", 1),
                                       StartsWith("notify ZorvOamApiFmHeartbeatEventType_3 consumer=1001 filter=[] ")));
}

// --- CM events

TEST_F(FmCompRunnableMessagesTest, aCmEventMakesTheWorkerReadTypesAndNamesAgain)
{
    middleware.journal.showOnly({Topic::Router});
    handle(anAlarm("ManagedElement=1,Port=1"));
    middleware.fmModel.plantType("1", "1", {});
    middleware.fmModel.setExternalId("paris");

    handle(anAlarm("ManagedElement=1,Port=2"));
    handle(new FmNewCmRouterEventMessage, anAlarm("ManagedElement=1,Port=3"));

    EXPECT_THAT(journal(), ElementsAre(alertSent("ManagedElement=1,Port=1", 1), alertSent("ManagedElement=1,Port=2", 2),
                                       alarmSent("ManagedElement=paris,Port=3", 1, 1)));
}

// --- Alarms

TEST_F(FmCompRunnableMessagesTest, anUpdateThatTheModelForbidsIsIgnored)
{
    ZorvFakes::FmAlarmTypeSpec type;
    type.configuredSeverity = 3;
    middleware.fmModel.plantType("1", "1", type);
    handle(anAlarm("ManagedElement=1,Port=1", YALT_FM_SEVERITY_MINOR));
    journal();
    middleware.journal.showOnly({Topic::Router, Topic::Log, Topic::List, Topic::Record});

    handle(anAlarm("ManagedElement=1,Port=1", YALT_FM_SEVERITY_MAJOR));

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmCompRunnableMessagesTest, anIgnoredUpdateIsTraced)
{
    ZorvFakes::FmAlarmTypeSpec type;
    type.configuredSeverity = 3;
    middleware.fmModel.plantType("1", "1", type);
    handle(anAlarm("ManagedElement=1,Port=1", YALT_FM_SEVERITY_MINOR));
    journal();
    middleware.journal.showOnly({Topic::Trace});

    handle(anAlarm("ManagedElement=1,Port=1", YALT_FM_SEVERITY_MAJOR));

    const auto entries = journal();
    ASSERT_LE(2U, entries.size());
    EXPECT_EQ("trace 8 FM Alarm dn=ManagedElement=1,Port=1; majorType=1; minorType=1; additionalText=; severity=5; "
              "specificProblem=Link failure; seqNo=0; eventTime=1700000000000000000; stateful=1; eventType=2; "
              "probableCause=14; originalSeqNo=0; originalAdditionalText=; originalSeverity=4; "
              "originalEventTime=1700000000000000000; alarmId=0; additionalInfoSize=0 is ignored as the severity only "
              "update is invalid due to configuredSeverityValue",
              entries[entries.size() - 2]);
    EXPECT_EQ("trace 8 FM Events received:  FM=1 CM=0", entries.back());
}

// --- Messages as such

TEST_F(FmCompRunnableMessagesTest, anUnknownMessageIsLoggedAndDropped)
{
    int deaths = 0;
    middleware.journal.showOnly({Topic::Log, Topic::Trace});

    handle(new StrangeMessage(deaths));

    EXPECT_THAT(journal(), ElementsAre("log 4 [libfm.so] -- FmCompRunnable::unknown message received",
                                       "trace 8 FM Events received:  FM=0 CM=0"));
}

TEST_F(FmCompRunnableMessagesTest, theWorkerDeletesTheMessagesBehindTheBatch)
{
    int deaths = 0;
    int deathsInTheNextRound = 0;

    run({arrival(new StrangeMessage(deaths), new StrangeMessage(deaths)), [&] { deathsInTheNextRound = deaths; }});

    EXPECT_EQ(2, deathsInTheNextRound);
    EXPECT_EQ(2, deaths);
}

TEST_F(FmCompRunnableMessagesTest, messagesHaveTheirPublishedNumbers)
{
    const std::unique_ptr<FmNewAlarmMessage> alarm(anAlarm("ManagedElement=1"));

    EXPECT_EQ(5, FmStateChangeMessage(ZORV_STATE_CHANGE_DEACTIVATE).getType());
    EXPECT_EQ(8, alarm->getType());
    EXPECT_EQ(16, FmNewCmRouterEventMessage().getType());
    EXPECT_EQ(22, FmNewAlarmSuppressionMessage(1).getType());
}

}  // namespace
}  // namespace ZorvFm
