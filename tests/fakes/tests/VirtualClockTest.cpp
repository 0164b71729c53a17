#include "VirtualClock.hpp"

#include <Poco/Thread.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFakes {
namespace {

constexpr uint64_t second = 1000000000;

uint64_t now(clockid_t clock)
{
    timespec time{};
    EXPECT_EQ(0, clock_gettime(clock, &time));
    return static_cast<uint64_t>(time.tv_sec) * second + static_cast<uint64_t>(time.tv_nsec);
}

class VirtualClockTest : public testing::Test {
protected:
    Journal journal;
    VirtualClock clock{journal};
};

TEST_F(VirtualClockTest, timeIsRealUntilTheClockIsTurnedOn)
{
    const uint64_t before = now(CLOCK_MONOTONIC);
    const timespec shortTime{0, 1};
    EXPECT_EQ(0, nanosleep(&shortTime, nullptr));
    EXPECT_EQ(0, clock_nanosleep(CLOCK_MONOTONIC, 0, &shortTime, nullptr));
    Poco::Thread::sleep(0);

    EXPECT_GT(now(CLOCK_MONOTONIC), before);
    const uint64_t seconds = now(CLOCK_REALTIME) / second;
    EXPECT_NEAR(static_cast<double>(time(nullptr)), static_cast<double>(seconds), 1);
    EXPECT_THAT(journal.take(), IsEmpty());
}

TEST_F(VirtualClockTest, timeStandsStillWhileItIsOn)
{
    clock.turnOn(5 * second, 7 * second);

    EXPECT_EQ(5 * second, now(CLOCK_MONOTONIC));
    EXPECT_EQ(7 * second, now(CLOCK_REALTIME));
    time_t stored = 0;
    EXPECT_EQ(7, time(&stored));
    EXPECT_EQ(7, stored);
    EXPECT_EQ(5 * second, now(CLOCK_MONOTONIC));

    clock.turnOff();
    EXPECT_NE(7 * second, now(CLOCK_REALTIME));
}

TEST_F(VirtualClockTest, theTestMovesTime)
{
    clock.turnOn(5 * second, 7 * second);

    clock.advance(std::chrono::milliseconds(1500));
    EXPECT_EQ(6 * second + second / 2, now(CLOCK_MONOTONIC));
    EXPECT_EQ(8 * second + second / 2, now(CLOCK_REALTIME));

    clock.setMonotonic(1);
    clock.setRealTime(2);
    EXPECT_EQ(1U, now(CLOCK_MONOTONIC));
    EXPECT_EQ(2U, now(CLOCK_REALTIME));
}

TEST_F(VirtualClockTest, everySleepMovesTimeAtOnceAndIsWrittenDown)
{
    clock.turnOn(10 * second, 0);
    const timespec relative{1, 5};
    const timespec until{15, 0};
    const timespec past{1, 0};

    nanosleep(&relative, nullptr);
    clock_nanosleep(CLOCK_MONOTONIC, 0, &relative, nullptr);
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &past, nullptr);
    Poco::Thread::sleep(100);
    std::this_thread::sleep_for(std::chrono::seconds(3));

    EXPECT_THAT(journal.take(), ElementsAre("sleep 1000000005", "sleep 1000000005", "sleep 2999999990", "sleep 0",
                                            "sleep 100000000", "sleep 3000000000"));
    EXPECT_EQ(18 * second + second / 10, now(CLOCK_MONOTONIC));
}

TEST_F(VirtualClockTest, clocksCanFail)
{
    clock.turnOn();
    timespec time{};
    clock.fail(CLOCK_MONOTONIC);

    errno = 0;
    EXPECT_EQ(-1, clock_gettime(CLOCK_MONOTONIC, &time));
    EXPECT_EQ(EINVAL, errno);
    EXPECT_EQ(0, clock_gettime(CLOCK_REALTIME, &time));

    clock.fail(CLOCK_MONOTONIC, false);
    EXPECT_EQ(0, clock_gettime(CLOCK_MONOTONIC, &time));
}

TEST_F(VirtualClockTest, selectIsRealUntilItIsSet)
{
    timeval none{0, 0};
    EXPECT_EQ(0, select(0, nullptr, nullptr, nullptr, &none));

    clock.onSelect([](int count, fd_set*, fd_set*, fd_set*, timeval*) { return 40 + count; });
    EXPECT_EQ(42, select(2, nullptr, nullptr, nullptr, &none));

    clock.onSelect(nullptr);
    EXPECT_EQ(0, select(0, nullptr, nullptr, nullptr, &none));
}

TEST_F(VirtualClockTest, selectByClockWaitsInVirtualTime)
{
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    clock.turnOn(5 * second, 0);
    clock.onSelect([this](int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout) {
        return clock.selectByClock(count, readable, writable, failed, timeout);
    });
    const auto wait = [&] {
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(ends[0], &readable);
        timeval timeout{1, 500000};
        return select(ends[0] + 1, &readable, nullptr, nullptr, &timeout);
    };

    EXPECT_EQ(0, wait());
    EXPECT_EQ(6 * second + second / 2, clock.monotonic());
    EXPECT_EQ(1, write(ends[1], "x", 1));
    EXPECT_EQ(1, wait());
    EXPECT_EQ(6 * second + second / 2, clock.monotonic());
    close(ends[0]);
    close(ends[1]);
}

}  // namespace
}  // namespace ZorvFakes
