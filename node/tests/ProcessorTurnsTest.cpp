#include "runtime/ProcessorTurns.hpp"

#include <gtest/gtest.h>
#include <sched.h>

#include <thread>

namespace ZorvNode {

namespace {

void give(int policy)
{
    const sched_param none{};
    ASSERT_EQ(0, sched_setscheduler(0, policy, &none));
}

}  // namespace

TEST(ProcessorTurnsTest, aThreadInterruptsNobodyFromThenOnNorDoThoseThatItMakes)
{
    int own = -1;
    int made = -1;
    std::thread([&] {
        give(SCHED_OTHER);
        interruptNobody();
        own = sched_getscheduler(0);
        std::thread([&] { made = sched_getscheduler(0); }).join();
    }).join();

    EXPECT_EQ(SCHED_BATCH, own);
    EXPECT_EQ(SCHED_BATCH, made);
}

TEST(ProcessorTurnsTest, aPolicyThatWasGivenStays)
{
    int own = -1;
    std::thread([&] {
        give(SCHED_IDLE);
        interruptNobody();
        own = sched_getscheduler(0);
    }).join();

    EXPECT_EQ(SCHED_IDLE, own);
}

}  // namespace ZorvNode
