/// From an application's notification to what management sees, through the loaded library.
#include <chrono>

#include "FmJournal.hpp"
#include "IntegrationTest.hpp"
#include "YaltOamSpiCmEvent_1.h"
#include "ZorvOamSpiFmAlarmSuppress_1.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using ZorvFakes::Topic;
using namespace ZorvFakes::FmJournal;

namespace ZorvIntegration {
namespace {

const Entries rebuilt = {"notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1005 filter=[] noData=0 -> 0",
                         "notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=1006 filter=[] noData=0 -> 0"};

Entries heartbeat(const std::string& fields)
{
    return {"notify ZorvOamApiFmHeartbeatEventType_3 consumer=1003 filter=[] " + fields + " -> 0",
            "notify ZorvOamApiFmHeartbeatEventType_2 consumer=1004 filter=[] " + fields + " -> 0"};
}

std::uint64_t monotonicNow()
{
    return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
}

/// The time that a notification shows as its event time.
std::uint64_t eventTimeOf(const std::string& notification)
{
    const std::string field = " eventTime=";
    const std::size_t place = notification.find(field);
    return place == std::string::npos ? 0 : std::stoull(notification.substr(place + field.size()));
}

std::string timeText(std::uint64_t nanoseconds)
{
    const auto seconds = static_cast<std::time_t>(nanoseconds / 1000000000);
    char text[80];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", std::gmtime(&seconds));
    std::snprintf(text + length, sizeof text - length, ".%03u+00:00",
                  static_cast<unsigned>(nanoseconds / 1000000 % 1000));
    return text;
}

/// The library is up, and its first heartbeat is sent; the journal shows what goes northbound, the alarm log and the log.
class EndToEndTest : public IntegrationTest {
protected:
    EndToEndTest()
    {
        middleware.fmModel.plant();
        middleware.fmModel.plantType("1", "1", {});
        for (const char* type :
             {ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2,
              ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3, ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2,
              ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3, ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2}) {
            middleware.router.addConsumer(type);
        }
        middleware.log.setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE);
        EXPECT_EQ(0, library.initialize(configFile()));
        middleware.journal.take();
        middleware.journal.showOnly({Topic::Router, Topic::Record, Topic::Log});
        library.start();
        modelChanged();
        started = takeUpTo("notify ZorvOamApiFmHeartbeatEventType_2 consumer=1004 filter=[] " + nothingSent + " -> 0");
    }

    ~EndToEndTest() override
    {
        library.stop();
        library.terminate();
    }

    Entries takeUpTo(const std::string& last) { return IntegrationTest::takeUpTo(last, middleware.journal); }

    /// Takes the whole journal, once the last of what is expected has come.
    void expect(const Entries& expected) { EXPECT_THAT(takeUpTo(expected.back()), ElementsAreArray(expected)); }

    template <class EventT>
    void fire(const char* eventType, EventT event)
    {
        EXPECT_THAT(middleware.router.fire(eventType, &event), ElementsAre(0));
    }

    void notify(const std::string& dn, int severity, const char* text = "", std::uint32_t majorType = 1)
    {
        fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
             YaltOamSpiNotificationFmStruct_2{dn.c_str(), majorType, 1, timeOfAlarms, text, severity});
    }

    void suppress(ZorvOamSpiFmAlarmSuppressType_1 value) { fire(ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1, value); }

    void modelChanged() { fire(YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1, YaltOamSpiCmEvent_Notification_1T{}); }

    /// A first report; the two numbers count on from alarm to alarm.
    static Report raised(const std::string& dn, std::uint64_t alarmId, std::uint64_t seqNo)
    {
        Report report;
        report.dn = dn;
        report.alarmId = alarmId;
        report.seqNo = report.originalSeqNo = seqNo;
        return report;
    }

    static Report cleared(Report report, std::uint64_t seqNo)
    {
        report.severity = 0;
        report.seqNo = seqNo;
        return report;
    }

    static Report alert(const std::string& dn, std::uint64_t seqNo)
    {
        Report report = raised(dn, 0, seqNo);
        report.stateful = false;
        report.eventType = 1;
        report.eventTypeText = "OTHER";
        report.probableCause = 418;
        report.specificProblem = "FM Unknown Alarm";
        return report;
    }

    /// The alert before anything is known about its type.
    static Report received(Report report)
    {
        report.specificProblem = "Unknown alarm";
        report.seqNo = report.originalSeqNo = 0;
        return report;
    }

    /// The alert as log lines show it.
    static std::string shown(const Report& alert) { return alert.line().substr(sizeof("log 5 Sending alert: ") - 1); }

    static Entries sent(const Report& report)
    {
        return {report.record("now"), report.line(), report.version3(1001), report.version2(1002)};
    }

    /// The managed objects as a management client reads them in a transaction: "FmAlarm=1 attribute=value ..".
    Entries readAlarms(const std::vector<const char*>& attributes)
    {
        const auto& objects = table<YaltOamSpiManagedObject_3T>("YaltOamSpiManagedObject");
        const auto& resource = table<YaltOamSpiTransactionalResource_1T>("YaltOamSpiTransactionalResource");
        const unsigned long txHandle = middleware.transactions.open();
        EXPECT_EQ(0, resource.join(txHandle));
        std::uint64_t iterator = 0;
        EXPECT_EQ(0, objects.newMoIterator(txHandle, middleware.fmModel.fmDn, "FmAlarm", &iterator));
        Entries alarms;
        const char* name = nullptr;
        while (objects.nextMo(iterator, &name) == 0) {
            const std::string dn = std::string(middleware.fmModel.fmDn) + "," + name;
            alarms.push_back(name + readAttributes(objects, txHandle, dn, attributes));
        }
        EXPECT_EQ(0, objects.finalizeMoIterator(iterator));
        EXPECT_EQ(0, middleware.transactions.commitTransaction(txHandle));
        return alarms;
    }

    static std::string readAttributes(const YaltOamSpiManagedObject_3T& objects, unsigned long txHandle,
                                      const std::string& dn, std::vector<const char*> attributes)
    {
        attributes.push_back(nullptr);
        YaltOamSpiMoAttributesResult_3T results{};
        EXPECT_EQ(0, objects.getMoAttributes(txHandle, dn.c_str(), attributes.data(), &results));
        std::string text;
        for (std::uint32_t i = 0; i < results.numberOfAttributes; ++i) {
            text +=
                std::string(" ") + attributes[i] + "=" + ZorvFakes::MoValue::fromC(results.attributes[i]).toString();
        }
        EXPECT_EQ(0, results.releaseAttributesResultCB(&results));
        return text;
    }

    template <class TableT>
    const TableT& table(const char* name)
    {
        const void* found = nullptr;
        EXPECT_EQ(0, middleware.portal.getInterface("ZorvFmMoImplComponent", name, nullptr, &found));
        return *static_cast<const TableT*>(found);
    }

    const std::string nothingSent =
        "lastStatefulTimestamp=0 lastStatefulSeqNo=0 lastStatelessTimestamp=0 lastStatelessSeqNo=0";
    ZorvFakes::Middleware middleware;
    FmLibrary library{middleware};
    Entries started;
};

// --- What comes in

TEST_F(EndToEndTest, theStartAnnouncesTheListAndBeats)
{
    const auto isNorthbound = [](const std::string& entry) { return entry.compare(0, 7, "notify ") == 0; };
    Entries northbound;
    std::copy_if(started.begin(), started.end(), std::back_inserter(northbound), isNorthbound);

    EXPECT_THAT(northbound, ElementsAreArray(all({rebuilt, heartbeat(nothingSent)})));
}

TEST_F(EndToEndTest, version1OfBothFrameworksGoesNorthboundWithTheTimeOfItsArrival)
{
    std::uint64_t number = 0;
    for (const char* type : {ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1}) {
        const std::uint64_t before = monotonicNow();
        fire(type, YaltOamSpiNotificationFmStruct{type, 1, 1, "", 4});
        const std::uint64_t after = monotonicNow();
        ASSERT_TRUE(middleware.journal.waitFor([](const Entries& entries) { return entries.size() == 4; }));
        const Entries entries = withoutTimeOfDay(middleware.journal.take());

        ++number;
        Report report = raised(type, number, number);
        report.eventTime = report.originalEventTime = eventTimeOf(entries[2]);
        report.eventTimeText = report.originalEventTimeText = timeText(report.eventTime);
        EXPECT_THAT(entries, ElementsAreArray(sent(report)));
        EXPECT_THAT(report.eventTime, AllOf(Ge(before), Le(after)));
    }
}

TEST_F(EndToEndTest, version2OfBothFrameworksGoesNorthbound)
{
    const YaltOamSpiNotificationFmStruct_2 first{"Port=1", 1, 1, timeOfAlarms, "", 4};
    const YaltOamSpiNotificationFmStruct_2 second{"Port=2", 1, 1, timeOfAlarms, "", 4};

    fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, first);
    expect(sent(raised("Port=1", 1, 1)));
    fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, second);
    expect(sent(raised("Port=2", 2, 2)));
}

TEST_F(EndToEndTest, version4GoesNorthboundWithItsAdditionalInformation)
{
    const YaltOamSpiFmAdditionalInfoEntry info[] = {{"slot", "3"}, {"board", "x"}};

    fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4,
         YaltOamSpiNotificationFmStruct_4{"Port=1", 1, 1, timeOfAlarms, "hot", 3, {info, 2}});

    Report report = raised("Port=1", 1, 1);
    report.additionalText = report.originalAdditionalText = "hot";
    report.severity = report.originalSeverity = 3;
    report.additionalInfo = {{"slot", "3"}, {"board", "x"}};
    expect(sent(report));
}

TEST_F(EndToEndTest, anAlarmIsRaisedChangedAndCleared)
{
    notify("Port=1", 4, "down");
    Report report = raised("Port=1", 1, 1);
    report.additionalText = report.originalAdditionalText = "down";
    expect(sent(report));

    notify("Port=1", 5, "still down");
    report.severity = 5;
    report.seqNo = 2;
    report.additionalText = "still down";
    const Entries changed = sent(report);
    expect(all({{"log 5 Same alarm but new severity, additional text or additional info."}, changed}));

    notify("Port=1", 0, "up");
    report.additionalText = "up";
    expect(sent(cleared(report, 3)));
}

TEST_F(EndToEndTest, anAlertOfAnUnknownTypeIsSentOnce)
{
    notify("Login=1", 4, "", 77);

    Report report = alert("Login=1", 1);
    report.majorType = 77;
    expect(all({{"log 4 Could not find alarm (" + shown(received(report)) + ")"}, sent(report)}));
    EXPECT_THAT(readAlarms({"fmAlarmId"}), IsEmpty());
}

TEST_F(EndToEndTest, aClearOfAnUnknownTypeGoesOutAsAWarning)
{
    notify("Login=1", 0, "", 77);

    Report report = alert("Login=1", 1);
    report.majorType = 77;
    report.severity = report.originalSeverity = 2;
    Report asClear = received(report);
    asClear.severity = asClear.originalSeverity = 0;
    Report asWarning = received(report);
    asWarning.specificProblem = report.specificProblem;
    expect(all({{"log 4 Could not find alarm (" + shown(asClear) + ")",
                 "log 4 Severity cleared for this unknown alarm is changed to warning: " + shown(asWarning)},
                sent(report)}));
    EXPECT_THAT(readAlarms({"fmAlarmId"}), IsEmpty());
}

TEST_F(EndToEndTest, aClearByPatternEndsAllAlarmsThatMatch)
{
    for (const std::uint64_t number : {1U, 2U, 3U}) {
        notify("Port=" + std::to_string(number), 4);
        expect(sent(raised("Port=" + std::to_string(number), number, number)));
    }

    notify("^Port=[13]$", 0);

    expect(all({sent(cleared(raised("Port=1", 1, 1), 4)), sent(cleared(raised("Port=3", 3, 3), 5))}));
    EXPECT_THAT(readAlarms({"source"}), ElementsAre("FmAlarm=2 source='Port=2'"));
}

// --- What management reads

TEST_F(EndToEndTest, theActiveAlarmsAreReadThroughTheirObjects)
{
    const YaltOamSpiFmAdditionalInfoEntry info{"slot", "3"};
    fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4,
         YaltOamSpiNotificationFmStruct_4{"Port=1", 1, 1, timeOfAlarms + 1500000000, "hot", 3, {&info, 1}});
    notify("Port=2", 5);
    Report report = raised("Port=2", 2, 2);
    report.severity = report.originalSeverity = 5;
    takeUpTo(report.version2(1002));

    EXPECT_THAT(
        readAlarms({"fmAlarmId", "source", "lastEventTime", "sequenceNumber", "activeSeverity", "additionalText",
                    "majorType", "minorType", "specificProblem", "probableCause", "additionalInfo", "originalSeverity",
                    "originalAdditionalText", "originalEventTime", "eventType"}),
        ElementsAre("FmAlarm=1 fmAlarmId='1' source='Port=1' lastEventTime='2023-11-14T22:13:21.500+00:00' "
                    "sequenceNumber=1 activeSeverity=5 additionalText='hot' majorType=1 minorType=1 "
                    "specificProblem='Link failure' probableCause=14 additionalInfo={name='slot' value='3'} "
                    "originalSeverity=5 originalAdditionalText='hot' "
                    "originalEventTime='2023-11-14T22:13:21.500+00:00' eventType=2",
                    "FmAlarm=2 fmAlarmId='2' source='Port=2' lastEventTime='2023-11-14T22:13:20.000+00:00' "
                    "sequenceNumber=2 activeSeverity=3 additionalText='' majorType=1 minorType=1 "
                    "specificProblem='Link failure' probableCause=14 additionalInfo=none originalSeverity=3 "
                    "originalAdditionalText='' originalEventTime='2023-11-14T22:13:20.000+00:00' eventType=2"));
}

TEST_F(EndToEndTest, theFmObjectShowsNumbersAndCounters)
{
    notify("Port=1", 5);
    notify("Port=2", 2);
    notify("Port=3", 3);
    notify("Port=1", 0);

    library.stop();

    EXPECT_EQ("lastSequenceNo=4 lastChanged='2023-11-14T22:13:20.000+00:00' totalActive=2 sumCritical=0 sumMajor=0 "
              "sumMinor=1 sumWarning=1",
              middleware.fmModel.summary());
}

// --- Suppression

TEST_F(EndToEndTest, suppressionLetsOnlyCriticalAlarmsPass)
{
    suppress(1);
    notify("Port=1", 4);
    Report hidden = raised("Port=1", 1, 0);
    const std::string text = hidden.line().substr(std::string("log 5 Sending alarm: ").size());
    expect({"log 5 Suppressing alarm: " + text, hidden.record("now")});

    notify("Port=2", 5);
    Report critical = raised("Port=2", 2, 1);
    critical.severity = critical.originalSeverity = 5;
    expect(sent(critical));
    notify("Port=2", 0);
    expect(sent(cleared(critical, 2)));

    EXPECT_THAT(readAlarms({"source", "sequenceNumber"}), ElementsAre("FmAlarm=1 source='Port=1' sequenceNumber=none"));
    suppress(0);
    expect(rebuilt);
}

// --- Model changes

TEST_F(EndToEndTest, aModelChangeTakesEffectWithItsEvent)
{
    ZorvFakes::FmAlarmTypeSpec fan;
    fan.majorType = 5;
    fan.eventType = 5;
    fan.probableCause = 107;
    fan.specificProblem = "Fan failure";
    fan.configuredSeverity = 3;
    notify("ManagedElement=1,Port=1", 4);
    expect(sent(raised("ManagedElement=1,Port=1", 1, 1)));
    middleware.fmModel.plantType("2", "1", fan);
    middleware.fmModel.setExternalId("paris");
    modelChanged();

    notify("ManagedElement=1,Fan=1", 2, "slow", 5);

    Report report = raised("ManagedElement=paris,Fan=1", 2, 2);
    report.majorType = 5;
    report.eventType = 5;
    report.eventTypeText = "EQUIPMENTALARM";
    report.probableCause = 107;
    report.specificProblem = "Fan failure";
    report.additionalText = report.originalAdditionalText = "slow";
    report.severity = report.originalSeverity = 5;
    expect(sent(report));
    EXPECT_THAT(readAlarms({"source"}),
                ElementsAre("FmAlarm=1 source='ManagedElement=1,Port=1'", "FmAlarm=2 source='ManagedElement=1,Fan=1'"));
}

}  // namespace
}  // namespace ZorvIntegration
