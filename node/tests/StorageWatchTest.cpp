#include "runtime/StorageWatch.hpp"

#include <gmock/gmock.h>

#include <atomic>
#include <optional>

namespace ZorvNode {

using ::testing::ElementsAre;

class StorageWatchTest : public ::testing::Test {
protected:
    /// Watches "disk", which works as long as it is said to.
    void watch()
    {
        Storage disk{"disk", "", [this] {
                         ++tries;
                         return works.load();
                     }};
        sut.emplace(
            std::vector<Storage>{std::move(disk)},
            [this](const Storage& storage, bool isFailing) { tell(storage.name + (isFailing ? " fails" : " works")); },
            std::chrono::milliseconds(1));
    }

    void tell(const std::string& what)
    {
        if (deaf.exchange(false)) {
            throw std::runtime_error("busy");
        }
        const std::lock_guard<std::mutex> lock(mutex);
        told.push_back(what);
        changed.notify_all();
    }

    std::vector<std::string> awaitTold(std::size_t number)
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait_for(lock, std::chrono::seconds(20), [&] { return told.size() >= number; });
        return told;
    }

    std::atomic<bool> works{true};
    std::atomic<bool> deaf{false};
    std::atomic<int> tries{0};
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::string> told;  // guarded by mutex
    std::optional<StorageWatch> sut;
};

TEST_F(StorageWatchTest, atTheStartItTellsHowThingsStand)
{
    watch();

    EXPECT_THAT(awaitTold(1), ElementsAre("disk works"));
}

TEST_F(StorageWatchTest, aFailureIsToldOnceAndTriedAgainUntilItsEnd)
{
    watch();
    awaitTold(1);

    works = false;
    sut->wake();
    awaitTold(2);
    const int before = tries;
    while (tries < before + 5) {
        std::this_thread::yield();
    }
    works = true;

    EXPECT_THAT(awaitTold(3), ElementsAre("disk works", "disk fails", "disk works"));
}

TEST_F(StorageWatchTest, whileEverythingWorksNothingIsTried)
{
    watch();
    awaitTold(1);
    sut.reset();

    EXPECT_EQ(1, tries);
}

TEST_F(StorageWatchTest, whoeverDoesNotTakeItIsToldAgain)
{
    works = false;
    deaf = true;
    watch();

    EXPECT_THAT(awaitTold(1), ElementsAre("disk fails"));
    EXPECT_GE(tries, 2);
}

TEST_F(StorageWatchTest, itsEndDoesNotWaitForTheNextTry)
{
    works = false;
    sut.emplace(
        std::vector<Storage>{{"disk", "", [this] { return works.load(); }}},
        [this](const Storage& storage, bool) { tell(storage.name); }, std::chrono::hours(1));
    awaitTold(1);

    sut.reset();

    EXPECT_THAT(told, ElementsAre("disk"));
}

}  // namespace ZorvNode
