#include "Singleton.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Zorv {
namespace {

class Slow : public Singleton<Slow> {
public:
    Slow()
    {
        ++constructed;
        std::this_thread::yield();
    }

    static std::atomic<int> constructed;
};

std::atomic<int> Slow::constructed{0};

TEST(SingletonTest, threadsThatMeetAtTheFirstUseGetOneObject)
{
    std::vector<Slow*> found(8);
    std::vector<std::thread> threads;
    for (Slow*& place : found) {
        threads.emplace_back([&place] { place = &Slow::instance(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(1, Slow::constructed);
    EXPECT_EQ(std::vector<Slow*>(8, found.front()), found);
}

class FailsOnce : public Singleton<FailsOnce> {
public:
    FailsOnce()
    {
        if (++attempts == 1) {
            throw std::runtime_error("not yet");
        }
    }

    static int attempts;
};

int FailsOnce::attempts = 0;

TEST(SingletonTest, aFailedConstructionIsTriedAgainAtTheNextUse)
{
    EXPECT_THROW(FailsOnce::instance(), std::runtime_error);

    EXPECT_EQ(&FailsOnce::instance(), &FailsOnce::instance());
    EXPECT_EQ(2, FailsOnce::attempts);
}

class UnusedSoFar : public Singleton<UnusedSoFar> {
public:
    UnusedSoFar() { isConstructed = true; }

    static bool isConstructed;
};

bool UnusedSoFar::isConstructed = false;

TEST(SingletonTest, theObjectIsMadeAtItsFirstUse)
{
    EXPECT_FALSE(UnusedSoFar::isConstructed);

    UnusedSoFar::instance();

    EXPECT_TRUE(UnusedSoFar::isConstructed);
}

}  // namespace
}  // namespace Zorv
