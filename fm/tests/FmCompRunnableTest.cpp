#include <Poco/Exception.h>

#include <csignal>
#include <stdexcept>

#include "AlarmSamples.hpp"
#include "Portal.hpp"
#include "WorkerTest.hpp"
#include "ZorvException.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

/// A portal in which looking for the event router throws.
class ThrowingPortal {
public:
    ThrowingPortal() { Zorv::Portal::instance().open(&accessor); }
    ~ThrowingPortal() { Zorv::Portal::instance().open(ZorvFakes::FakePortal::accessor()); }

    ThrowingPortal(const ThrowingPortal&) = delete;
    ThrowingPortal& operator=(const ThrowingPortal&) = delete;

private:
    static ZorvReturnT getInterface(const char* component, const char* name, const char* version, const void** table)
    {
        if (name == std::string("ZorvOamSpiEventRouter")) {
            throw Zorv::ZorvException("no router for %s", component);
        }
        return ZorvFakes::FakePortal::live()->getInterface(component, name, version, table);
    }

    static const void* getPortal(const char* /*version*/)
    {
        static const ZorvMgmtSpiPortal_1T portal{nullptr, nullptr, &getInterface};
        return &portal;
    }

    const ZorvMgmtSpiPortalAccessor_1T accessor{&getPortal};
};

/// A managed object whose attributes cannot even be refused.
YaltReturnT throwSomething(unsigned long, const char*, const char*, YaltOamSpiMoAttributeResult_3T*)
{
    throw 5;
}

class FmCompRunnableTest : public WorkerTest {
protected:
    /// An alarm that an earlier worker has left in the list.
    void plantAlarm(std::uint64_t alarmId, AlarmState::StateT state)
    {
        AlarmData data;
        data.dn = "ManagedElement=1,Port=" + std::to_string(alarmId);
        data.majorType = 1;
        data.minorType = 1;
        data.severity = YALT_FM_SEVERITY_MAJOR;
        data.originalSeverity = YALT_FM_SEVERITY_MAJOR;
        data.eventTime = 1700000000000000000;
        data.originalEventTime = 1700000000000000000;
        data.eventType = 2;
        data.probableCause = 14;
        data.specificProblem = "Link failure";
        data.alarmId = alarmId;
        middleware.lists.plant("FmActiveAlarmList2", alarmInState(state, data).serialize_v2());
    }

    /// The worker takes the process with it, with this line as its last.
    void expectDeath(const Step& reaction, const std::string& line)
    {
        testing::GTEST_FLAG(death_test_style) = "threadsafe";
        middleware.portal.withdraw("ZorvMwSpiLog");
        middleware.connect();  // without a log the lines go to standard error
        EXPECT_EXIT(run({silence(), reaction, silence()}), KilledBySignal(SIGABRT), "zorv: " + line + "\n$");
    }
};

// --- The life of the thread

TEST_F(FmCompRunnableTest, startPreparesStatusAndAlarmList)
{
    journal();
    middleware.journal.hide({Topic::Model, Topic::Transaction});

    worker.start();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmStatusSection 40 -> 0", "listIsEmpty FmStatusSection -> 0 true",
                            "log 6 listIsEmpty of list FmStatusSection returned 0",
                            "log 4 FmStatusSection list existed but was empty. Preparing for a cold start.",
                            "listCreate FmActiveAlarmList2 1000 -> 0", "listIsEmpty FmActiveAlarmList -> -2",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "listGetFinalize FmActiveAlarmList2 -> 0",
                            "log 6 Active Alarm List recovered, 0"));
    EXPECT_FALSE(worker.isRunning());
}

TEST_F(FmCompRunnableTest, sendsAlarmListRebuiltAndReadsTheConfigurationBeforeTheLoop)
{
    middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2);
    middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
    middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2);
    middleware.journal.show({Topic::Trace});

    run({silence(), silence()});

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM Sending AlarmListRebuilt", "trace 8 FM  >> sendAlarmListRebuilt",
                            "trace 8 FM Create AlarmListRebuilt notification",
                            "trace 8 FM Sending notification ZorvOamApiFmAlarmListRebuiltEventType_3",
                            "notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1002 filter=[] noData=0 -> 0",
                            "trace 8 FM Sending notification ZorvOamApiFmAlarmListRebuiltEventType_2",
                            "notify ZorvOamApiFmAlarmListRebuiltEventType_2 consumer=1003 filter=[] noData=0 -> 0",
                            "trace 8 FM  << sendAlarmListRebuilt", "trace 8 FM  >> ",
                            "trace 8 FM MoAccessor::getOptionalAttr<> dName :ManagedElement=1,SystemFunctions=1,Fm=1 "
                            "attrName :heartbeatInterval",
                            "createTransaction 1 60 -> 0",
                            "getMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 heartbeatInterval -> 0",
                            "abortTransaction -> 0", "trace 8 FM  << ", "trace 8 FM  >> ", waiting, waiting,
                            "trace 8 FM  << "));
}

TEST_F(FmCompRunnableTest, everyStartOfTheWorkerSendsAlarmListRebuilt)
{
    followRounds();
    middleware.router.addConsumer(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
    const auto aRun =
        ElementsAre("notify ZorvOamApiFmAlarmListRebuiltEventType_3 consumer=1003 filter=[] noData=0 -> 0", waiting);

    run({silence()});
    EXPECT_THAT(journal(), aRun);
    run({silence()});
    EXPECT_THAT(journal(), aRun);
}

TEST_F(FmCompRunnableTest, takesTheHeartbeatIntervalFromTheModel)
{
    middleware.fmModel.setHeartbeatInterval(7);

    run({silence()});

    EXPECT_EQ(7U, config.getHeartbeatInterval());
}

TEST_F(FmCompRunnableTest, forgetsTheAlarmTypesAtItsEnd)
{
    const std::string readType = "getMoAttribute " + middleware.fmModel.plantType("1", "1", {}) + " isStateful -> 0";
    const auto timesRead = [&] {
        const auto entries = journal();
        return std::count(entries.begin(), entries.end(), readType);
    };

    run({arrival(anAlarm("ManagedElement=1,Port=1")), arrival(anAlarm("ManagedElement=1,Port=2"))});
    EXPECT_EQ(1, timesRead());
    run({arrival(anAlarm("ManagedElement=1,Port=3"))});
    EXPECT_EQ(1, timesRead());
}

TEST_F(FmCompRunnableTest, countsAsRunningFromTheBeginningOfRunToItsEnd)
{
    bool wasRunning = false;
    EXPECT_FALSE(worker.isRunning());

    run({[&] { wasRunning = worker.isRunning(); }, silence()});

    EXPECT_TRUE(wasRunning);
    EXPECT_FALSE(worker.isRunning());
}

TEST_F(FmCompRunnableTest, stopEndsTheLoopAfterTheRound)
{
    followRounds();
    config.setHeartbeatInterval(1);

    run({silence(), [this] { worker.stop(); }, silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, heartbeat(), waiting, heartbeat()));
}

TEST_F(FmCompRunnableTest, messagesLeftBehindAreHandledByTheNextWorker)
{
    followRounds();
    run({silence()});
    journal();
    pipes.pushToInput(anAlarm("ManagedElement=1,Port=1"));

    run({silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, alertSent("ManagedElement=1,Port=1", 1)));
}

// --- Rounds

TEST_F(FmCompRunnableTest, withoutMessagesItWakesOnceASecondAndChecksTheHeartbeat)
{
    followRounds();
    config.setHeartbeatInterval(2);

    run({silence(), silence(), silence(), silence(), silence()});

    EXPECT_THAT(journal(),
                ElementsAre(waiting, heartbeat(), waiting, waiting, heartbeat(), waiting, waiting, heartbeat()));
}

TEST_F(FmCompRunnableTest, ticksTheAlarmsBeforeTheFirstWait)
{
    followRounds();
    plantAlarm(4, AlarmState::RAISE_PENDING);

    run({silence()});

    EXPECT_THAT(journal(), ElementsAre(alarmSent("ManagedElement=1,Port=4", 1, 4), waiting));
}

TEST_F(FmCompRunnableTest, ticksTheAlarmsAfterEveryWakeUp)
{
    followRounds();
    middleware.fmModel.plantType("1", "1", {});
    config.transientRaiseAlarmFilterTime = 2000000000;

    run({arrival(anAlarm("ManagedElement=1,Port=1")), silence(), silence(), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, waiting, waiting, alarmSent("ManagedElement=1,Port=1", 1, 1), waiting));
}

TEST_F(FmCompRunnableTest, aRoundHandlesTheInputThenTicksThenSendsTheHeartbeat)
{
    followRounds();
    plantAlarm(1, AlarmState::ACTIVE);
    config.setHeartbeatInterval(1);
    middleware.fmModel.plantType("1", "1", {});
    config.transientRaiseAlarmFilterTime = 1000000000;
    const Step everythingAtOnce = [this] {
        jump(1)();
        pipes.pushToInput(anAlarm("ManagedElement=1,Port=1", YALT_FM_SEVERITY_CLEARED));
    };

    run({arrival(anAlarm("ManagedElement=1,Port=2")), everythingAtOnce});

    ZorvFakes::FmJournal::Report cleared;
    cleared.dn = "ManagedElement=1,Port=1";
    cleared.severity = YALT_FM_SEVERITY_CLEARED;
    EXPECT_THAT(journal(),
                ElementsAre(waiting, heartbeat(), waiting, cleared.version3(1002),
                            alarmSent("ManagedElement=1,Port=2", 2, 2), heartbeat({2, 0, 1700000000000000000, 0, 0})));
}

TEST_F(FmCompRunnableTest, attributesThatCouldNotBeWrittenAreWrittenAtTheTopOfALaterRound)
{
    followRounds();
    middleware.journal.showOnly({Topic::Clock, Topic::Log, Topic::Model, Topic::Transaction});
    const std::string write = "setMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 ";
    middleware.objects.failNext(write + "lastSequenceNo", ZORV_RETURN_FAILED, 2);

    run({silence(), silence(), silence()});

    EXPECT_THAT(journal(),
                ElementsAre("createTransaction 1 60 -> 0",
                            "getMoAttribute ManagedElement=1,SystemFunctions=1,Fm=1 heartbeatInterval -> 0",
                            "abortTransaction -> 0", "createTransaction 1 60 -> 0", write + "lastSequenceNo 0 -> -1",
                            "log 3 Failed to set attribute :'lastSequenceNo' in MO "
                            ":ManagedElement=1,SystemFunctions=1,Fm=1, reason (-1 )!",
                            "abortTransaction -> 0",
                            "log 4 Did not succeed writing alarm sequence number to database, will try again later",
                            waiting, "createTransaction 1 60 -> 0", write + "lastSequenceNo 0 -> 0",
                            write + "lastChanged '1970-01-01T00:00:00.000+00:00' -> 0", write + "totalActive 0 -> 0",
                            write + "sumCritical 0 -> 0", write + "sumMajor 0 -> 0", write + "sumMinor 0 -> 0",
                            write + "sumWarning 0 -> 0", "commitTransaction -> 0", waiting, waiting));
}

// --- Failing waits

TEST_F(FmCompRunnableTest, aSignalBeginsTheNextRound)
{
    followRounds();
    config.setHeartbeatInterval(1);
    middleware.journal.showOnly({Topic::Clock, Topic::Trace, Topic::Router});

    run({failure(EINTR), failure(EINTR), silence()});

    const auto entries = journal();
    const auto loop = std::find(entries.begin(), entries.end(), waiting);
    EXPECT_THAT(std::vector<std::string>(loop, entries.end()),
                ElementsAre(waiting, "trace 8 FM Signal caught in select loop", waiting,
                            "trace 8 FM Signal caught in select loop", waiting, "trace 8 FM Sending heartbeat",
                            "trace 8 FM  >> sendHeartbeat",
                            "trace 8 FM Sending notification ZorvOamApiFmHeartbeatEventType_3", heartbeat(),
                            "trace 8 FM  << sendHeartbeat", "trace 8 FM  << "));
}

TEST_F(FmCompRunnableTest, aFailingWaitEndsTheLoopAndNotTheProcess)
{
    followRounds();
    middleware.journal.show({Topic::Log});
    config.setHeartbeatInterval(1);

    run({silence(), failure(EBADF), silence()});

    EXPECT_THAT(journal(),
                ElementsAre(waiting, heartbeat(), waiting, "log 3 Select call returned: -1 (Bad file descriptor)."));
    EXPECT_FALSE(worker.isRunning());
}

// --- Exceptions

TEST_F(FmCompRunnableTest, aPocoExceptionInTheLoopEndsTheProcess)
{
    expectDeath([] { throw Poco::NotFoundException("no %s there"); }, "Caught Poco Exception: Not found: no %s there");
}

TEST_F(FmCompRunnableTest, aStandardExceptionInTheLoopEndsTheProcess)
{
    expectDeath([] { throw std::runtime_error("cannot %s"); }, "Caught exception: cannot %s");
}

TEST_F(FmCompRunnableTest, anExceptionOfTheFrameworkInTheLoopEndsTheProcess)
{
    expectDeath([] { throw Zorv::ZorvException("code %d", 7); }, "Caught exception: code 7");
}

TEST_F(FmCompRunnableTest, anyOtherExceptionInTheLoopEndsTheProcess)
{
    expectDeath([] { throw 5; }, "Caught unknown exception");
}

TEST_F(FmCompRunnableTest, anExceptionOfTheFrameworkBeforeTheLoopEndsTheThread)
{
    followRounds();
    middleware.journal.show({Topic::Log});
    const ThrowingPortal portal;

    run({silence()});

    EXPECT_THAT(journal(),
                ElementsAre("log 3 Caught exception during fm comp start: no router for ZorvOamSpiEventService."));
    EXPECT_FALSE(worker.isRunning());
}

TEST_F(FmCompRunnableTest, anyOtherExceptionBeforeTheLoopLeavesNoWorkerThatCountsAsRunning)
{
    followRounds();
    YaltOamSpiManagedObject_3T objects = *middleware.objects.table();
    objects.getMoAttribute = &throwSomething;
    worker.start();
    middleware.portal.offer("ZorvOamSpiCmRouterService", "ZorvOamSpiManagedObject", "3", &objects);
    journal();

    thread.start(worker);
    thread.join();

    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_FALSE(worker.isRunning());
}

}  // namespace
}  // namespace ZorvFm
