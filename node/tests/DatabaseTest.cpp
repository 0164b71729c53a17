#include "stores/Database.hpp"

#include <gmock/gmock.h>

#include <thread>

#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"
#include "stores/Statement.hpp"
#include "stores/Transaction.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr std::int32_t application = 7;
const Schema first = {application, {"CREATE TABLE t (n INTEGER)"}};
const Schema second = {application, {"CREATE TABLE t (n INTEGER)", "ALTER TABLE t ADD COLUMN text DEFAULT 'old'"}};

}  // namespace

class DatabaseTest : public ::testing::Test {
protected:
    Database open(const Schema& schema = first, const DatabaseSettings& settings = {})
    {
        return Database(file, schema, settings, log.sink());
    }

    static std::vector<std::string> query(Database& database, const std::string& sql)
    {
        std::vector<std::string> texts;
        Statement(database, sql).each([&](const Row& row) { texts.push_back(row.text(0)); });
        return texts;
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.write("x.db", "");
    LogRecorder log;
};

TEST_F(DatabaseTest, durabilityIsHowOftenItIsSynced)
{
    {
        Database database = open(first, {Durability::process, {}});
        EXPECT_THAT(query(database, "PRAGMA synchronous"), ElementsAre("1"));
        EXPECT_THAT(query(database, "PRAGMA journal_mode"), ElementsAre("wal"));
        EXPECT_THAT(query(database, "PRAGMA locking_mode"), ElementsAre("exclusive"));
    }
    Database database = open(first, {Durability::power, {}});
    EXPECT_THAT(query(database, "PRAGMA synchronous"), ElementsAre("2"));
}

TEST_F(DatabaseTest, aStatementRunsAgainWithOtherValues)
{
    Database database = open(second);
    Statement insert(database, "INSERT INTO t VALUES (?, ?)");

    insert.run(1U, "one");
    insert.run(UINT64_C(1) << 62U, Blob{"t\0o", 3});

    EXPECT_THAT(query(database, "SELECT n FROM t"), ElementsAre("1", "4611686018427387904"));
    EXPECT_THAT(query(database, "SELECT text FROM t"), ElementsAre("one", std::string("t\0o", 3)));
}

TEST_F(DatabaseTest, aFailureNamesFileAndReason)
{
    Database database = open();
    try {
        database.execute("SELECT * FROM missing");
        ADD_FAILURE();
    } catch (const StoreError& e) {
        EXPECT_EQ(file + ": no such table: missing", std::string(e.what()));
        EXPECT_EQ(StoreError::Kind::other, e.kind);
    }
}

TEST_F(DatabaseTest, aFileThatCannotBeOpenedIsToldWithTheReasonOfTheSystem)
{
    const std::string missing = directory.path("none/x.db");
    try {
        const Database opened(missing, first, {}, log.sink());
        ADD_FAILURE();
    } catch (const StoreError& e) {
        EXPECT_EQ(missing + ": unable to open database file: No such file or directory", std::string(e.what()));
    }
}

TEST_F(DatabaseTest, aTransactionIsNothingWithoutItsCommit)
{
    Database database = open();
    {
        const Transaction abandoned(database);
        database.execute("INSERT INTO t VALUES (1)");
    }
    EXPECT_THAT(query(database, "SELECT n FROM t"), IsEmpty());
    {
        Transaction kept(database);
        database.execute("INSERT INTO t VALUES (2)");
        kept.commit();
    }
    EXPECT_THAT(query(database, "SELECT n FROM t"), ElementsAre("2"));
}

TEST_F(DatabaseTest, aTransactionIsSeenByOtherThreadsAsAWhole)
{
    Database database = open();
    Statement insert(database, "INSERT INTO t VALUES (1)");
    std::thread writer([&] {
        for (int round = 0; round < 100; ++round) {
            Transaction pair(database);
            insert.run();
            insert.run();
            pair.commit();
        }
    });
    std::uint64_t count = 0;
    Statement counting(database, "SELECT count(*) FROM t");
    while (count < 200) {
        counting.each([&](const Row& row) { count = row.number(0); });
        EXPECT_EQ(0U, count % 2);
    }
    writer.join();
}

TEST_F(DatabaseTest, aFileOfAnEarlierVersionIsBroughtUpToDateWithItsContent)
{
    open().execute("INSERT INTO t VALUES (1)");

    Database database = open(second);

    EXPECT_THAT(query(database, "SELECT text FROM t"), ElementsAre("old"));
    EXPECT_THAT(query(database, "PRAGMA user_version"), ElementsAre("2"));
}

TEST_F(DatabaseTest, anUpgradeThatFailsLeavesTheEarlierVersion)
{
    open().execute("INSERT INTO t VALUES (1)");
    const Schema broken = {application, {first.steps[0], "CREATE TABLE u (n)", "CREATE TABLE t (n)"}};

    EXPECT_THROW(open(broken), StoreError);

    Database database = open();
    EXPECT_THAT(query(database, "PRAGMA user_version"), ElementsAre("1"));
    EXPECT_THAT(query(database, "SELECT name FROM sqlite_schema"), ElementsAre("t"));
}

TEST_F(DatabaseTest, whatIsWrittenReachesTheFileWithoutAnyoneAskingForIt)
{
    DatabaseSettings settings;
    settings.checkpoints.pages = 5;
    settings.checkpoints.pause = std::chrono::milliseconds(1);
    Database database = open(first, settings);
    const std::string before = directory.read("x.db");
    for (int row = 0; row < 5; ++row) {
        database.execute("INSERT INTO t VALUES (1)");
    }

    while (directory.read("x.db") == before) {
        std::this_thread::yield();
    }

    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(DatabaseTest, aCommitDoesNotMoveTheLogItself)
{
    DatabaseSettings settings;
    settings.checkpoints.pages = 1000000;
    settings.checkpoints.urgentPages = 1000000;
    Database database = open(first, settings);
    const std::string before = directory.read("x.db");

    Statement insert(database, "INSERT INTO t VALUES (1)");
    for (int row = 0; row < 3000; ++row) {
        insert.run();
    }

    EXPECT_EQ(before, directory.read("x.db"));
    database.checkpoint();
    EXPECT_NE(before, directory.read("x.db"));
}

TEST_F(DatabaseTest, theLogIsGoneAfterAnOrderlyEnd)
{
    open().execute("INSERT INTO t VALUES (1)");

    EXPECT_EQ("", directory.read("x.db-wal"));
    Database database = open();
    EXPECT_THAT(query(database, "SELECT n FROM t"), ElementsAre("1"));
}

}  // namespace ZorvNode
