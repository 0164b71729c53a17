#include "stores/LifeRecord.hpp"

#include <gmock/gmock.h>

#include <atomic>
#include <optional>
#include <thread>

#include "FaultyDisk.hpp"
#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LifeRecordTest : public ::testing::Test {
protected:
    void begin(const std::string& boot, Durability durability = Durability::process)
    {
        database.emplace(file, storeSchema(), DatabaseSettings{}, log.sink());
        life.emplace(*database, durability, boot, log.sink());
    }

    void endInOrder()
    {
        life.reset();
        database.reset();
    }

    /// What stands in the file stays as it is.
    void endAtOnce()
    {
        const std::string before = valuesOf("boot || ' ' || ended");
        life.reset();
        database->execute("UPDATE life SET ended = 0");
        EXPECT_EQ(before, valuesOf("boot || ' ' || ended"));
        database.reset();
    }

    std::string valuesOf(const std::string& columns)
    {
        std::string text;
        Statement(*database, "SELECT " + columns + " FROM life").each([&](const Row& row) { text += row.text(0); });
        return text;
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.write("x.db", "");
    LogRecorder log;
    std::optional<Database> database;
    std::optional<LifeRecord> life;
};

TEST_F(LifeRecordTest, aNewStoreHasNothingToTell)
{
    begin("a");

    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ("a 0", valuesOf("boot || ' ' || ended"));
}

TEST_F(LifeRecordTest, anOrderlyEndCostsNothing)
{
    begin("a");
    endInOrder();

    begin("b");

    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LifeRecordTest, theEndOfTheProcessAloneCostsNothing)
{
    begin("a");
    endAtOnce();

    begin("a");

    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LifeRecordTest, theEndOfTheMachineMayHaveCostWhatCameAfterTheLastSync)
{
    begin("a");
    database->execute("UPDATE life SET syncedAt = 1714543200");
    endAtOnce();

    begin("b");

    EXPECT_THAT(log.lines(), ElementsAre("4 " + file +
                                         ": the machine stopped while the node ran; what changed after "
                                         "2024-05-01T06:00:00Z may be lost"));
    endInOrder();
    begin("c");
    EXPECT_EQ(1U, log.lines().size());
}

TEST_F(LifeRecordTest, theEndOfTheMachineIsKnownAlsoRightAfterTheStart)
{
    begin("a");
    endInOrder();
    const std::map<std::string, std::string> before = {{"x.db", directory.read("x.db")}};
    FaultyDisk disk;
    begin("b");
    const std::size_t steps = disk.getNumberOfSteps();
    endInOrder();
    disk.release();
    std::mt19937 dice(1);
    for (std::size_t cut = 1; cut <= 20; ++cut) {
        disk.cutPower(steps, before, dice, directory.path());

        begin("c");

        EXPECT_EQ(cut, log.lines().size());
        endInOrder();
    }
}

TEST_F(LifeRecordTest, theEndOfTheMachineCostsNothingWhereEachOperationIsSynced)
{
    begin("a", Durability::power);
    endAtOnce();

    begin("b", Durability::power);

    EXPECT_THAT(log.lines(), ElementsAre("5 " + file +
                                         ": the machine stopped while the node ran; nothing is lost that was written "
                                         "by then"));
}

TEST_F(LifeRecordTest, aCheckpointNotesItsTime)
{
    begin("a");
    database->execute("UPDATE life SET syncedAt = 7");

    database->checkpoint();

    EXPECT_EQ("1", valuesOf("syncedAt > 1700000000"));
}

TEST_F(LifeRecordTest, whatACheckpointNotesIsNoReasonForAnother)
{
    DatabaseSettings settings;
    settings.checkpoints.age = std::chrono::milliseconds(1);
    settings.checkpoints.pause = std::chrono::milliseconds(0);
    database.emplace(file, storeSchema(), settings, log.sink());
    std::atomic<int> checkpoints{0};
    database->beforeCheckpoint([&] {
        database->execute("INSERT INTO clients VALUES (" + std::to_string(checkpoints) + ", 1, 1)");
        ++checkpoints;
    });
    database->execute("INSERT INTO clients VALUES ('a', 1, 1)");
    while (checkpoints == 0) {
        std::this_thread::yield();
    }

    std::this_thread::sleep_for(std::chrono::milliseconds(50));

    EXPECT_EQ(1, checkpoints);
}

TEST_F(LifeRecordTest, theSystemNamesItsStart)
{
    EXPECT_EQ(36U, LifeRecord::thisBoot().size());
    EXPECT_EQ(LifeRecord::thisBoot(), LifeRecord::thisBoot());
}

}  // namespace ZorvNode
