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

const char* const refuseAll = "CREATE TEMP TRIGGER i BEFORE INSERT ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END;"
                              "CREATE TEMP TRIGGER u BEFORE UPDATE ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END;"
                              "CREATE TEMP TRIGGER d BEFORE DELETE ON main.items BEGIN SELECT RAISE(ABORT, 'no'); END;"
                              "CREATE TEMP TRIGGER l BEFORE INSERT ON main.lists BEGIN SELECT RAISE(ABORT, 'no'); END;";
const char* const refuseNothing = "DROP TRIGGER i; DROP TRIGGER u; DROP TRIGGER d; DROP TRIGGER l;";

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
        DatabaseSettings settings;
        settings.calm = std::chrono::milliseconds(0);
        database.emplace(directory.path("zorv.db"), storeSchema(), settings, log.sink());
        lists.emplace(*database, limits);
    }

    /// A list "a" of three items of three bytes.
    void fill()
    {
        lists->create("a", 3);
        for (const char* data : {"one", "two", "six"}) {
            push(*lists, "a", data);
        }
    }

    std::uint64_t numberOfRows(const std::string& table)
    {
        std::uint64_t number = 0;
        Statement(*database, "SELECT count(*) FROM " + table).each([&](const Row& row) { number = row.number(0); });
        return number;
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
    EXPECT_FALSE(database->isFailing());

    EXPECT_EQ(ZORV_RETURN_OK, lists->replace("a", 2, "TWO"));
    EXPECT_TRUE(database->isFailing());
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

TEST_F(SqliteListStorageTest, whileNothingCanBeWrittenTheListsGoOnInMemory)
{
    fill();
    database->execute(refuseAll);
    std::uint64_t number = 0;

    EXPECT_EQ(ZORV_RETURN_OK, lists->create("b", 1));
    EXPECT_EQ(ZORV_RETURN_OK, lists->pushBack("a", "new", number));
    EXPECT_EQ(ZORV_RETURN_OK, lists->replace("a", 1, "ONE"));
    EXPECT_EQ(ZORV_RETURN_OK, lists->erase("a", 2));

    EXPECT_EQ(4U, number);
    EXPECT_EQ("list 1 of 3 1:ONE 3:six 4:new", toText(*lists, "a"));
    EXPECT_EQ("list 2 of 1", toText(*lists, "b"));
    EXPECT_TRUE(database->isFailing());
    EXPECT_THAT(log.lines(), ElementsAre("3 writing the store fails: " + database->getFile() + ": no"));
    open();
    EXPECT_EQ("list 1 of 3 1:one 2:two 3:six", toText(*lists, "a"));
    EXPECT_EQ("no list", toText(*lists, "b"));
}

TEST_F(SqliteListStorageTest, whatHasChangedMeanwhileIsRecordedWhenThatIsPossibleAgain)
{
    fill();
    lists->create("gone", 1);
    push(*lists, "gone", "x");
    database->execute(refuseAll);
    lists->replace("a", 1, "ONE");
    lists->erase("a", 2);
    push(*lists, "a", "new");
    lists->replace("a", 5, "NEW");
    lists->create("b", 2);
    push(*lists, "b", "xy");
    lists->remove("gone");
    lists->create("brief", 1);
    push(*lists, "brief", "z");
    lists->remove("brief");
    push(*lists, "a", "out");
    lists->erase("a", 8);

    lists->catchUp();
    EXPECT_TRUE(database->isFailing());
    database->execute(refuseNothing);
    lists->catchUp();
    database->getWrites().worked();

    EXPECT_FALSE(database->isFailing());
    for (int life = 0; life < 2; ++life) {
        EXPECT_EQ("list 1 of 3 1:ONE 3:six 5:NEW", toText(*lists, "a"));
        EXPECT_EQ("list 3 of 2 6:xy", toText(*lists, "b"));
        EXPECT_EQ("no list", toText(*lists, "gone"));
        EXPECT_EQ("no list", toText(*lists, "brief"));
        open();
    }
    EXPECT_EQ(9U, push(*lists, "a", "nxt"));
    lists->create("c", 1);
    EXPECT_EQ("list 5 of 1", toText(*lists, "c"));
    EXPECT_THAT(log.lines(), ElementsAre("3 writing the store fails: " + database->getFile() + ": no",
                                         "5 writing the store works again"));
}

TEST_F(SqliteListStorageTest, aWriteThatFailedAndIsOnRecordAllTheSameDoesNotComeBack)
{
    fill();
    database->execute("CREATE TEMP TRIGGER i AFTER INSERT ON main.items BEGIN SELECT RAISE(FAIL, 'no'); END");
    push(*lists, "a", "new");
    EXPECT_EQ(4U, numberOfRows("items"));
    lists->erase("a", 4);

    lists->catchUp();

    EXPECT_EQ(3U, numberOfRows("items"));
}

TEST_F(SqliteListStorageTest, aListWhoseRemovalFailsHalfWayIsRemovedLater)
{
    fill();
    database->execute("CREATE TEMP TRIGGER l BEFORE DELETE ON main.lists BEGIN SELECT RAISE(ABORT, 'no'); END;");

    EXPECT_EQ(ZORV_RETURN_OK, lists->remove("a"));
    EXPECT_EQ("no list", toText(*lists, "a"));
    EXPECT_EQ(3U, numberOfRows("items"));
    database->execute("DROP TRIGGER l");
    lists->catchUp();

    open();
    EXPECT_EQ("no list", toText(*lists, "a"));
    EXPECT_EQ(0U, numberOfRows("items"));
}

TEST_F(SqliteListStorageTest, aDiskThatIsFullIsCaughtUpWithWhenThereIsRoom)
{
    lists->create("a", 100000);
    database->execute("PRAGMA max_page_count = 60");
    const std::string large(100000, 'x');
    EXPECT_EQ(1U, push(*lists, "a", large));
    EXPECT_EQ(2U, push(*lists, "a", large));
    EXPECT_EQ(3U, push(*lists, "a", large));

    lists->catchUp();
    EXPECT_THAT(log.lines(),
                ElementsAre("3 writing the store fails: " + database->getFile() + ": database or disk is full"));
    EXPECT_EQ(ZORV_RETURN_OK, lists->erase("a", 1));
    lists->catchUp();

    open();
    EXPECT_EQ("list 1 of 100000 2:" + large + " 3:" + large, toText(*lists, "a"));
}

TEST_F(SqliteListStorageTest, whatTheSystemDoesNotWriteIsWrittenLater)
{
    fill();
    lists->create("b", 100000);
    const std::string large(100000, 'x');
    {
        const FileSizeLimit limit(80000);
        EXPECT_EQ(4U, push(*lists, "b", large));
        push(*lists, "a", "new");
    }
    EXPECT_THAT(log.lines(),
                ElementsAre(StartsWith("3 writing the store fails: " + database->getFile() + ": disk I/O error")));

    lists->catchUp();

    open();
    EXPECT_EQ("list 1 of 3 1:one 2:two 3:six 5:new", toText(*lists, "a"));
    EXPECT_EQ("list 2 of 100000 4:" + large, toText(*lists, "b"));
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
