/// Disks that fail at any operation, in each way, or take their time: the lists in memory are right, and the file is too as
/// soon as the disk works.

#include <gmock/gmock.h>

#include <future>
#include <optional>
#include <thread>

#include "FaultyDisk.hpp"
#include "ListText.hpp"
#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"
#include "stores/MemoryListStorage.hpp"
#include "stores/SqliteListStorage.hpp"

namespace ZorvNode {

class DiskTroubleTest : public ::testing::Test {
protected:
    void open()
    {
        lists.reset();
        database.reset();
        database.emplace(file, storeSchema(), frequentCheckpoints(), log.sink());
        lists.emplace(*database, ListLimits{});
    }

    static DatabaseSettings frequentCheckpoints()
    {
        DatabaseSettings settings;
        settings.durability = Durability::power;
        settings.checkpoints.pages = 4;
        settings.checkpoints.urgentPages = 8;
        settings.checkpoints.pause = std::chrono::milliseconds(0);
        return settings;
    }

    static void change(ListStorage& storage, int round)
    {
        const std::string data(600, static_cast<char>('a' + round % 26));
        storage.create("alarms", 600);
        const std::uint64_t number = push(storage, "alarms", data);
        push(storage, "alarms", data);
        storage.replace("alarms", number, std::string(600, 'x').data());
        storage.erase("alarms", number + 1);
        storage.create("brief", 2);
        push(storage, "brief", "ab");
        if (round % 2 == 0) {
            storage.remove("brief");
        }
    }

    static std::string textOf(ListStorage& storage)
    {
        return toText(storage, "alarms") + "\n" + toText(storage, "brief");
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.write("zorv.db", "");
    LogRecorder log;
    FaultyDisk disk;
    std::optional<Database> database;
    std::optional<SqliteListStorage> lists;
};

TEST_F(DiskTroubleTest, whereverTheDiskFailsTheListsAreRightAndHeal)
{
    open();
    MemoryListStorage model{ListLimits{}};
    for (int round = 0; round < 60; ++round) {
        const int codes[] = {SQLITE_FULL, SQLITE_IOERR_WRITE, SQLITE_IOERR_FSYNC, SQLITE_READONLY};
        disk.failAfter(static_cast<std::size_t>(round % 23), codes[round % 4]);
        change(*lists, round);
        change(model, round);
        EXPECT_EQ(textOf(model), textOf(*lists));
        lists->catchUp();

        disk.failWith(SQLITE_OK);
        lists->catchUp();
        open();
        ASSERT_EQ(textOf(model), textOf(*lists)) << "round " << round;
    }
}

TEST_F(DiskTroubleTest, readersDoNotWaitForASlowDisk)
{
    open();
    lists->create("alarms", 600);
    std::promise<void> release;
    disk.block(release.get_future().share());
    std::thread writer([this] { push(*lists, "alarms", std::string(600, 'a')); });
    disk.awaitBlocked();

    EXPECT_EQ("list 1 of 600", toText(*lists, "alarms"));

    release.set_value();
    writer.join();
    EXPECT_NE("list 1 of 600", toText(*lists, "alarms"));
}

}  // namespace ZorvNode
