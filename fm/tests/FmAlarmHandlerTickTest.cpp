#include "HandlerTest.hpp"

using testing::ElementsAreArray;
using testing::IsEmpty;
using ZorvFakes::FmJournal::all;

namespace ZorvFm {
namespace {

class FmAlarmHandlerTickTest : public HandlerTest {
protected:
    const std::string port1 = "ManagedElement=1,Port=1";
    const std::string port2 = "ManagedElement=1,Port=2";
    const std::string port3 = "ManagedElement=1,Port=3";
};

// --- At most twice in a second

TEST_F(FmAlarmHandlerTickTest, aRoundWithinHalfASecondOfTheLastOneDoesNothing)
{
    config.transientRaiseAlarmFilterTime = second / 10;
    start();
    handler->tickAllAlarms();
    send(linkDown());
    journal();

    pass(second * 3 / 10);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), IsEmpty());
    pass(second / 5 - 1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), IsEmpty());

    pass(1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusPushed(2), reported(listed(linkDown(), 2, 1, 1, 1)), replaced(1)})));
}

TEST_F(FmAlarmHandlerTickTest, aRoundThatIsTooEarlyDoesNotPutOffTheNextOne)
{
    config.transientRaiseAlarmFilterTime = second / 10;
    start();
    handler->tickAllAlarms();
    send(linkDown());
    journal();

    pass(second * 4 / 10);
    handler->tickAllAlarms();
    pass(second / 10);
    handler->tickAllAlarms();

    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusPushed(2), reported(listed(linkDown(), 2, 1, 1, 1)), replaced(1)})));
}

TEST_F(FmAlarmHandlerTickTest, inTheFirstHalfSecondOfTheClockThereIsNoRound)
{
    middleware.clock.setMonotonic(second / 2 - 1);
    start();
    send(linkDown());
    send(linkUp());
    journal();

    handler->tickAllAlarms();
    EXPECT_THAT(journal(), IsEmpty());

    pass(1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), ElementsAreArray(erased(2)));
}

TEST_F(FmAlarmHandlerTickTest, theLastRoundIsRememberedBeyondTheHandler)
{
    start();
    send(linkDown());
    send(linkUp());
    pass(second);
    handler->tickAllAlarms();
    send(linkDown());
    send(linkUp());
    start();

    pass(second / 2 - 1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), IsEmpty());

    pass(1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), ElementsAreArray(erased(3)));
}

TEST_F(FmAlarmHandlerTickTest, aNotificationTicksItsOwnAlarmAtAnyTime)
{
    start();
    handler->tickAllAlarms();

    send(linkDown());

    EXPECT_THAT(journal(), ElementsAreArray(
                               all({statusPushed(), reported(listed(linkDown(), 2, 1, 1, 1)), pushed(), replaced(2)})));
}

// --- A round

TEST_F(FmAlarmHandlerTickTest, alarmsAreTickedInTheOrderOfTheList)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    start();
    send(linkDown(port3));
    pass(1);
    send(linkDown(port1));
    pass(1);
    send(linkDown(port2));
    journal();

    pass(5 * second);
    handler->tickAllAlarms();

    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusPushed(4), reported(listed(linkDown(port3), 2, 1, 1, 1)), replaced(1),
                                      statusReplaced(4), reported(listed(linkDown(port1), 2, 2, 2, 2)), replaced(2),
                                      statusReplaced(4), reported(listed(linkDown(port2), 2, 3, 3, 3)), replaced(3)})));
}

TEST_F(FmAlarmHandlerTickTest, aRoundMayActivateClearAndDeleteAtOnce)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    config.transientCeaseAlarmFilterTime = 5 * second;
    config.alarmToggleWindowSize = 6 * second;
    config.alarmToggleTriggerCount = 9;
    start();
    send(linkDown(port1));
    send(linkDown(port2));
    pass(5 * second);
    handler->tickAllAlarms();
    send(linkUp(port1));
    pass(5 * second);
    handler->tickAllAlarms();
    send(linkUp(port2));
    send(linkDown(port3));
    journal();

    pass(5 * second);
    handler->tickAllAlarms();

    EXPECT_THAT(journal(), ElementsAreArray(all(
                               {erased(1), statusReplaced(3),
                                reported(cleared(listed(linkDown(port2), 2, 2, 2, 2), linkUp(port2), 4)), replaced(2),
                                statusReplaced(3), reported(listed(linkDown(port3), 2, 3, 5, 5)), replaced(4)})));
}

TEST_F(FmAlarmHandlerTickTest, activeAlarmsAreLeftAlone)
{
    start();
    send(linkDown(port1));
    journal();

    pass(60 * second);
    handler->tickAllAlarms();

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmHandlerTickTest, aCeasedAlarmIsKeptAsLongAsItsLastActivationIsInTheWindow)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 2;
    start();
    send(linkDown());
    send(linkUp());
    journal();

    pass(60 * second - 1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), IsEmpty());

    tick();
    EXPECT_THAT(journal(), ElementsAreArray(erased(2)));
}

TEST_F(FmAlarmHandlerTickTest, anAlarmThatAnotherRaiseMadeAfterItsEndIsNew)
{
    start();
    send(linkDown());
    send(linkUp());
    tick();
    journal();

    send(linkDown());

    EXPECT_THAT(journal(), ElementsAreArray(all(
                               {statusReplaced(), reported(listed(linkDown(), 2, 2, 3, 3)), pushed(), replaced(3)})));
}

TEST_F(FmAlarmHandlerTickTest, withoutAMonotonicClockWholeSecondsOfTheDayCount)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    start();
    middleware.clock.fail(CLOCK_MONOTONIC);
    send(linkDown());
    journal();

    pass(5 * second - 1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(), IsEmpty());

    pass(1);
    handler->tickAllAlarms();
    EXPECT_THAT(journal(),
                ElementsAreArray(all({statusPushed(2), reported(listed(linkDown(), 2, 1, 1, 1)), replaced(1)})));
}

}  // namespace
}  // namespace ZorvFm
