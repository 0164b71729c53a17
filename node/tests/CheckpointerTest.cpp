#include "stores/Checkpointer.hpp"

#include <gmock/gmock.h>

#include <future>

namespace ZorvNode {

namespace {

constexpr std::chrono::hours never(1);

/// Counts the checkpoints and lets a test wait for one.
class Checkpoints {
public:
    std::function<bool()> work()
    {
        return [this] {
            const std::lock_guard<std::mutex> lock(mutex);
            changed.notify_one();
            return ++number > failures;
        };
    }

    bool await(int expected)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), [&] { return number >= expected; });
    }

    int get()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return number;
    }

    int failures = 0;

private:
    std::mutex mutex;
    std::condition_variable changed;
    int number = 0;
};

}  // namespace

TEST(CheckpointerTest, aSmallLogIsLeftAlone)
{
    Checkpoints checkpoints;
    {
        Checkpointer checkpointer({10, 20, std::chrono::milliseconds(0), never}, checkpoints.work(), [] {});
        checkpointer.committed(9);
    }
    EXPECT_EQ(0, checkpoints.get());
}

TEST(CheckpointerTest, aSmallLogIsMovedWhenItIsOldEnough)
{
    Checkpoints checkpoints;
    CheckpointSettings settings{10, 20, std::chrono::milliseconds(0), never, std::chrono::milliseconds(1)};
    Checkpointer checkpointer(settings, checkpoints.work(), [] {});

    checkpointer.committed(1);
    EXPECT_TRUE(checkpoints.await(1));

    checkpointer.committed(1);
    EXPECT_TRUE(checkpoints.await(2));
}

TEST(CheckpointerTest, aGrownLogIsMovedInAPause)
{
    Checkpoints checkpoints;
    Checkpointer checkpointer({10, 20, std::chrono::milliseconds(1), never}, checkpoints.work(), [] {});

    checkpointer.committed(10);

    EXPECT_TRUE(checkpoints.await(1));
}

TEST(CheckpointerTest, aGrownLogWaitsForThePause)
{
    Checkpoints checkpoints;
    {
        Checkpointer checkpointer({10, 20, never, never}, checkpoints.work(), [] {});
        checkpointer.committed(19);
    }
    EXPECT_EQ(0, checkpoints.get());
}

TEST(CheckpointerTest, aLogThatGoesOnGrowingWaitsNoLonger)
{
    Checkpoints checkpoints;
    Checkpointer checkpointer({10, 20, never, never}, checkpoints.work(), [] {});

    checkpointer.committed(10);
    checkpointer.committed(20);

    EXPECT_TRUE(checkpoints.await(1));
}

TEST(CheckpointerTest, aCheckpointThatFailsIsTriedAgainWithTheNextCommit)
{
    Checkpoints checkpoints;
    checkpoints.failures = 1;
    Checkpointer checkpointer({10, 20, std::chrono::milliseconds(0), std::chrono::milliseconds(1)}, checkpoints.work(),
                              [] {});
    checkpointer.committed(20);
    ASSERT_TRUE(checkpoints.await(1));

    checkpointer.committed(21);

    EXPECT_TRUE(checkpoints.await(2));
}

TEST(CheckpointerTest, whatIsCommittedDuringThePreparationBelongsToTheCheckpoint)
{
    Checkpoints checkpoints;
    std::atomic<int> preparations{0};
    {
        Checkpointer* made = nullptr;
        std::promise<Checkpointer*> known;
        Checkpointer checkpointer({10, 20, std::chrono::milliseconds(0), never}, checkpoints.work(), [&] {
            made = made == nullptr ? known.get_future().get() : made;
            ++preparations;
            made->committed(21);
        });
        known.set_value(&checkpointer);
        checkpointer.committed(20);
        ASSERT_TRUE(checkpoints.await(1));
        checkpointer.committed(20);
        ASSERT_TRUE(checkpoints.await(2));
    }
    EXPECT_EQ(2, checkpoints.get());
    EXPECT_EQ(2, preparations);
}

TEST(CheckpointerTest, theEndWaitsForACheckpointThatRuns)
{
    std::promise<void> begun;
    std::promise<void> finish;
    std::atomic<bool> isFinished{false};
    auto checkpointer = std::make_unique<Checkpointer>(
        CheckpointSettings{1, 1, std::chrono::milliseconds(0), never},
        [&] {
            begun.set_value();
            finish.get_future().wait();
            isFinished = true;
            return true;
        },
        [] {});
    checkpointer->committed(1);
    begun.get_future().wait();
    std::thread finisher([&] { finish.set_value(); });

    checkpointer.reset();

    EXPECT_TRUE(isFinished);
    finisher.join();
}

}  // namespace ZorvNode
