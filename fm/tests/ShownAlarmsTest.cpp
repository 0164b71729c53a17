#include "ShownAlarms.hpp"

#include <deque>

#include "AlarmSamples.hpp"
#include "FmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFm {
namespace {

class ShownAlarmsTest : public FmTest {
protected:
    ShownAlarmsTest() { middleware.journal.showOnly({}); }

    /// As the list does: the alarm is told when it is in the index.
    Alarm& add(std::uint64_t alarmId, int state = AlarmState::ACTIVE)
    {
        Alarm& alarm = alarms.emplace_back(alarmInState(state));
        alarm.alarmId = alarmId;
        index.add(alarm);
        shown.noteChange(alarm);
        return alarm;
    }

    /// With ids from 1 on; a reader has come, and the view has just been begun.
    void addAndShowFirst(std::uint64_t number)
    {
        for (std::uint64_t alarmId = 1; alarmId <= number; ++alarmId) {
            add(alarmId);
        }
        shown.use(index.getAlarms());
        EXPECT_FALSE(shown.refresh(1));
    }

    void remove(Alarm& alarm)
    {
        shown.noteRemoval(alarm);
        index.remove(alarm);
    }

    /// Their ids, as a reader sees them who comes now.
    std::vector<std::uint64_t> read()
    {
        shown.use(index.getAlarms());
        while (!shown.refresh(2)) {}
        std::vector<std::uint64_t> ids;
        for (const AlarmChunkT& chunk : shown.take()) {
            for (const ShownAlarm& alarm : *chunk) {
                ids.push_back(alarm.alarmId);
            }
        }
        EXPECT_EQ(ids.size(), shown.size());
        return ids;
    }

    std::deque<Alarm> alarms;  // outlives what refers to them
    AlarmIndex index;
    ShownAlarms shown;
};

TEST_F(ShownAlarmsTest, ofAnEmptyListAreNone)
{
    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(ShownAlarmsTest, areThoseThatAreVisibleNorthbound)
{
    add(1);
    add(2, AlarmState::RAISE_PENDING);
    add(3);

    EXPECT_THAT(read(), ElementsAre(1, 3));
    add(4);
    EXPECT_THAT(read(), ElementsAre(1, 3, 4));
}

TEST_F(ShownAlarmsTest, whatCameAndWentBeforeTheFirstReaderIsForgotten)
{
    remove(add(1));
    add(2);

    EXPECT_THAT(read(), ElementsAre(2));
}

TEST_F(ShownAlarmsTest, aRemovalWhileTheViewIsBeingMadeTakesNothingElseAway)
{
    addAndShowFirst(5);

    remove(alarms[3]);

    EXPECT_THAT(read(), ElementsAre(1, 2, 3, 5));
}

TEST_F(ShownAlarmsTest, theRemovalOfTheNextOneLeavesTheOneBehindIt)
{
    addAndShowFirst(3);

    remove(alarms[1]);

    EXPECT_THAT(read(), ElementsAre(1, 3));
}

TEST_F(ShownAlarmsTest, whatChangesAndGoesWhileTheViewIsBeingMadeIsNotShown)
{
    addAndShowFirst(2);

    remove(add(3));

    EXPECT_THAT(read(), ElementsAre(1, 2));
}

}  // namespace
}  // namespace ZorvFm
