#include "stores/SqliteListStorage.hpp"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>

#include <optional>

#include "ListText.hpp"
#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

/// No file of this process grows beyond so many bytes while this lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        signal(SIGXFSZ, handler);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*const handler)(int);
    rlimit before{};
};

}  // namespace

class SqliteListStorageTest : public ::testing::Test {
protected:
    SqliteListStorageTest()
    {
        directory.write("zorv.db", "");
        open();
    }

    void open(const ListLimits& limits = {})
    {
        lists.reset();
        database.reset();
        database.emplace(directory.path("zorv.db"), storeSchema(), DatabaseSettings{}, log.sink());
        lists.emplace(*database, limits, log.sink(), std::chrono::milliseconds(0));
    }

    /// A list "a" of three items of three bytes.
    void fill()
    {
        lists->create("a", 3);
        for (const char* data : {"one", "two", "six"}) {
            push(*lists, "a", data);
        }
    }

    std::string recordedLog() const { return directory.read("zorv.db-wal"); }

    const ZorvTest::TemporaryDirectory directory;
    LogRecorder log;
    std::optional<Database> database;
    std::optional<SqliteListStorage> lists;
};

// --- over a restart

TEST_F(SqliteListStorageTest, listsAndItemsWithTheirOrderAndNumbersAreThereAgain)
{
    fill();
    lists->create("b", 2);
    push(*lists, "b", "xy");
    push(*lists, "a", "ten");
    lists->replace("a", 2, "TWO");
    lists->erase("a", 3);

    open();

    EXPECT_EQ("list 1 of 3 1:one 2:TWO 5:ten", toText(*lists, "a"));
    EXPECT_EQ("list 2 of 2 4:xy", toText(*lists, "b"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(SqliteListStorageTest, everyByteOfNamesAndItemsIsKept)
{
    const std::string name = "list \xff'\"\x01";
    const std::string data("\0;\xff\0", 4);
    lists->create(name, 4);
    push(*lists, name, data);

    open();

    EXPECT_EQ("list 1 of 4 1:" + data, toText(*lists, name));
}

TEST_F(SqliteListStorageTest, aRemovedListIsGoneWithItsItems)
{
    fill();
    lists->create("b", 3);
    push(*lists, "b", "xyz");
    lists->remove("a");

    open();

    EXPECT_EQ("no list", toText(*lists, "a"));
    EXPECT_EQ("list 2 of 3 4:xyz", toText(*lists, "b"));
    lists->create("a", 3);
    EXPECT_EQ("list 3 of 3", toText(*lists, "a"));
}

TEST_F(SqliteListStorageTest, numbersAndIdentitiesOfWhatWasErasedLastAreNotUsedAgain)
{
    fill();
    lists->erase("a", 3);
    lists->create("b", 1);
    lists->remove("b");

    open();

    EXPECT_EQ(4U, push(*lists, "a", "new"));
    lists->create("c", 1);
    EXPECT_EQ("list 3 of 1", toText(*lists, "c"));
}

TEST_F(SqliteListStorageTest, listsBeyondLowerLimitsAreKeptAndTakeNothingMore)
{
    fill();

    open({1, 2, 3});

    EXPECT_EQ("list 1 of 3 1:one 2:two 3:six", toText(*lists, "a"));
    std::uint64_t number = 0;
    EXPECT_EQ(ZORV_RETURN_NO_RESOURCES, lists->pushBack("a", "new", number));
}

// --- what is written

TEST_F(SqliteListStorageTest, replacingAnItemByItselfDoesNotReachTheDatabase)
{
    fill();
    const std::string before = recordedLog();
    database->execute("CREATE TEMP TRIGGER u BEFORE UPDATE ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END");

    EXPECT_EQ(ZORV_RETURN_OK, lists->replace("a", 2, "two"));
    EXPECT_EQ(before, recordedLog());

    EXPECT_EQ(ZORV_RETURN_FAILED, lists->replace("a", 2, "TWO"));
}

TEST_F(SqliteListStorageTest, whatIsRefusedWritesNothing)
{
    fill();
    const std::string before = recordedLog();
    std::uint64_t number = 0;

    EXPECT_EQ(ZORV_RETURN_EXISTS, lists->create("a", 3));
    EXPECT_EQ(ZORV_RETURN_NOT_FOUND, lists->pushBack("b", "new", number));
    EXPECT_EQ(ZORV_RETURN_NOT_FOUND, lists->erase("a", 9));
    EXPECT_EQ(ZORV_RETURN_NOT_FOUND, lists->replace("a", UINT64_MAX, "new"));
    EXPECT_EQ(ZORV_RETURN_NOT_FOUND, lists->remove("b"));

    EXPECT_EQ(before, recordedLog());
}

// --- what cannot be written

TEST_F(SqliteListStorageTest, everyChangeThatTheDatabaseRefusesFailsAndChangesNothing)
{
    fill();
    database->execute("CREATE TEMP TRIGGER i BEFORE INSERT ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END;"
                      "CREATE TEMP TRIGGER u BEFORE UPDATE ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END;"
                      "CREATE TEMP TRIGGER d BEFORE DELETE ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END;"
                      "CREATE TEMP TRIGGER l BEFORE INSERT ON main.lists BEGIN SELECT RAISE(ABORT, 'no'); END;");
    std::uint64_t number = 77;

    EXPECT_EQ(ZORV_RETURN_FAILED, lists->create("b", 1));
    EXPECT_EQ(ZORV_RETURN_FAILED, lists->pushBack("a", "new", number));
    EXPECT_EQ(ZORV_RETURN_FAILED, lists->replace("a", 1, "new"));
    EXPECT_EQ(ZORV_RETURN_FAILED, lists->erase("a", 1));
    EXPECT_EQ(ZORV_RETURN_FAILED, lists->remove("a"));

    EXPECT_EQ(77U, number);
    for (int life = 0; life < 2; ++life) {
        EXPECT_EQ("list 1 of 3 1:one 2:two 3:six", toText(*lists, "a"));
        EXPECT_EQ("no list", toText(*lists, "b"));
        open();
    }
    EXPECT_EQ(4U, push(*lists, "a", "new"));
}

TEST_F(SqliteListStorageTest, aListWhoseRemovalFailsHalfWayKeepsItsItems)
{
    fill();
    database->execute("CREATE TEMP TRIGGER l BEFORE DELETE ON main.lists BEGIN SELECT RAISE(ABORT, 'no'); END;");

    EXPECT_EQ(ZORV_RETURN_FAILED, lists->remove("a"));

    open();
    EXPECT_EQ("list 1 of 3 1:one 2:two 3:six", toText(*lists, "a"));
}

TEST_F(SqliteListStorageTest, aFailureIsToldOnceAndSoIsItsEnd)
{
    fill();
    database->execute("CREATE TEMP TRIGGER i BEFORE INSERT ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END");
    push(*lists, "a", "new");
    push(*lists, "a", "new");
    database->execute("DROP TRIGGER i");
    push(*lists, "a", "new");
    push(*lists, "a", "new");

    EXPECT_THAT(log.lines(), ElementsAre("3 writing replicated lists fails: " + database->getFile() + ": no",
                                         "5 writing replicated lists works again"));
}

TEST_F(SqliteListStorageTest, aFullDiskIsNoResourcesUntilThereIsRoom)
{
    lists->create("a", 100000);
    database->execute("PRAGMA max_page_count = 60");
    const std::string large(100000, 'x');
    EXPECT_EQ(1U, push(*lists, "a", large));
    EXPECT_EQ(2U, push(*lists, "a", large));
    std::uint64_t number = 0;

    EXPECT_EQ(ZORV_RETURN_NO_RESOURCES, lists->pushBack("a", large.data(), number));

    EXPECT_EQ(0U, number);
    EXPECT_THAT(log.lines(),
                ElementsAre("3 writing replicated lists fails: " + database->getFile() + ": database or disk is full"));
    EXPECT_EQ(ZORV_RETURN_OK, lists->erase("a", 1));
    EXPECT_EQ(3U, push(*lists, "a", large));
    open();
    EXPECT_EQ("list 1 of 100000 2:" + large + " 3:" + large, toText(*lists, "a"));
}

TEST_F(SqliteListStorageTest, whatTheSystemDoesNotWriteFailsAndChangesNothing)
{
    fill();
    lists->create("b", 100000);
    const std::string large(100000, 'x');
    std::uint64_t number = 0;
    {
        const FileSizeLimit limit(80000);
        EXPECT_EQ(ZORV_RETURN_FAILED, lists->pushBack("b", large.data(), number));
    }

    EXPECT_THAT(log.lines(), ElementsAre(StartsWith("3 writing replicated lists fails: " + database->getFile() +
                                                    ": disk I/O error")));
    EXPECT_EQ(4U, push(*lists, "a", "new"));
    open();
    EXPECT_EQ("list 1 of 3 1:one 2:two 3:six 4:new", toText(*lists, "a"));
    EXPECT_EQ("list 2 of 100000", toText(*lists, "b"));
}

// --- what cannot be read

TEST_F(SqliteListStorageTest, itemsThatFitNoListAreDamage)
{
    fill();
    for (const char* damage :
         {"UPDATE items SET list = 9 WHERE number = 2", "UPDATE items SET data = x'00', list = 1"}) {
        database->execute(damage);
        try {
            open();
            ADD_FAILURE() << damage;
        } catch (const StoreError& e) {
            EXPECT_EQ(StoreError::Kind::damaged, e.kind);
            EXPECT_THAT(e.what(), StartsWith(directory.path("zorv.db") + ": is damaged: item "));
        }
    }
}

}  // namespace ZorvNode
