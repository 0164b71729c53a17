#include "stores/StateStore.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "ListText.hpp"
#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"
#include "stores/Statement.hpp"

namespace ZorvNode {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

namespace {

const std::string damagedAdvice =
    "; put a good copy in its place, or start with --accept-empty: the file is set aside and "
    "the node begins with empty lists";

/// As a user without special rights, whoever runs the test.
class Unprivileged {
public:
    Unprivileged() : user(geteuid()) { change(user == 0 ? nobody : user); }
    ~Unprivileged() { change(user); }

    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    static constexpr uid_t nobody = 65534;

private:
    static void change(uid_t to) { EXPECT_EQ(0, seteuid(to)); }

    const uid_t user;
};

}  // namespace

class StateStoreTest : public ::testing::Test {
protected:
    StateStoreTest() { settings.directory = directory.path(); }

    StateStore open() { return StateStore(settings, {}, log.sink()); }

    /// The failure's text behind the file's name; "opened" when there is none.
    std::string failure()
    {
        try {
            open();
        } catch (const StoreError& e) {
            EXPECT_THAT(log.lines(), ElementsAre(std::string("3 ") + e.what()));
            const std::string text = e.what();
            EXPECT_EQ(file, text.substr(0, file.size()));
            return text.substr(std::min(file.size(), text.size()));
        }
        return "opened";
    }

    void fill(int items = 1)
    {
        StateStore store = open();
        store.getLists().create("a", 1000);
        for (int item = 0; item < items; ++item) {
            push(store.getLists(), "a", std::string(1000, 'x'));
        }
    }

    void execute(const std::string& sql) { Database(file, storeSchema(), {}, log.sink()).execute(sql); }

    void overwrite(std::size_t place, const std::string& bytes) const
    {
        std::string content = directory.read("zorv.db");
        ASSERT_LT(place + bytes.size(), content.size());
        directory.write("zorv.db", content.replace(place, bytes.size(), bytes));
    }

    /// Names in the directory, in alphabetical order.
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(directory.path())) {
            found.push_back(entry.path().filename());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    /// The damaged store is refused as it is, without being touched, and set aside when that was asked for.
    void expectDamage(const std::string& reason)
    {
        const std::string damaged = directory.read("zorv.db");
        const std::string told = failure();
        EXPECT_THAT(told, AllOf(StartsWith(reason), EndsWith(damagedAdvice)));
        EXPECT_EQ(damaged, directory.read("zorv.db"));

        settings.acceptEmpty = true;
        {
            StateStore store = open();
            EXPECT_EQ("no list", toText(store.getLists(), "a"));
        }
        ASSERT_LE(2U, names().size());
        const std::string aside = names()[1];
        EXPECT_THAT(aside, MatchesRegex("zorv\\.db\\.corrupt-[0-9]{8}T[0-9]{6}Z"));
        EXPECT_EQ(damaged, directory.read(aside));
        EXPECT_EQ("4 " + file + told.substr(0, told.size() - damagedAdvice.size()) + "; set aside as " +
                      directory.path(aside) + ", the node begins with empty lists",
                  log.lines().back());
    }

    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.path("zorv.db");
    StoreSettings settings;
    LogRecorder log;
};

TEST_F(StateStoreTest, listsAreInTheFileAndThereAgain)
{
    fill(3);

    StateStore store = open();

    EXPECT_EQ(3U, toText(store.getLists(), "a").size() / 1000);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(StateStoreTest, listsInMemoryMakeNoFile)
{
    settings.kind = StoreKind::memory;

    fill();

    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(nullptr, open().getDatabase());
}

TEST_F(StateStoreTest, filesAreTheOwnersAloneWhateverTheMask)
{
    for (const mode_t mask : {0000U, 0777U}) {
        const mode_t before = umask(mask);
        StateStore store = open();
        umask(before);
        store.getLists().create("a", 1);
        for (const std::string& name : {file, file + "-wal"}) {
            struct stat status {};
            EXPECT_EQ(0, stat(name.c_str(), &status));
            EXPECT_EQ(0600U, status.st_mode & 07777U) << name;
        }
        std::filesystem::remove(file);
        std::filesystem::remove(file + "-wal");
    }
}

TEST_F(StateStoreTest, aStoreThatWasKilledWhileItWasMadeIsMadeAnew)
{
    directory.write("zorv.db.new", "half of");
    directory.write("zorv.db.new-wal", "a file");

    fill();

    EXPECT_THAT(names(), ElementsAre("zorv.db"));
}

// --- damaged

TEST_F(StateStoreTest, aBrokenHeaderIsDamage)
{
    fill();
    overwrite(0, std::string(100, 'z'));
    expectDamage(": file is not a database");
}

TEST_F(StateStoreTest, aBrokenPageInTheMiddleIsDamage)
{
    fill(100);
    overwrite(std::size_t{4096} * 10, std::string(4096, 'z'));
    expectDamage(": is damaged: *** in database main *** ");
}

TEST_F(StateStoreTest, aTruncatedFileIsDamage)
{
    fill(100);
    std::filesystem::resize_file(file, 50000);
    expectDamage(": database disk image is malformed");
}

TEST_F(StateStoreTest, anEmptiedFileIsDamage)
{
    fill();
    directory.write("zorv.db", "");
    expectDamage(": is empty");
}

TEST_F(StateStoreTest, aFileThatIsNoDatabaseIsDamage)
{
    directory.write("zorv.db", std::string(5000, '\n'));
    expectDamage(": file is not a database");
}

TEST_F(StateStoreTest, aLogWithoutItsFileIsDamageAndIsSetAside)
{
    directory.write("zorv.db-wal", "what is left");

    EXPECT_EQ(": is missing, its log is there" + damagedAdvice, failure());
    settings.acceptEmpty = true;
    fill();

    ASSERT_THAT(names(), ElementsAre("zorv.db", MatchesRegex("zorv\\.db\\.corrupt-[0-9TZ]*-wal")));
    EXPECT_EQ("what is left", directory.read(names()[1]));
}

TEST_F(StateStoreTest, theLogOfADamagedFileIsKeptWithIt)
{
    fill();
    overwrite(0, std::string(100, 'z'));
    directory.write("zorv.db-wal", "a log");
    settings.acceptEmpty = true;

    open();

    ASSERT_THAT(names(), ElementsAre("zorv.db", MatchesRegex("zorv\\.db\\.corrupt-[0-9TZ]*"),
                                     MatchesRegex("zorv\\.db\\.corrupt-[0-9TZ]*-wal")));
    EXPECT_EQ(names()[1] + "-wal", names()[2]);
    EXPECT_EQ("a log", directory.read(names()[2]));
}

TEST_F(StateStoreTest, filesSetAsideInOneSecondDoNotReplaceEachOther)
{
    settings.acceptEmpty = true;
    for (const char* content : {"first", "second", "third"}) {
        directory.write("zorv.db", content);
        open();
    }

    ASSERT_EQ(4U, names().size());
    std::vector<std::string> contents;
    for (std::size_t index = 1; index < 4; ++index) {
        contents.push_back(directory.read(names()[index]));
    }
    EXPECT_THAT(contents, ::testing::UnorderedElementsAre("first", "second", "third"));
}

TEST_F(StateStoreTest, aWholeStoreIsNotSetAside)
{
    fill();
    settings.acceptEmpty = true;

    EXPECT_EQ("list 1 of 1000 1:" + std::string(1000, 'x'), toText(open().getLists(), "a"));
    EXPECT_THAT(names(), ElementsAre("zorv.db"));
}

// --- not to be used

TEST_F(StateStoreTest, aSecondOpenerIsTold)
{
    const StateStore first = open();

    EXPECT_EQ(": database is locked; end the other process that has it open and start again", failure());
}

TEST_F(StateStoreTest, aStoreOfALaterReleaseIsLeftAlone)
{
    fill();
    execute("PRAGMA user_version = 99");
    const std::string before = directory.read("zorv.db");
    settings.acceptEmpty = true;

    EXPECT_EQ(": has version 99, this release knows 4; start that later release, or name another stateDirectory",
              failure());
    EXPECT_EQ(before, directory.read("zorv.db"));
}

TEST_F(StateStoreTest, aDatabaseOfAnotherProgramIsLeftAlone)
{
    fill();
    execute("PRAGMA application_id = 5");
    const std::string before = directory.read("zorv.db");
    settings.acceptEmpty = true;

    EXPECT_EQ(": is a database of another program; move it away, or name another stateDirectory", failure());
    EXPECT_EQ(before, directory.read("zorv.db"));
}

TEST_F(StateStoreTest, aFileThatCannotBeWrittenIsTold)
{
    fill();
    std::filesystem::permissions(file, std::filesystem::perms(0444));
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0777));
    const Unprivileged user;

    EXPECT_EQ(": cannot be written: Permission denied; let this user write the file and its directory, or name another "
              "stateDirectory",
              failure());
}

TEST_F(StateStoreTest, aDirectoryThatCannotBeWrittenIsTold)
{
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0555));
    const Unprivileged user;

    EXPECT_EQ(
        ": its directory cannot be written: Permission denied; let this user write the file and its directory, or "
        "name another stateDirectory",
        failure());
}

}  // namespace ZorvNode
