#include "FmEventProducer.hpp"

#include <thread>

#include "AlarmSamples.hpp"
#include "EventText.hpp"
#include "FmTest.hpp"
#include "Status.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* alarm3 = ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3;
constexpr const char* alarm2 = ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2;
constexpr const char* heartbeat3 = ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3;
constexpr const char* heartbeat2 = ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2;
constexpr const char* rebuilt3 = ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3;
constexpr const char* rebuilt2 = ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2;

class FmEventProducerTest : public FmTest {
protected:
    FmEventProducerTest() { middleware.clock.turnOn(); }
    ~FmEventProducerTest() override { producer.stop(); }

    void start()
    {
        producer.start();
        journal();
    }

    /// A consumer of each type; they count from 1001 in this order.
    void addConsumers()
    {
        for (const char* eventType : {alarm3, heartbeat3, rebuilt3, alarm2, heartbeat2, rebuilt2}) {
            middleware.router.addConsumer(eventType);
        }
    }

    FmEventProducer& producer = FmEventProducer::instance();
    const StatusSection status = {1, 2, 3, 4, 5};
    const ZorvFakes::Journal::Entries thirtyPauses = ZorvFakes::Journal::Entries(30, "sleep 100000000");
};

// --- Starting and stopping

TEST_F(FmEventProducerTest, startAnnouncesTheTypesInTheirOrder)
{
    producer.start();

    EXPECT_THAT(journal(),
                ElementsAre("registerProducer -> 0", "addEventType 1 ZorvOamApiFmNotificationEventType_3 -> 0",
                            "registerProducer -> 0", "addEventType 2 ZorvOamApiFmHeartbeatEventType_3 -> 0",
                            "registerProducer -> 0", "addEventType 3 ZorvOamApiFmAlarmListRebuiltEventType_3 -> 0",
                            "registerProducer -> 0", "addEventType 4 ZorvOamApiFmNotificationEventType_2 -> 0",
                            "registerProducer -> 0", "addEventType 5 ZorvOamApiFmHeartbeatEventType_2 -> 0",
                            "registerProducer -> 0", "addEventType 6 ZorvOamApiFmAlarmListRebuiltEventType_2 -> 0"));
}

TEST_F(FmEventProducerTest, stopTakesTheTypesBackInTheSameOrder)
{
    start();

    producer.stop();

    EXPECT_THAT(
        journal(),
        ElementsAre("removeEventType 1 ZorvOamApiFmNotificationEventType_3 -> 0", "unregisterProducer 1 -> 0",
                    "removeEventType 2 ZorvOamApiFmHeartbeatEventType_3 -> 0", "unregisterProducer 2 -> 0",
                    "removeEventType 3 ZorvOamApiFmAlarmListRebuiltEventType_3 -> 0", "unregisterProducer 3 -> 0",
                    "removeEventType 4 ZorvOamApiFmNotificationEventType_2 -> 0", "unregisterProducer 4 -> 0",
                    "removeEventType 5 ZorvOamApiFmHeartbeatEventType_2 -> 0", "unregisterProducer 5 -> 0",
                    "removeEventType 6 ZorvOamApiFmAlarmListRebuiltEventType_2 -> 0", "unregisterProducer 6 -> 0"));
}

TEST_F(FmEventProducerTest, aTypeThatCannotBeRegisteredLeavesTheOthersAlone)
{
    addConsumers();
    middleware.router.failNext("registerProducer", ZORV_RETURN_FAILED);
    middleware.journal.showOnly({Topic::Log, Topic::Router});

    producer.start();
    EXPECT_THAT(journal(),
                ElementsAre("registerProducer -> -1", "log 3 Could not register event producer",
                            "registerProducer -> 0", "addEventType 1 ZorvOamApiFmHeartbeatEventType_3 -> 0",
                            "registerProducer -> 0", "addEventType 2 ZorvOamApiFmAlarmListRebuiltEventType_3 -> 0",
                            "registerProducer -> 0", "addEventType 3 ZorvOamApiFmNotificationEventType_2 -> 0",
                            "registerProducer -> 0", "addEventType 4 ZorvOamApiFmHeartbeatEventType_2 -> 0",
                            "registerProducer -> 0", "addEventType 5 ZorvOamApiFmAlarmListRebuiltEventType_2 -> 0"));

    producer.sendHeartbeat(status);
    EXPECT_EQ(2U, journal().size());
}

TEST_F(FmEventProducerTest, withoutARouterEveryTypeSaysSo)
{
    start();
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    producer.stop();
    const std::string atStop = "log 3 No event router at stop (wrong stop order)";
    EXPECT_THAT(journal(), ElementsAre(atStop, atStop, atStop, atStop, atStop, atStop));

    producer.start();
    const std::string atStart = "log 3 Could not register event producer";
    EXPECT_THAT(journal(), ElementsAre(atStart, atStart, atStart, atStart, atStart, atStart));
    middleware.offerAll();
}

// --- Alarms

TEST_F(FmEventProducerTest, anAlarmGoesToTheConsumersOfVersion3AndThenToThoseOfVersion2)
{
    start();
    addConsumers();
    middleware.router.addConsumer(alarm3, {{"a", "1"}});

    EXPECT_EQ(0, producer.sendNotification(fullAlarm()));

    const std::string block = "{dn='ManagedElement=1,Slot=2,Port=4' majorType=32473 minorType=4097 "
                              "eventTime=1700000000123456789 additionalText='Link down again' severity=4 "
                              "additionalInfo=['slot'='two','port'='four']} stateful=true seqNo=17 eventType=2 "
                              "probableCause=14 specificProblem='Link failure' ";
    const std::string original =
        " originalEventTime=1690000000000000001 originalAdditionalText='Link down' originalSeverity=3 -> 0";
    EXPECT_THAT(journal(), ElementsAre("notify ZorvOamApiFmNotificationEventType_3 consumer=1001 filter=[] " + block +
                                           "alarmId=6" + original,
                                       "notify ZorvOamApiFmNotificationEventType_3 consumer=1007 filter=[a=1] " +
                                           block + "alarmId=6" + original,
                                       "notify ZorvOamApiFmNotificationEventType_2 consumer=1004 filter=[] " + block +
                                           "originalSeqNo=11" + original));
}

TEST_F(FmEventProducerTest, sendingIsTraced)
{
    start();
    middleware.router.addConsumer(alarm2);
    middleware.router.addConsumer(heartbeat3);
    middleware.journal.showOnly({Topic::Trace});

    producer.sendNotification(fullAlarm());
    producer.sendHeartbeat(status);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> sendNotification",
                                       "trace 8 FM Sending notification ZorvOamApiFmNotificationEventType_2",
                                       "trace 8 FM  << sendNotification", "trace 8 FM  >> sendHeartbeat",
                                       "trace 8 FM Sending notification ZorvOamApiFmHeartbeatEventType_3",
                                       "trace 8 FM  << sendHeartbeat"));
}

TEST_F(FmEventProducerTest, withoutConsumersNothingIsSentAndTheResultIsTheSame)
{
    start();

    EXPECT_EQ(0, producer.sendNotification(fullAlarm()));
    EXPECT_EQ(0, producer.sendHeartbeat(status));

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmEventProducerTest, aRefusedNotificationChangesNoResult)
{
    start();
    addConsumers();
    middleware.router.failAlways("notify", ZORV_RETURN_NO_RESOURCES);

    EXPECT_EQ(0, producer.sendNotification(fullAlarm()));
    EXPECT_EQ(0, producer.sendHeartbeat(status));

    EXPECT_EQ(4U, journal().size());
}

TEST_F(FmEventProducerTest, publishedValuesDoNotChangeWithTheAlarm)
{
    start();
    std::vector<const void*> values;
    const auto keep = [&](const void* value) {
        values.push_back(value);
        return std::string();
    };
    middleware.router.setRenderer(alarm3, keep);
    middleware.router.setRenderer(alarm2, keep);
    addConsumers();
    middleware.router.hold(true);
    auto alarm = std::make_unique<AlarmData>(fullAlarm());
    producer.sendNotification(*alarm);
    ASSERT_EQ(2U, values.size());
    const std::string before3 = ZorvFakes::eventText(alarm3, values[0]);
    const std::string before2 = ZorvFakes::eventText(alarm2, values[1]);

    alarm->dn = alarm->additionalText = alarm->specificProblem = alarm->originalAdditionalText = "changed";
    alarm->additionalInfo.front() = {"changed", "changed"};
    alarm->seqNo = alarm->alarmId = alarm->originalSeqNo = 99;
    alarm.reset();

    EXPECT_EQ(before3, ZorvFakes::eventText(alarm3, values[0]));
    EXPECT_EQ(before2, ZorvFakes::eventText(alarm2, values[1]));
    EXPECT_NE(std::string::npos, before3.find("alarmId=6 "));
    EXPECT_NE(std::string::npos, before2.find("originalSeqNo=11 "));
    middleware.router.hold(false);
}

// --- Heartbeats

TEST_F(FmEventProducerTest, aHeartbeatGoesOutInBothVersions)
{
    start();
    addConsumers();

    EXPECT_EQ(0, producer.sendHeartbeat(status));

    const std::string value =
        "lastStatefulTimestamp=3 lastStatefulSeqNo=1 lastStatelessTimestamp=4 lastStatelessSeqNo=2 -> 0";
    EXPECT_THAT(journal(), ElementsAre("notify ZorvOamApiFmHeartbeatEventType_3 consumer=1002 filter=[] " + value,
                                       "notify ZorvOamApiFmHeartbeatEventType_2 consumer=1005 filter=[] " + value));
}

// --- Alarm list rebuilt

TEST_F(FmEventProducerTest, alarmListRebuiltGoesOutInBothVersions)
{
    start();
    addConsumers();

    producer.sendAlarmListRebuilt();

    EXPECT_THAT(journal(),
                ElementsAre("notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1003 filter=[] noData=0 -> 0",
                            "notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=1006 filter=[] noData=0 -> 0"));
}

TEST_F(FmEventProducerTest, aConsumerOfAlarmsInVersion2IsEnough)
{
    start();
    middleware.router.addConsumer(rebuilt3);
    middleware.router.addConsumer(rebuilt2);
    middleware.router.addConsumer(alarm2);

    producer.sendAlarmListRebuilt();

    EXPECT_THAT(journal(),
                ElementsAre("notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1001 filter=[] noData=0 -> 0",
                            "notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=1002 filter=[] noData=0 -> 0"));
}

TEST_F(FmEventProducerTest, aConsumerOfAlarmsInVersion3IsEnough)
{
    start();
    middleware.router.addConsumer(alarm3);
    middleware.router.addConsumer(rebuilt2);

    producer.sendAlarmListRebuilt();

    EXPECT_THAT(journal(),
                ElementsAre("notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=1002 filter=[] noData=0 -> 0"));
}

TEST_F(FmEventProducerTest, withoutConsumersOfAlarmsNothingIsSentAfterThreeSeconds)
{
    start();
    middleware.router.addConsumer(rebuilt3);
    middleware.router.addConsumer(rebuilt2);
    middleware.router.addConsumer(heartbeat3);
    middleware.router.addConsumer(heartbeat2);
    const std::uint64_t before = middleware.clock.monotonic();

    producer.sendAlarmListRebuilt();

    EXPECT_EQ(thirtyPauses, journal());
    EXPECT_EQ(3000000000U, middleware.clock.monotonic() - before);
}

TEST_F(FmEventProducerTest, whetherAlarmListRebuiltIsSentIsTraced)
{
    start();
    middleware.journal.showOnly({Topic::Trace});

    producer.sendAlarmListRebuilt();
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> sendAlarmListRebuilt", "trace 8 FM  << sendAlarmListRebuilt"));

    addConsumers();
    journal();
    producer.sendAlarmListRebuilt();
    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> sendAlarmListRebuilt", "trace 8 FM Create AlarmListRebuilt notification",
                            "trace 8 FM Sending notification ZorvOamApiFmAlarmListRebuiltEventType_3",
                            "trace 8 FM Sending notification ZorvOamApiFmAlarmListRebuiltEventType_2",
                            "trace 8 FM  << sendAlarmListRebuilt"));
}

/// In real time: the consumer comes from another thread while the sender pauses.
TEST_F(FmEventProducerTest, aConsumerThatComesDuringTheWaitEndsIt)
{
    start();
    middleware.clock.turnOff();
    middleware.router.addConsumer(rebuilt3);
    middleware.journal.showOnly({Topic::Trace});
    std::thread consumer([this] {
        middleware.journal.waitForEntry("trace 8 FM  >> sendAlarmListRebuilt");
        middleware.router.addConsumer(alarm3);
    });

    producer.sendAlarmListRebuilt();
    consumer.join();

    EXPECT_THAT(journal(),
                testing::Contains("trace 8 FM Sending notification ZorvOamApiFmAlarmListRebuiltEventType_3"));
}

// --- Without a start

TEST_F(FmEventProducerTest, beforeItsStartNothingIsSent)
{
    addConsumers();

    EXPECT_EQ(0, producer.sendNotification(fullAlarm()));
    EXPECT_EQ(0, producer.sendHeartbeat(status));
    producer.sendAlarmListRebuilt();

    EXPECT_EQ(thirtyPauses, journal());
}

}  // namespace
}  // namespace ZorvFm
