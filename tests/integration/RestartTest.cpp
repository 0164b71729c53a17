#include <optional>

#include "FmJournal.hpp"
#include "IntegrationTest.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using ZorvFakes::Topic;
using namespace ZorvFakes::FmJournal;

namespace ZorvIntegration {
namespace {

const std::string anHour = "<transientRaiseAlarmFilterTime>3600</transientRaiseAlarmFilterTime>"
                           "<transientCeaseAlarmFilterTime>3600</transientCeaseAlarmFilterTime>";
const std::string alarmTime = std::to_string(timeOfAlarms);

/// The node's lists outlive the library, which comes and goes.
class RestartTest : public IntegrationTest {
protected:
    RestartTest()
    {
        middleware.fmModel.plant();
        middleware.fmModel.plantType("1", "1", {});
        middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
        middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2);
    }

    ~RestartTest() override
    {
        if (library) {
            unload();
        }
    }

    void initialize(const std::string& parameters)
    {
        configure(parameters);
        EXPECT_EQ(0, library->initialize(configFile()));
    }

    /// Loads and starts the library.
    void load(const std::string& parameters)
    {
        library.emplace(middleware);
        initialize(parameters);
        library->start();
    }

    void unload()
    {
        library->stop();
        EXPECT_EQ(0, library->terminate());
        library.reset();
        EXPECT_FALSE(FmLibrary::isLoaded());
    }

    void notify(const std::string& dn, int severity, std::uint32_t minorType = 1)
    {
        YaltOamSpiNotificationFmStruct_2 event{dn.c_str(), 1, minorType, timeOfAlarms, "", severity};
        EXPECT_THAT(middleware.router.fire(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, &event), ElementsAre(0));
    }

    Entries takeUpTo(const std::string& last) { return IntegrationTest::takeUpTo(last, middleware.journal); }

    /// Everything so far is over when this has been read.
    void settle() { takeUpTo("abortTransaction -> 0"); }

    /// A first life: two alarms reported, and an alert.
    void liveWithTwoAlarms()
    {
        load("");
        settle();
        notify("Port=1", 4);
        takeUpTo("commitTransaction -> 0");
        notify("Port=2", 4);
        takeUpTo("commitTransaction -> 0");
        notify("Login=1", 4, 99);
        takeUpTo("listGetFinalize FmStatusSection -> 0");
    }

    /// A life in which the first of them ceases and a third is raised; neither filter runs out.
    void liveWithPendingFilters()
    {
        settle();
        notify("Port=3", 4);
        takeUpTo("listPushBack FmActiveAlarmList2 -> 0");
        notify("Port=1", 0);
        takeUpTo("listReplaceItem FmActiveAlarmList2 item2 -> 0");
    }

    static Report reported(const std::string& dn, std::uint64_t alarmId, std::uint64_t seqNo)
    {
        Report report;
        report.dn = dn;
        report.alarmId = alarmId;
        report.seqNo = report.originalSeqNo = seqNo;
        return report;
    }

    /// The first alarm's end.
    static Report firstCleared(std::uint64_t seqNo)
    {
        Report report = reported("Port=1", 1, seqNo);
        report.originalSeqNo = 1;
        report.severity = 0;
        return report;
    }

    static Entries sent(const Report& report)
    {
        return {report.record("now"), report.line(), report.version3(1001), report.version2(1002)};
    }

    /// Northbound without log lines.
    static Entries northbound(const Report& report)
    {
        return {report.record("now"), report.version3(1001), report.version2(1002)};
    }

    ZorvFakes::Middleware middleware;
    std::optional<FmLibrary> library;
};

TEST_F(RestartTest, aReloadedLibraryFindsItsAlarmsAndCompletesWhatWasPending)
{
    liveWithTwoAlarms();
    unload();
    load(anHour);
    liveWithPendingFilters();
    unload();
    middleware.journal.take();

    load(anHour);

    const Entries statusStored = {"listIsEmpty FmStatusSection -> 0 false",
                                  "listGetFrontRef FmStatusSection -> 0",
                                  "listGetNextItemFront FmStatusSection -> 0",
                                  "listReplaceItem FmStatusSection item1 -> 0",
                                  "log 6 Updated status item in FmStatusSection list.",
                                  "listGetFinalize FmStatusSection -> 0"};
    Summary recovered;
    recovered.lastSequenceNo = 2;
    recovered.lastChanged = "2023-11-14T22:13:20.000+00:00";
    recovered.total = recovered.major = 2;
    recovered.critical = recovered.minor = recovered.warning = 0;
    Summary completed;
    completed.lastSequenceNo = 4;
    completed.lastChanged = recovered.lastChanged;
    EXPECT_THAT(takeUpTo("listEraseItem FmActiveAlarmList2 item2 -> 0"),
                ElementsAreArray(all({{"getPortal 1", "getPortal 1", "getPortal 3", "getPortal 1",
                                       "registerComponent 3 ZorvFmMoImplComponent -> 0", "getPortal 1", "getPortal 3",
                                       "registerComponent 3 ZorvFmComponent -> 0"},
                                      producersStarted(13),
                                      warmStart(3),
                                      {"createTransaction 1 60 -> 0"},
                                      fmObjectFound(),
                                      summaryWritten(recovered),
                                      consumersStarted(alarmTime),
                                      configurationRead(),
                                      statusStored,
                                      sent(firstCleared(3)),
                                      {"listReplaceItem FmActiveAlarmList2 item2 -> 0"},
                                      statusStored,
                                      sent(reported("Port=3", 3, 4)),
                                      {"listReplaceItem FmActiveAlarmList2 item4 -> 0", "createTransaction 1 60 -> 0"},
                                      summaryWritten(completed),
                                      {"listEraseItem FmActiveAlarmList2 item2 -> 0"}})));
    EXPECT_THAT(middleware.lists.names("FmActiveAlarmList2"), ElementsAre("item3", "item4"));
    EXPECT_EQ(middleware.lists.opened(), middleware.lists.finalized());
}

TEST_F(RestartTest, numberingContinuesBehindAReload)
{
    liveWithTwoAlarms();
    unload();
    load("");
    settle();
    middleware.journal.showOnly({Topic::Router, Topic::Record});

    notify("Port=3", 4);
    const Report alarm = reported("Port=3", 3, 3);
    EXPECT_THAT(takeUpTo(alarm.version2(1002)), ElementsAreArray(northbound(alarm)));

    notify("Login=2", 4, 99);
    Report alert = reported("Login=2", 0, 2);
    alert.minorType = 99;
    alert.stateful = false;
    alert.eventType = 1;
    alert.eventTypeText = "OTHER";
    alert.probableCause = 418;
    alert.specificProblem = "FM Unknown Alarm";
    EXPECT_THAT(takeUpTo(alert.version2(1002)), ElementsAreArray(northbound(alert)));
}

TEST_F(RestartTest, aRepeatedRaiseBehindAReloadIsTheSameAlarm)
{
    liveWithTwoAlarms();
    unload();
    load("");
    settle();
    middleware.journal.showOnly({Topic::Router, Topic::Record});

    notify("Port=1", 5);

    Report report = reported("Port=1", 1, 3);
    report.originalSeqNo = 1;
    report.severity = 5;
    EXPECT_THAT(takeUpTo(report.version2(1002)), ElementsAreArray(northbound(report)));
}

TEST_F(RestartTest, aReinitializedLibraryCompletesWhatWasPending)
{
    liveWithTwoAlarms();
    library->stop();
    library->terminate();
    initialize(anHour);
    library->start();
    liveWithPendingFilters();
    library->stop();
    library->terminate();
    middleware.journal.take();
    middleware.journal.showOnly({Topic::Record});

    initialize(anHour);
    library->start();

    const Report raised = reported("Port=3", 3, 4);
    EXPECT_THAT(takeUpTo(raised.record("now")), ElementsAre(firstCleared(3).record("now"), raised.record("now")));
}

TEST_F(RestartTest, aRestartedComponentCompletesWhatWasPending)
{
    liveWithTwoAlarms();
    library->stop(ZORV_STATE_CHANGE_SWITCH_OVER);
    library->terminate();
    initialize(anHour);
    library->start(ZORV_STATE_CHANGE_FAIL_OVER);
    liveWithPendingFilters();
    library->stop(ZORV_STATE_CHANGE_FAIL_OVER);
    middleware.journal.take();
    middleware.journal.showOnly({Topic::Record});

    library->start(ZORV_STATE_CHANGE_FAIL_OVER);

    const Report raised = reported("Port=3", 3, 4);
    EXPECT_THAT(takeUpTo(raised.record("now")), ElementsAre(firstCleared(3).record("now"), raised.record("now")));
}

TEST_F(RestartTest, aNodeWithoutListsStartsCold)
{
    liveWithTwoAlarms();
    unload();
    const ZorvMwSpiListNameT status{16, "FmStatusSection"};
    const ZorvMwSpiListNameT alarms{19, "FmActiveAlarmList2"};
    EXPECT_EQ(0, middleware.lists.listDelete(&status));
    EXPECT_EQ(0, middleware.lists.listDelete(&alarms));
    load("");
    settle();
    middleware.journal.showOnly({Topic::Router, Topic::Record});

    notify("Port=9", 4);

    const Report alarm = reported("Port=9", 1, 1);
    EXPECT_THAT(takeUpTo(alarm.version2(1002)), ElementsAreArray(northbound(alarm)));
}

}  // namespace
}  // namespace ZorvIntegration
