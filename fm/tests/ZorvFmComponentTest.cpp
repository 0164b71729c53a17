/// Starting and stopping. What the running component does with events is in ZorvFmComponentEventsTest.cpp.
#include <csignal>
#include <functional>
#include <stdexcept>

#include "ComponentTest.hpp"
#include "FmEventProducer.hpp"
#include "FmJournal.hpp"
#include "ZorvException.hpp"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::KilledBySignal;
using ZorvFakes::Topic;
using namespace ZorvFakes::FmJournal;

namespace ZorvFm {
namespace {

/// The section of the status list, with the time of the last notification handled.
std::string statusItem(std::uint64_t lastNotificationCheck)
{
    const StatusSection section{0, 0, 0, 0, lastNotificationCheck};
    return {reinterpret_cast<const char*>(&section), sizeof section};
}

/// A portal for the component manager in which looking for the replicated list throws what the test says.
class ThrowingPortal {
public:
    explicit ThrowingPortal(std::function<void()> throwIt)
    {
        reaction = std::move(throwIt);
        FmComponentManager::instance().setPortal(&portal);
    }

    ~ThrowingPortal()
    {
        FmComponentManager::instance().setPortal(
            static_cast<const ZorvMgmtSpiPortal_1T*>(ZorvFakes::FakePortal::accessor()->getPortal("1")));
    }

    ThrowingPortal(const ThrowingPortal&) = delete;
    ThrowingPortal& operator=(const ThrowingPortal&) = delete;

private:
    static ZorvReturnT getInterface(const char*, const char*, const char*, const void**)
    {
        reaction();
        return ZORV_RETURN_FAILED;
    }

    static inline std::function<void()> reaction;

    const ZorvMgmtSpiPortal_1T portal{nullptr, nullptr, &getInterface};
};

class ZorvFmComponentTest : public ComponentTest {
protected:
    /// The model and the lists have their own tests.
    void showFrame() { middleware.journal.hide({Topic::Model, Topic::Transaction, Topic::List, Topic::Portal}); }

    static Entries workerStopped() { return {"log 5 Deactivating FmComponent while it is active - stopping."}; }
};

// --- Initializing

TEST_F(ZorvFmComponentTest, initializeLoadsTheConfiguration)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});

    EXPECT_EQ(0, component.initialize(fileName.c_str()));

    const auto entries = journal();
    EXPECT_EQ("trace 8 FM  >> " + fileName, entries.front());
    EXPECT_EQ("trace 8 FM  << 0", entries.back());
}

TEST_F(ZorvFmComponentTest, initializeAnswersWithTheFailureOfLoading)
{
    middleware.journal.showOnly({Topic::Trace, Topic::Log});

    EXPECT_EQ(-1, component.initialize("/nowhere"));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> /nowhere", "trace 8 FM  >> \n/nowhere",
                                       "log 3 Could not load configuration, caught exception: /nowhere: File not "
                                       "found: /nowhere",
                                       "log 3 Failed to load components configuration! (-1)", "trace 8 FM  << -1"));
}

TEST_F(ZorvFmComponentTest, terminateDoesNothing)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    component.terminate();

    EXPECT_THAT(journal(), IsEmpty());
}

// --- Starting

TEST_F(ZorvFmComponentTest, startBringsUpProducersWorkerAndConsumers)
{
    EXPECT_EQ(0, start());

    Summary nothing;
    nothing.total = nothing.critical = nothing.major = nothing.minor = nothing.warning = 0;
    EXPECT_THAT(journal(), ElementsAreArray(all({producersStarted(1),
                                                 coldStart(),
                                                 {"createTransaction 1 60 -> 0"},
                                                 fmObjectFound(),
                                                 summaryWritten(nothing),
                                                 consumersStarted("0"),
                                                 configurationRead()})));
    EXPECT_TRUE(component.isStarted());
}

TEST_F(ZorvFmComponentTest, startSubscribesFromTheTimeOfTheLastNotification)
{
    middleware.lists.plant("FmStatusSection", statusItem(18446744073709551615U), 40);

    start();

    EXPECT_THAT(middleware.router.subscriptions(), ElementsAreArray(all({{"ZorvOamApiFmNotificationEventType_3 "},
                                                                         subscriptions("18446744073709551615")})));
}

TEST_F(ZorvFmComponentTest, startTracesReasonAndResult)
{
    middleware.lists.failAlways("listCreate", ZORV_RETURN_FAILED);
    middleware.journal.showOnly({Topic::Trace});

    start(ZORV_STATE_CHANGE_SWITCH_OVER);

    const auto entries = journal();
    EXPECT_EQ("trace 8 FM  >> Reason: 4", entries.at(0));
    EXPECT_EQ("trace 8 FM Starting Fm Component", entries.at(1));
    EXPECT_EQ(1, std::count(entries.begin(), entries.end(), "trace 8 FM  << Retval: 0"));
}

TEST_F(ZorvFmComponentTest, startOnAStartedComponentIsRefusedBeforeAnyStep)
{
    start();
    journal();
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    EXPECT_EQ(-1, component.start(ZORV_STATE_CHANGE_FAIL_OVER));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Reason: 3", "log 4 The Fm component is started already",
                                       "trace 8 FM  << Retval: -1"));
    EXPECT_TRUE(component.isStarted());
}

TEST_F(ZorvFmComponentTest, aMissingReplicatedListDoesNotFailTheStart)
{
    middleware.portal.withdraw("ZorvMwSpiReplicatedList");
    showFrame();

    EXPECT_EQ(0, start());

    const Entries failing = {"log 3 Failed to create replicated list FmStatusSection :  -1",
                             "log 6 listIsEmpty of list FmStatusSection returned -1",
                             "log 6 FmStatusSection list did not exist. Preparing for a cold start.",
                             "log 3 Replicated List FmActiveAlarmList2 listCreate failed: -1",
                             "log 6 Active Alarm List recovered, 0",
                             "log 4 Failed to copy Active AlarmData List"};
    EXPECT_THAT(journal(), ElementsAreArray(all({producersStarted(1), failing, consumersStarted("0")})));
}

// --- Failing to start

TEST_F(ZorvFmComponentTest, anExceptionOfTheFrameworkFailsTheStart)
{
    showFrame();
    const ThrowingPortal portal([] { throw Zorv::ZorvException("no list in %s", "this %s portal"); });

    EXPECT_EQ(-1, component.start(ZORV_STATE_CHANGE_ACTIVATE));

    EXPECT_THAT(journal(),
                ElementsAreArray(all({producersStarted(1),
                                      {"log 3 Caught exception during fm comp start: no list in this %s portal."}})));
    EXPECT_FALSE(component.isStarted());
}

TEST_F(ZorvFmComponentTest, aStandardExceptionFailsTheStart)
{
    middleware.journal.showOnly({Topic::Log});
    const ThrowingPortal portal([] { throw std::runtime_error("broken"); });

    EXPECT_EQ(-1, component.start(ZORV_STATE_CHANGE_ACTIVATE));

    EXPECT_THAT(journal(), ElementsAre("log 3 Caught exception during fm comp start: broken."));
}

TEST_F(ZorvFmComponentTest, anyOtherExceptionFailsTheStart)
{
    middleware.journal.showOnly({Topic::Log});
    const ThrowingPortal portal([] { throw 5; });

    EXPECT_EQ(-1, component.start(ZORV_STATE_CHANGE_ACTIVATE));

    EXPECT_THAT(journal(), ElementsAre("log 3 Caught exception during fm comp start: unknown exception."));
}

TEST_F(ZorvFmComponentTest, aFailedStartIsTraced)
{
    middleware.journal.showOnly({Topic::Trace});
    const ThrowingPortal portal([] { throw 5; });

    component.start(ZORV_STATE_CHANGE_ACTIVATE);

    EXPECT_EQ("trace 8 FM  << Retval: -1", journal().back());
}

TEST_F(ZorvFmComponentTest, stopUndoesAFailedStart)
{
    showFrame();
    {
        const ThrowingPortal portal([] { throw 5; });
        component.start(ZORV_STATE_CHANGE_ACTIVATE);
    }
    journal();

    EXPECT_EQ(0, stop());

    EXPECT_THAT(journal(), ElementsAreArray(producersStopped(1)));
}

TEST_F(ZorvFmComponentTest, canBeStartedAfterAFailedStart)
{
    showFrame();
    {
        const ThrowingPortal portal([] { throw 5; });
        component.start(ZORV_STATE_CHANGE_ACTIVATE);
    }

    EXPECT_EQ(0, start());
    EXPECT_TRUE(component.isStarted());
}

TEST_F(ZorvFmComponentTest, withoutARouterTheStartEndsTheProcess)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    middleware.portal.withdraw("ZorvOamSpiEventRouter");
    middleware.portal.withdraw("ZorvMwSpiLog");
    middleware.connect();  // without a log the lines go to standard error
    const std::string producer = "zorv: Could not register event producer\n";

    EXPECT_EXIT(component.start(ZORV_STATE_CHANGE_ACTIVATE), KilledBySignal(SIGABRT),
                "^" + producer + producer + producer + producer + producer + producer +
                    "zorv: FmStatusSection list existed but was empty. Preparing for a cold start.\n"
                    "zorv: Could not register consumer\n$");
}

TEST_F(ZorvFmComponentTest, aRefusedSubscriptionEndsTheProcess)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    middleware.router.failAt("addSubscription", 7, ZORV_RETURN_FAILED);
    middleware.portal.withdraw("ZorvMwSpiLog");
    middleware.connect();

    EXPECT_EXIT(component.start(ZORV_STATE_CHANGE_ACTIVATE), KilledBySignal(SIGABRT),
                "^zorv: FmStatusSection list existed but was empty. Preparing for a cold start.\n"
                "zorv: Could not add subscription\n$");
}

// --- Stopping

TEST_F(ZorvFmComponentTest, stopEndsConsumersWorkerAndProducers)
{
    start();
    journal();

    EXPECT_EQ(0, stop());

    EXPECT_THAT(journal(), ElementsAreArray(all({consumersStopped(1, "0"), workerStopped(), producersStopped(1)})));
    EXPECT_FALSE(component.isStarted());
}

TEST_F(ZorvFmComponentTest, stopIsTraced)
{
    start();
    journal();
    middleware.journal.showOnly({Topic::Trace});

    stop();

    const auto entries = journal();
    EXPECT_EQ("trace 8 FM  >> ", entries.front());
    EXPECT_EQ("trace 8 FM  << ", entries.back());
}

TEST_F(ZorvFmComponentTest, theWorkerIsToldTheReasonOfTheStop)
{
    for (const auto& [reason, line] : {std::pair{ZORV_STATE_CHANGE_FAIL_OVER, "Failing over"},
                                       std::pair{ZORV_STATE_CHANGE_SWITCH_OVER, "Switching over"}}) {
        start();
        journal();
        middleware.journal.showOnly({Topic::Log});

        stop(reason);

        EXPECT_THAT(journal(),
                    ElementsAre(std::string("log 5 ") + line + " FmComponent while it is active - stopping."));
    }
}

TEST_F(ZorvFmComponentTest, stopWithoutStartOnlyStopsTheProducers)
{
    EXPECT_EQ(0, stop());

    Entries nothingToRemove;
    for (int producer = 0; producer < 6; ++producer) {
        nothingToRemove.insert(nothingToRemove.end(), {"removeEventType 0  -> -2", "unregisterProducer 0 -> -2"});
    }
    EXPECT_THAT(journal(), ElementsAreArray(nothingToRemove));
}

TEST_F(ZorvFmComponentTest, stopWithoutARouterEndsTheWorkerAllTheSame)
{
    start();
    journal();
    middleware.portal.withdraw("ZorvOamSpiEventRouter");

    EXPECT_EQ(0, stop());

    const std::string noRouter = "log 3 No event router at stop (wrong stop order)";
    EXPECT_THAT(journal(), ElementsAreArray(all({workerStopped(), Entries(6, noRouter)})));
    EXPECT_FALSE(component.isStarted());
}

TEST_F(ZorvFmComponentTest, stopJoinsAWorkerThatEndedByItself)
{
    middleware.clock.onSelect([](int, fd_set*, fd_set*, fd_set*, timeval*) {
        errno = EBADF;
        return -1;
    });
    component.start(ZORV_STATE_CHANGE_ACTIVATE);
    ASSERT_TRUE(middleware.journal.waitForEntry("log 3 Select call returned: -1 (Bad file descriptor)."));
    stop();
    middleware.clock.onSelect({});
    showFrame();
    journal();

    EXPECT_EQ(0, component.start(ZORV_STATE_CHANGE_ACTIVATE));
}

// --- Again and again

TEST_F(ZorvFmComponentTest, startsAndStopsAgainAndAgain)
{
    showFrame();
    for (int cycle = 0; cycle < 10; ++cycle) {
        EXPECT_EQ(0, start());
        journal();
        EXPECT_EQ(0, stop());
        EXPECT_THAT(journal(), ElementsAreArray(all({consumersStopped(7 * cycle + 1, "0"), workerStopped(),
                                                     producersStopped(6 * cycle + 1)})));
    }
    EXPECT_THAT(middleware.router.subscriptions(), ElementsAre("ZorvOamApiFmNotificationEventType_3 "));
}

TEST_F(ZorvFmComponentTest, stopRightBehindStartEndsTheWorker)
{
    showFrame();
    for (int cycle = 0; cycle < 100; ++cycle) {
        ASSERT_EQ(0, component.start(ZORV_STATE_CHANGE_ACTIVATE));
        ASSERT_EQ(0, stop());
        const auto entries = journal();
        ASSERT_EQ(1, std::count(entries.begin(), entries.end(), workerStopped().front())) << cycle;
    }
}

TEST_F(ZorvFmComponentTest, theRegistrationClearsTheStartedMark)
{
    start();

    component.open(*middleware.accessor(), fileName.c_str());

    EXPECT_FALSE(component.isStarted());
}

}  // namespace
}  // namespace ZorvFm
