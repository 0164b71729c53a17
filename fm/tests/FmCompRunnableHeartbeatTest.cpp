/// When the worker sends heartbeats, and what is in them.
#include "WorkerTest.hpp"

using testing::ElementsAre;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

class FmCompRunnableHeartbeatTest : public WorkerTest {
protected:
    FmCompRunnableHeartbeatTest() { followRounds(); }
};

TEST_F(FmCompRunnableHeartbeatTest, anIntervalOf0SendsNoHeartbeats)
{
    run({silence(), jump(100000), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, waiting, waiting));
}

TEST_F(FmCompRunnableHeartbeatTest, theFirstRoundSendsAHeartbeatAtOnce)
{
    config.setHeartbeatInterval(4294967295);

    run({silence(), jump(2000000000), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, heartbeat(), waiting, waiting));
}

TEST_F(FmCompRunnableHeartbeatTest, aHeartbeatCarriesNumbersAndTimesOfWhatWasSent)
{
    config.setHeartbeatInterval(1);
    middleware.fmModel.plantType("1", "1", {});
    const YaltOamSpiNotificationFmStruct_2 alert{"ManagedElement=1", 9, 9, 1700000005000000000, "", 2};

    run({arrival(anAlarm("ManagedElement=1,Port=1"), anAlarm("ManagedElement=1,Port=2"),
                 new FmNewAlarmMessage(AlarmData(alert)))});

    const auto entries = journal();
    ASSERT_EQ(5U, entries.size());
    EXPECT_EQ(heartbeat({2, 1, 1700000000000000000, 1700000005000000000, 0}), entries[4]);
}

TEST_F(FmCompRunnableHeartbeatTest, aClockThatGoesBackMovesTheNextHeartbeat)
{
    middleware.journal.show({Topic::Log});
    config.setHeartbeatInterval(3);

    run({silence(), jump(-10), silence(), silence(), silence(), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, heartbeat(), waiting,
                                       "log 6 Detected change in the system time resetting the next heartbeat time",
                                       waiting, waiting, waiting, heartbeat(), waiting));
}

TEST_F(FmCompRunnableHeartbeatTest, aNewIntervalCountsFromTheLastHeartbeat)
{
    config.setHeartbeatInterval(60);
    const Step change = [this] {
        middleware.fmModel.setHeartbeatInterval(3);
        pipes.pushToInput(new FmNewCmRouterEventMessage);
    };

    run({silence(), change, silence(), silence(), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, heartbeat(), waiting, waiting, waiting, waiting, heartbeat()));
}

TEST_F(FmCompRunnableHeartbeatTest, theNextWorkerKeepsTheRhythm)
{
    config.setHeartbeatInterval(3);
    run({silence(), silence()});
    journal();

    run({silence(), silence()});

    EXPECT_THAT(journal(), ElementsAre(waiting, waiting, heartbeat()));
}

}  // namespace
}  // namespace ZorvFm
