#include "RefCounter.hpp"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace Zorv {
namespace {

class Event : public RefCounter {
public:
    explicit Event(bool& isDestroyed) : destroyed(isDestroyed) {}
    ~Event() override { destroyed = true; }

private:
    bool& destroyed;
};

TEST(RefCounterTest, theCreatorHoldsTheFirstReference)
{
    bool destroyed = false;
    auto* event = new Event(destroyed);
    EXPECT_FALSE(destroyed);

    event->releaseRef();

    EXPECT_TRUE(destroyed);
}

TEST(RefCounterTest, theLastReleaseDestroys)
{
    bool destroyed = false;
    auto* event = new Event(destroyed);
    event->addRef();
    event->addRef();

    event->releaseRef();
    event->releaseRef();
    EXPECT_FALSE(destroyed);
    event->releaseRef();

    EXPECT_TRUE(destroyed);
}

TEST(RefCounterTest, referencesAreTakenAndReleasedOnAnyThread)
{
    bool destroyed = false;
    auto* event = new Event(destroyed);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        event->addRef();
        threads.emplace_back([event] {
            for (int round = 0; round < 1000; ++round) {
                event->addRef();
                event->releaseRef();
            }
            event->releaseRef();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_FALSE(destroyed);

    event->releaseRef();

    EXPECT_TRUE(destroyed);
}

}  // namespace
}  // namespace Zorv
