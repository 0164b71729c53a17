#include "AlarmState.hpp"

#include <chrono>
#include <string>
#include <type_traits>

#include "FmConfig.hpp"
#include "FmTest.hpp"

using testing::IsEmpty;
using ZorvFakes::Topic;
using namespace std::chrono_literals;

namespace ZorvFm {
namespace {

constexpr std::uint64_t second = 1000000000;

static_assert(std::has_virtual_destructor_v<AlarmState>, "states may be refined");

class AlarmStateTest : public FmTest {
protected:
    AlarmStateTest()
    {
        middleware.clock.turnOn(1000 * second);
        middleware.journal.show({Topic::Trace});
    }

    AlarmState inState(int number) const
    {
        AlarmState state(config);
        state.setState(number);
        return state;
    }

    int tick(AlarmState& state) const { return state.tick(middleware.clock.monotonic()); }

    /// Ticks say nothing up to the last nanosecond of this time, and then the result.
    void expectAfter(std::chrono::nanoseconds time, AlarmState& state, int result)
    {
        middleware.clock.advance(time - 1ns);
        EXPECT_EQ(ALARM_UNCHANGED, tick(state));
        middleware.clock.advance(1ns);
        EXPECT_EQ(result, tick(state));
    }

    /// One activation, without filters: the state that the raise leads to, and the ceased one afterwards.
    int raiseAndTick(AlarmState& state) const
    {
        state.raise();
        EXPECT_EQ(ALARM_ACTIVATED, tick(state));
        return state.getState();
    }

    void clearAndTick(AlarmState& state) const
    {
        state.clear();
        EXPECT_EQ(ALARM_CLEARED, tick(state));
        EXPECT_EQ(AlarmState::CEASED, state.getState());
    }

    FmConfig config;
};

TEST_F(AlarmStateTest, theNumbersAreFixed)
{
    EXPECT_EQ(0, AlarmState::NEW);
    EXPECT_EQ(1, AlarmState::RAISE_PENDING);
    EXPECT_EQ(2, AlarmState::ACTIVE);
    EXPECT_EQ(3, AlarmState::ACTIVE_TOGGLING);
    EXPECT_EQ(4, AlarmState::CEASE_PENDING_TOGGLING);
    EXPECT_EQ(5, AlarmState::CEASE_PENDING);
    EXPECT_EQ(6, AlarmState::CEASED);

    EXPECT_EQ(0, ALARM_UNCHANGED);
    EXPECT_EQ(1, ALARM_ACTIVATED);
    EXPECT_EQ(2, ALARM_CLEARED);
    EXPECT_EQ(3, ALARM_TO_DELETE);
}

TEST_F(AlarmStateTest, beginsNew)
{
    EXPECT_EQ(0, AlarmState(config).getState());
}

TEST_F(AlarmStateTest, isShownAsItsNumber)
{
    EXPECT_EQ("5", inState(5).toString());
    EXPECT_EQ("-1", inState(-1).toString());
}

struct StateRow {
    int state;
    bool visible;
    bool toggling;
    bool canChangeInTick;
};

TEST_F(AlarmStateTest, whatEachStateMeans)
{
    const StateRow rows[] = {{-1, false, false, false}, {0, false, false, false}, {1, false, false, true},
                             {2, true, false, false},   {3, true, true, false},   {4, true, true, true},
                             {5, true, false, true},    {6, false, false, true},  {7, false, false, false}};
    for (const StateRow& row : rows) {
        SCOPED_TRACE(row.state);
        EXPECT_EQ(row.visible, inState(row.state).isVisibleInNbi());
        EXPECT_EQ(row.toggling, inState(row.state).isToggling());
        EXPECT_EQ(row.canChangeInTick, inState(row.state).canChangeInTick());
    }
}

// --- The events by state

class AlarmEventTest : public AlarmStateTest {
protected:
    struct Row {
        int state;
        int next;
        std::vector<std::string> journal;
    };

    void expectEvents(void (AlarmState::*event)(), const std::vector<Row>& rows)
    {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.state);
            AlarmState state = inState(row.state);
            (state.*event)();

            EXPECT_EQ(row.next, state.getState());
            EXPECT_EQ(row.journal, journal());
        }
    }
};

TEST_F(AlarmEventTest, raiseByState)
{
    const std::vector<Row> rows = {
        {0, 1, {}},
        {1, 1, {"log 4 Unexpected alarm raise in state 1", "trace 4 FM Unexpected alarm raise in state 1"}},
        {2, 2, {}},
        {3, 3, {"log 4 Unexpected alarm raise in state 3", "trace 4 FM Unexpected alarm raise in state 3"}},
        {4, 3, {"trace 8 FM Alarm raised before toggling timer expired, alarm remains active toggling :4"}},
        {5, 2, {"trace 8 FM Alarm raised before transient cease timer expired, alarm remains active :5"}},
        {6, 1, {}},
        {7, 7, {"log 4 Unexpected alarm raise in state 7", "trace 4 FM Unexpected alarm raise in state 7"}},
        {-1, -1, {"log 4 Unexpected alarm raise in state -1", "trace 4 FM Unexpected alarm raise in state -1"}}};
    expectEvents(&AlarmState::raise, rows);
}

TEST_F(AlarmEventTest, clearByState)
{
    const std::vector<Row> rows = {
        {0, 0, {"log 4 Unexpected alarm cease in state 0", "trace 4 FM Unexpected alarm cease in state 0"}},
        {1, 6, {"trace 8 FM Alarm ceased before transient raise timer expired, alarm is dropped, 1"}},
        {2, 5, {}},
        {3, 4, {}},
        {4, 4, {"log 4 Unexpected alarm cease in state 4", "trace 4 FM Unexpected alarm cease in state 4"}},
        {5, 5, {"log 4 Unexpected alarm cease in state 5", "trace 4 FM Unexpected alarm cease in state 5"}},
        {6, 6, {"log 4 Unexpected alarm cease in state 6", "trace 4 FM Unexpected alarm cease in state 6"}},
        {7, 7, {"log 4 Unexpected alarm cease in state 7", "trace 4 FM Unexpected alarm cease in state 7"}},
        {-1, -1, {"log 4 Unexpected alarm cease in state -1", "trace 4 FM Unexpected alarm cease in state -1"}}};
    expectEvents(&AlarmState::clear, rows);
}

struct TickRow {
    int state;
    int result;
    int next;
};

TEST_F(AlarmStateTest, tickByState)
{
    const TickRow rows[] = {{0, 0, 0}, {1, 1, 2}, {2, 0, 2}, {3, 0, 3},  {4, 2, 6},
                            {5, 2, 6}, {6, 3, 6}, {7, 0, 7}, {-1, 0, -1}};
    for (const TickRow& row : rows) {
        SCOPED_TRACE(row.state);
        AlarmState state = inState(row.state);

        EXPECT_EQ(row.result, tick(state));
        EXPECT_EQ(row.next, state.getState());
        EXPECT_THAT(journal(), IsEmpty());
    }
}

// --- The transient filters

struct FilterRow {
    void (AlarmState::*event)();
    std::uint64_t FmConfig::*filterTime;
    int from;
    int pending;
    int result;
    int next;
};

TEST_F(AlarmStateTest, anEventTakesEffectAtTheFirstTickAfterItsFilterTime)
{
    const FilterRow rows[] = {{&AlarmState::raise, &FmConfig::transientRaiseAlarmFilterTime, AlarmState::NEW,
                               AlarmState::RAISE_PENDING, ALARM_ACTIVATED, AlarmState::ACTIVE},
                              {&AlarmState::raise, &FmConfig::transientRaiseAlarmFilterTime, AlarmState::CEASED,
                               AlarmState::RAISE_PENDING, ALARM_ACTIVATED, AlarmState::ACTIVE},
                              {&AlarmState::clear, &FmConfig::transientCeaseAlarmFilterTime, AlarmState::ACTIVE,
                               AlarmState::CEASE_PENDING, ALARM_CLEARED, AlarmState::CEASED},
                              {&AlarmState::clear, &FmConfig::alarmToggleSilentTimeout, AlarmState::ACTIVE_TOGGLING,
                               AlarmState::CEASE_PENDING_TOGGLING, ALARM_CLEARED, AlarmState::CEASED}};
    for (const FilterRow& row : rows) {
        SCOPED_TRACE(row.from);
        config = FmConfig();
        config.*row.filterTime = 5 * second;
        AlarmState state = inState(row.from);
        (state.*row.event)();

        EXPECT_EQ(ALARM_UNCHANGED, tick(state));
        middleware.clock.advance(5s - 1ns);
        EXPECT_EQ(ALARM_UNCHANGED, tick(state));
        EXPECT_EQ(row.pending, state.getState());
        middleware.clock.advance(1ns);
        EXPECT_EQ(row.result, tick(state));
        EXPECT_EQ(row.next, state.getState());
    }
}

TEST_F(AlarmStateTest, filterTimesAreReadWhenTheTimerStarts)
{
    AlarmState state(config);
    config.transientRaiseAlarmFilterTime = second;
    config.transientCeaseAlarmFilterTime = 2 * second;
    state.raise();
    config.transientRaiseAlarmFilterTime = 0;
    EXPECT_EQ(ALARM_UNCHANGED, tick(state));
    middleware.clock.advance(1s);
    EXPECT_EQ(ALARM_ACTIVATED, tick(state));

    state.clear();
    config.transientCeaseAlarmFilterTime = 0;
    EXPECT_EQ(ALARM_UNCHANGED, tick(state));
    middleware.clock.advance(2s);
    EXPECT_EQ(ALARM_CLEARED, tick(state));
}

TEST_F(AlarmStateTest, aRaiseThatCancelsACeaseLeavesTheTimer)
{
    config.transientCeaseAlarmFilterTime = 5 * second;
    config.alarmToggleSilentTimeout = 5 * second;
    for (const int active : {AlarmState::ACTIVE, AlarmState::ACTIVE_TOGGLING}) {
        AlarmState state = inState(active);
        state.clear();
        const int pending = state.getState();
        middleware.clock.advance(4s);
        state.raise();
        state.setState(pending);

        expectAfter(1s, state, ALARM_CLEARED);
    }
}

TEST_F(AlarmStateTest, anUnexpectedEventLeavesTheTimer)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    config.transientCeaseAlarmFilterTime = 5 * second;
    AlarmState state(config);
    state.raise();
    middleware.clock.advance(4s);
    state.raise();
    expectAfter(1s, state, ALARM_ACTIVATED);

    state.clear();
    middleware.clock.advance(4s);
    state.clear();
    expectAfter(1s, state, ALARM_CLEARED);
}

TEST_F(AlarmStateTest, aTickGoesByTheTimeItIsGiven)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    AlarmState state(config);
    state.raise();

    EXPECT_EQ(ALARM_UNCHANGED, state.tick(1005 * second - 1));
    EXPECT_EQ(ALARM_ACTIVATED, state.tick(1005 * second));
}

TEST_F(AlarmStateTest, restoredPendingStatesCompleteAtTheFirstTick)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    config.transientCeaseAlarmFilterTime = 5 * second;
    config.alarmToggleSilentTimeout = 5 * second;
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;

    AlarmState raised = inState(AlarmState::RAISE_PENDING);
    EXPECT_EQ(ALARM_ACTIVATED, tick(raised));
    EXPECT_EQ(AlarmState::ACTIVE, raised.getState());
    AlarmState ceasing = inState(AlarmState::CEASE_PENDING);
    EXPECT_EQ(ALARM_CLEARED, tick(ceasing));
    AlarmState toggling = inState(AlarmState::CEASE_PENDING_TOGGLING);
    EXPECT_EQ(ALARM_CLEARED, tick(toggling));
    AlarmState ceased = inState(AlarmState::CEASED);
    EXPECT_EQ(ALARM_TO_DELETE, tick(ceased));
}

// --- The toggling filter

class AlarmTogglingTest : public AlarmStateTest {
protected:
    AlarmTogglingTest()
    {
        config.alarmToggleWindowSize = 60 * second;
        config.alarmToggleTriggerCount = 3;
    }
};

TEST_F(AlarmTogglingTest, theThirdActivationWithinTheWindowToggles)
{
    AlarmState state(config);
    EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
    clearAndTick(state);
    middleware.clock.advance(30s);
    EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
    clearAndTick(state);
    middleware.clock.advance(30s - 1ns);

    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, anActivationAsOldAsTheWindowDoesNotCount)
{
    AlarmState state(config);
    raiseAndTick(state);
    clearAndTick(state);
    middleware.clock.advance(30s);
    raiseAndTick(state);
    clearAndTick(state);
    middleware.clock.advance(30s);

    EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
    clearAndTick(state);
    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, aWindowOfNoTimeNeverToggles)
{
    config.alarmToggleWindowSize = 0;
    config.alarmToggleTriggerCount = 1;
    AlarmState state(config);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
        clearAndTick(state);
    }
}

TEST_F(AlarmTogglingTest, aCountOfOneTogglesAtOnce)
{
    config.alarmToggleWindowSize = 1;
    config.alarmToggleTriggerCount = 1;
    AlarmState state(config);

    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, windowAndCountAreThoseOfTheBeginning)
{
    AlarmState state(config);
    config.alarmToggleWindowSize = 0;
    config.alarmToggleTriggerCount = 100;
    raiseAndTick(state);
    clearAndTick(state);
    EXPECT_EQ(ALARM_UNCHANGED, tick(state));
    raiseAndTick(state);
    clearAndTick(state);

    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, theActivationCountsAtTheTimeOfItsTick)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    AlarmState state(config);
    state.raise();
    middleware.clock.advance(10s);
    ASSERT_EQ(ALARM_ACTIVATED, tick(state));
    state.clear();
    ASSERT_EQ(ALARM_CLEARED, tick(state));

    expectAfter(60s, state, ALARM_TO_DELETE);
}

TEST_F(AlarmTogglingTest, aCeasedAlarmIsKeptUntilItsLastActivationHasLeftTheWindow)
{
    AlarmState state(config);
    raiseAndTick(state);
    clearAndTick(state);
    middleware.clock.advance(20s);
    raiseAndTick(state);
    clearAndTick(state);

    expectAfter(60s, state, ALARM_TO_DELETE);
    EXPECT_EQ(AlarmState::CEASED, state.getState());
    EXPECT_EQ(ALARM_TO_DELETE, tick(state));
}

TEST_F(AlarmTogglingTest, aRaiseInACeasedAlarmCountsWhatItRemembers)
{
    AlarmState state(config);
    for (int i = 0; i < 2; ++i) {
        raiseAndTick(state);
        clearAndTick(state);
        EXPECT_EQ(ALARM_UNCHANGED, tick(state));
    }

    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, raisesThatTheFilterDropsDoNotCount)
{
    config.transientRaiseAlarmFilterTime = second;
    AlarmState state(config);
    for (int i = 0; i < 10; ++i) {
        state.raise();
        state.clear();
        EXPECT_EQ(ALARM_TO_DELETE, tick(state));
    }
    state.raise();
    middleware.clock.advance(1s);
    EXPECT_EQ(ALARM_ACTIVATED, tick(state));

    EXPECT_EQ(AlarmState::ACTIVE, state.getState());
}

TEST_F(AlarmTogglingTest, raisesThatCancelACeaseDoNotCount)
{
    config.transientCeaseAlarmFilterTime = second;
    AlarmState state(config);
    raiseAndTick(state);
    for (int i = 0; i < 10; ++i) {
        state.clear();
        EXPECT_EQ(ALARM_UNCHANGED, tick(state));
        state.raise();
        EXPECT_EQ(ALARM_UNCHANGED, tick(state));
    }

    EXPECT_EQ(AlarmState::ACTIVE, state.getState());
}

TEST_F(AlarmTogglingTest, theSilentTimeoutForgetsTheHistory)
{
    config.alarmToggleSilentTimeout = second;
    AlarmState state(config);
    for (int i = 0; i < 2; ++i) {
        raiseAndTick(state);
        clearAndTick(state);
    }
    ASSERT_EQ(AlarmState::ACTIVE_TOGGLING, raiseAndTick(state));
    state.clear();
    middleware.clock.advance(1s);
    ASSERT_EQ(ALARM_CLEARED, tick(state));

    EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
    clearAndTick(state);
    EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, afterTheSilentTimeoutNothingKeepsTheAlarm)
{
    AlarmState state = inState(AlarmState::ACTIVE_TOGGLING);
    state.clear();
    ASSERT_EQ(ALARM_CLEARED, tick(state));

    EXPECT_EQ(ALARM_TO_DELETE, tick(state));
}

TEST_F(AlarmTogglingTest, aWindowBeyondTheNumbersWrapsAround)
{
    config.alarmToggleWindowSize = UINT64_MAX;
    config.alarmToggleTriggerCount = 1;
    AlarmState state(config);

    EXPECT_EQ(AlarmState::ACTIVE, raiseAndTick(state));
}

TEST_F(AlarmTogglingTest, aCopyGoesOnByItself)
{
    config.alarmToggleSilentTimeout = 5 * second;
    AlarmState state(config);
    for (int i = 0; i < 2; ++i) {
        raiseAndTick(state);
        clearAndTick(state);
    }
    state.raise();
    AlarmState copy(state);
    EXPECT_EQ(ALARM_ACTIVATED, tick(copy));
    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, copy.getState());
    EXPECT_EQ(AlarmState::RAISE_PENDING, state.getState());

    copy.clear();
    AlarmState ceasing(copy);
    middleware.clock.advance(5s);
    EXPECT_EQ(ALARM_CLEARED, tick(ceasing));
    EXPECT_EQ(AlarmState::CEASE_PENDING_TOGGLING, copy.getState());
}

}  // namespace
}  // namespace ZorvFm
