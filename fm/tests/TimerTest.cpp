#include "Timer.hpp"

#include <chrono>
#include <ctime>
#include <type_traits>

#include "FmTest.hpp"

using std::chrono::nanoseconds;

namespace ZorvFm {
namespace {

constexpr std::uint64_t now = 1000000000000;

static_assert(std::has_virtual_destructor_v<Timer>, "timers may be refined");

class TimerTest : public FmTest {
protected:
    TimerTest() { middleware.clock.turnOn(now); }

    Timer timer;
};

TEST_F(TimerTest, theTimeIsTheMonotonicClocksInNanoseconds)
{
    middleware.clock.setMonotonic(3000000007);
    EXPECT_EQ(3000000007u, Timer::getTimeNowNano());

    middleware.clock.setMonotonic(123456789999999999);
    EXPECT_EQ(123456789999999999u, Timer::getTimeNowNano());
}

TEST_F(TimerTest, theTimeOfDayDoesNotMatter)
{
    middleware.clock.setRealTime(5);

    EXPECT_EQ(now, Timer::getTimeNowNano());
}

TEST_F(TimerTest, withoutAMonotonicClockTheTimeOfDayInSecondsTakesItsPlace)
{
    middleware.clock.setRealTime(1700000000999999999);
    middleware.clock.fail(CLOCK_MONOTONIC);

    EXPECT_EQ(1700000000000000000u, Timer::getTimeNowNano());
}

TEST_F(TimerTest, theRealClockRuns)
{
    middleware.clock.turnOff();
    timespec before{};
    clock_gettime(CLOCK_MONOTONIC, &before);
    const std::uint64_t measured = Timer::getTimeNowNano();
    timespec after{};
    clock_gettime(CLOCK_MONOTONIC, &after);

    EXPECT_LE(static_cast<std::uint64_t>(before.tv_sec) * 1000000000 + static_cast<std::uint64_t>(before.tv_nsec),
              measured);
    EXPECT_GE(static_cast<std::uint64_t>(after.tv_sec) * 1000000000 + static_cast<std::uint64_t>(after.tv_nsec),
              measured);
}

TEST_F(TimerTest, aNewTimerHasExpired)
{
    EXPECT_TRUE(timer.isTimeOut(0));
    EXPECT_TRUE(timer.isTimeOut(now));
}

TEST_F(TimerTest, aTimerOfNoTimeHasExpiredAtOnce)
{
    timer.start(0);

    EXPECT_TRUE(timer.isTimeOut(now));
    EXPECT_TRUE(timer.isTimeOut(now - 1));
    EXPECT_TRUE(timer.isTimeOut(0));
}

TEST_F(TimerTest, expiresWhenItsTimeHasPassed)
{
    timer.start(5000000000);

    EXPECT_FALSE(timer.isTimeOut(0));
    EXPECT_FALSE(timer.isTimeOut(now));
    EXPECT_FALSE(timer.isTimeOut(now + 4999999999));
    EXPECT_TRUE(timer.isTimeOut(now + 5000000000));
    EXPECT_TRUE(timer.isTimeOut(UINT64_MAX));
}

TEST_F(TimerTest, asksForTheTimeAtItsStartOnly)
{
    timer.start(10);
    middleware.clock.advance(nanoseconds(100));

    EXPECT_FALSE(timer.isTimeOut(now + 9));
    EXPECT_TRUE(timer.isTimeOut(now + 10));
}

TEST_F(TimerTest, startedAgainItBeginsAnew)
{
    timer.start(10);
    middleware.clock.advance(nanoseconds(5));
    timer.start(20);

    EXPECT_FALSE(timer.isTimeOut(now + 24));
    EXPECT_TRUE(timer.isTimeOut(now + 25));

    timer.start(0);
    EXPECT_TRUE(timer.isTimeOut(now));
}

TEST_F(TimerTest, aCopyRunsOnByItself)
{
    timer.start(10);
    const Timer copy = timer;
    timer.start(0);

    EXPECT_FALSE(copy.isTimeOut(now + 9));
    EXPECT_TRUE(copy.isTimeOut(now + 10));
}

TEST_F(TimerTest, anEndBeyondTheNumbersWrapsAround)
{
    timer.start(UINT64_MAX);

    EXPECT_FALSE(timer.isTimeOut(now - 2));
    EXPECT_TRUE(timer.isTimeOut(now - 1));
}

}  // namespace
}  // namespace ZorvFm
