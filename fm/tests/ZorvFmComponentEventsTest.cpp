/// What the component does with the events of its consumers.
#include <functional>
#include <thread>

#include "ComponentTest.hpp"
#include "FmJournal.hpp"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;
using ZorvFakes::FmJournal::Entries;
using ZorvFakes::FmJournal::Report;

namespace ZorvFm {
namespace {

constexpr const char* dn = "ManagedElement=1,Port=1";
constexpr std::uint64_t eventTime = 1700000000000000000;

/// Of the notifications that carry no time of their own.
constexpr std::uint64_t monotonicTime = 1000000000000;

std::string alarmText(const std::string& text, std::uint64_t nanoseconds, const std::string& info = "0")
{
    const std::string time = std::to_string(nanoseconds);
    return "dn=ManagedElement=1,Port=1; majorType=1; minorType=1; additionalText=" + text +
           "; severity=4; specificProblem=Unknown alarm; seqNo=0; eventTime=" + time +
           "; stateful=0; eventType=1; probableCause=418; originalSeqNo=0; originalAdditionalText=" + text +
           "; originalSeverity=4; originalEventTime=" + time + "; alarmId=0; additionalInfoSize=" + info;
}

class ZorvFmComponentEventsTest : public ComponentTest {
protected:
    /// Starts, and from then on shows what goes northbound and what is logged as a warning or worse.
    void startQuietly()
    {
        start();
        middleware.log.setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_WARNING);
        middleware.journal.showOnly({Topic::Router, Topic::Log});
        journal();
    }

    template <class EventT>
    void fire(const char* eventType, EventT event)
    {
        EXPECT_THAT(middleware.router.fire(eventType, &event), ElementsAre(0));
        waitForWorker();
    }

    /// What a callback traces and logs while nobody works.
    Entries traced(const std::function<void()>& callback)
    {
        middleware.journal.showOnly({Topic::Trace, Topic::Log});
        callback();
        return journal();
    }

    /// The first report of the notification's alarm.
    static Report reported(std::uint64_t time, const std::string& text)
    {
        Report report;
        report.dn = dn;
        report.eventTime = report.originalEventTime = time;
        report.additionalText = report.originalAdditionalText = text;
        return report;
    }
};

// --- FM notifications of both frameworks

TEST_F(ZorvFmComponentEventsTest, takesVersion1OfBothFrameworks)
{
    startQuietly();
    const YaltOamSpiNotificationFmStruct first{dn, 1, 1, "down", 4};
    const YaltOamSpiNotificationFmStruct second{dn, 1, 1, "down again", 4};

    fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, first);
    Report report = reported(monotonicTime, "down");
    EXPECT_THAT(journal(), ElementsAre(report.version3(1001)));

    fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, second);
    report.seqNo = 2;
    report.additionalText = "down again";
    EXPECT_THAT(journal(), ElementsAre(report.version3(1001)));
}

TEST_F(ZorvFmComponentEventsTest, takesVersion2OfTheFirstFramework)
{
    startQuietly();

    fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, YaltOamSpiNotificationFmStruct_2{dn, 1, 1, eventTime, "a", 4});

    EXPECT_THAT(journal(), ElementsAre(reported(eventTime, "a").version3(1001)));
}

TEST_F(ZorvFmComponentEventsTest, takesVersion2OfTheSecondFramework)
{
    startQuietly();

    fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, YaltOamSpiNotificationFmStruct_2{dn, 1, 1, eventTime, "b", 4});

    EXPECT_THAT(journal(), ElementsAre(reported(eventTime, "b").version3(1001)));
}

TEST_F(ZorvFmComponentEventsTest, takesVersion4OfTheSecondFramework)
{
    startQuietly();
    const YaltOamSpiFmAdditionalInfoEntry entries[] = {{"slot", "3"}, {"board", nullptr}};

    fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4,
         YaltOamSpiNotificationFmStruct_4{dn, 1, 1, eventTime, nullptr, 4, {entries, 2}});

    Report report = reported(eventTime, "");
    report.additionalInfo = {{"slot", "3"}, {"board", ""}};
    EXPECT_THAT(journal(), ElementsAre(report.version3(1001)));
}

TEST_F(ZorvFmComponentEventsTest, nothingOfANotificationIsKept)
{
    startQuietly();
    std::string texts[] = {dn, "down", "slot", "3"};
    const YaltOamSpiFmAdditionalInfoEntry entry{texts[2].c_str(), texts[3].c_str()};
    YaltOamSpiNotificationFmStruct_4 event{texts[0].c_str(), 1, 1, eventTime, texts[1].c_str(), 4, {&entry, 1}};
    stop();

    component.notifyFmEvent4("", &event);
    for (std::string& text : texts) {
        text.assign(text.size(), '?');
    }
    event = {};
    journal();
    middleware.journal.hide({Topic::Log});
    start();

    Report report = reported(eventTime, "down");
    report.additionalInfo = {{"slot", "3"}};
    EXPECT_EQ(report.version3(1001), journal().back());
}

// --- Their traces

TEST_F(ZorvFmComponentEventsTest, everyVersionTracesWhatItReceived)
{
    YaltOamSpiNotificationFmStruct version1{dn, 1, 1, "x", 4};
    YaltOamSpiNotificationFmStruct_2 version2{dn, 1, 1, eventTime, "x", 4};
    const YaltOamSpiFmAdditionalInfoEntry entry{"slot", "3"};
    YaltOamSpiNotificationFmStruct_4 version4{dn, 1, 1, eventTime, "x", 4, {&entry, 1}};

    EXPECT_THAT(traced([&] { component.notifyFmEvent1("AnyType", &version1); }),
                ElementsAre("trace 8 FM Alarm received (v1): " + alarmText("x", monotonicTime)));
    EXPECT_THAT(traced([&] { component.notifyFmEvent2("AnyType", &version2); }),
                ElementsAre("trace 8 FM Alarm received (v2): " + alarmText("x", eventTime)));
    EXPECT_THAT(traced([&] { component.notifyFmEvent4("AnyType", &version4); }),
                ElementsAre("trace 8 FM Alarm received (v4): " + alarmText("x", eventTime, "1; slot; 3")));
}

TEST_F(ZorvFmComponentEventsTest, textsOfANotificationAreNeverFormats)
{
    YaltOamSpiNotificationFmStruct_2 event{dn, 1, 1, eventTime, "%s%n%d", 4};

    EXPECT_THAT(traced([&] { component.notifyFmEvent2("AnyType", &event); }),
                ElementsAre("trace 8 FM Alarm received (v2): " + alarmText("%s%n%d", eventTime)));
}

// --- Invalid notifications

template <class NotificationT>
std::vector<NotificationT> invalidNotifications()
{
    NotificationT nullDn{};
    NotificationT emptyDn{};
    emptyDn.dn = "";
    return {nullDn, emptyDn};
}

TEST_F(ZorvFmComponentEventsTest, anInvalidNotificationOfVersion1IsRefused)
{
    const auto refused = ElementsAre("log 3 Invalid argument for notify of Alarm V1");

    EXPECT_THAT(traced([&] { component.notifyFmEvent1("AnyType", nullptr); }), refused);
    for (auto& event : invalidNotifications<YaltOamSpiNotificationFmStruct>()) {
        EXPECT_THAT(traced([&] { component.notifyFmEvent1("AnyType", &event); }), refused);
    }
}

TEST_F(ZorvFmComponentEventsTest, anInvalidNotificationOfVersion2IsRefused)
{
    const auto refused = ElementsAre("log 3 Invalid argument for notify Alarm v2");

    EXPECT_THAT(traced([&] { component.notifyFmEvent2("AnyType", nullptr); }), refused);
    for (auto& event : invalidNotifications<YaltOamSpiNotificationFmStruct_2>()) {
        EXPECT_THAT(traced([&] { component.notifyFmEvent2("AnyType", &event); }), refused);
    }
}

TEST_F(ZorvFmComponentEventsTest, anInvalidNotificationOfVersion4IsRefused)
{
    const auto refused = ElementsAre("log 3 Invalid argument for notify Alarm v4");

    EXPECT_THAT(traced([&] { component.notifyFmEvent4("AnyType", nullptr); }), refused);
    for (auto& event : invalidNotifications<YaltOamSpiNotificationFmStruct_4>()) {
        EXPECT_THAT(traced([&] { component.notifyFmEvent4("AnyType", &event); }), refused);
    }
}

TEST_F(ZorvFmComponentEventsTest, anInvalidNotificationCreatesNoMessage)
{
    startQuietly();

    fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YaltOamSpiNotificationFmStruct{"", 1, 1, "x", 4});
    EXPECT_THAT(middleware.router.fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, nullptr), ElementsAre(0));
    EXPECT_THAT(middleware.router.fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, nullptr), ElementsAre(0));
    waitForWorker();

    EXPECT_THAT(journal(), ElementsAre("log 3 Invalid argument for notify of Alarm V1",
                                       "log 3 Invalid argument for notify Alarm v2",
                                       "log 3 Invalid argument for notify Alarm v4"));
}

// --- Suppression

TEST_F(ZorvFmComponentEventsTest, theEndOfSuppressionRebuildsTheAlarmList)
{
    middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
    startQuietly();

    fire<ZorvOamSpiFmAlarmSuppressType_1>(ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1, 1);
    EXPECT_THAT(journal(), IsEmpty());

    fire<ZorvOamSpiFmAlarmSuppressType_1>(ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1, 2);
    EXPECT_THAT(journal(),
                ElementsAre("notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1002 filter=[] noData=0 -> 0"));
}

TEST_F(ZorvFmComponentEventsTest, onlyTheValue1TurnsSuppressionOn)
{
    const auto tracedFor = [this](ZorvOamSpiFmAlarmSuppressType_1 value) {
        return traced([&] { component.notifyFmAlarmSuppressionEvent("AnyType", &value); });
    };

    EXPECT_THAT(tracedFor(1), ElementsAre("trace 8 FM Alarm suppression received: ON"));
    for (const int value : {0, 2, -1}) {
        EXPECT_THAT(tracedFor(value), ElementsAre("trace 8 FM Alarm suppression received: OFF")) << value;
    }
}

TEST_F(ZorvFmComponentEventsTest, aSuppressionWithoutValueIsRefused)
{
    EXPECT_THAT(traced([&] { component.notifyFmAlarmSuppressionEvent("AnyType", nullptr); }),
                ElementsAre("log 3 Invalid argument for notify Alarm suppression"));
}

// --- Configuration changes

TEST_F(ZorvFmComponentEventsTest, aConfigurationChangeMakesTheWorkerReadTheModelAgain)
{
    start();
    journal();

    fire(YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1, YaltOamSpiCmEvent_Notification_1T{});

    EXPECT_THAT(journal(), ElementsAre("createTransaction 1 60 -> 0",
                                       "getMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 heartbeatInterval -> 0",
                                       "abortTransaction -> 0"));
}

TEST_F(ZorvFmComponentEventsTest, aConfigurationChangeBeforeTheStartOrAfterTheStopIsDropped)
{
    const auto dropped = ElementsAre("trace 8 FM Received a notification after stop()");
    middleware.journal.show({Topic::Trace});
    component.notifyCmEvent({});
    EXPECT_THAT(journal(), dropped);

    start();
    stop();
    journal();
    component.notifyCmEvent({});
    EXPECT_THAT(journal(), dropped);

    start();
    EXPECT_EQ(1U, middleware.objects.calls("getMoAttribute") / 2) << "each start reads once, and nothing else";
}

// --- Notifications without a worker

TEST_F(ZorvFmComponentEventsTest, whatIsLeftBehindAStopIsHandledByTheNextWorker)
{
    startQuietly();
    stop();
    YaltOamSpiNotificationFmStruct_2 event{dn, 1, 1, eventTime, "late", 4};
    ZorvOamSpiFmAlarmSuppressType_1 off = 0;

    component.notifyFmEvent2("", &event);
    component.notifyFmAlarmSuppressionEvent("", &off);
    middleware.journal.showOnly({Topic::Record, Topic::Log});
    middleware.log.setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_ERROR);
    journal();
    start();

    EXPECT_THAT(journal(), ElementsAre(reported(eventTime, "late").record("2023-11-14T22:13:20.000+00:00")));
}

// --- Many threads

TEST_F(ZorvFmComponentEventsTest, takesEventsFromManyThreadsWhileItStartsAndStops)
{
    constexpr int eventsPerThread = 200;
    middleware.journal.showOnly({Topic::Router});
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t) {
        threads.emplace_back([this, t] {
            for (int i = 0; i < eventsPerThread; ++i) {
                const std::string source = "Port=" + std::to_string(t) + "-" + std::to_string(i);
                YaltOamSpiNotificationFmStruct_2 event{source.c_str(), 7, 7, eventTime, "", 4};
                component.notifyFmEvent2("", &event);
                component.notifyCmEvent({});
            }
        });
    }

    for (int cycle = 0; cycle < 10; ++cycle) {
        EXPECT_EQ(0, component.start(ZORV_STATE_CHANGE_ACTIVATE));
        EXPECT_EQ(0, stop());
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    start();

    const auto entries = journal();
    EXPECT_EQ(3 * eventsPerThread, std::count_if(entries.begin(), entries.end(), [](const std::string& entry) {
                  return entry.compare(0, 42, "notify ZorvOamApiFmNotificationEventType_3") == 0;
              }));
}

}  // namespace
}  // namespace ZorvFm
