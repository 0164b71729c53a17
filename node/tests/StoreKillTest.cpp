/// A process that writes lists is killed at any moment: what it has been told to be done is there, and nothing is half.

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "ListText.hpp"
#include "TemporaryDirectory.hpp"
#include "stores/MemoryListStorage.hpp"
#include "stores/SqliteListStorage.hpp"

namespace ZorvNode {

namespace {

constexpr std::uint32_t itemSize = 1000;

/// One change among many kinds; the same for the same number and contents.
void change(ListStorage& lists, std::uint64_t step)
{
    std::minstd_rand random(static_cast<unsigned>(step * 7919));
    const std::string list = random() % 8 == 0 ? "other" : "alarms";
    std::string data = std::to_string(step) + ";";
    data.resize(itemSize, static_cast<char>('a' + step % 26));
    ListItem item;
    const bool found = lists.findFrom(list, step / 2, item) == ZORV_RETURN_OK;
    const auto kind = random() % 50;
    if (kind == 0) {
        lists.remove("other");
    } else if (kind < 15 && found) {
        lists.erase(list, item.number);
    } else if (kind < 30 && found) {
        lists.replace(list, item.number, data.data());
    } else if (lists.create(list, itemSize) != ZORV_RETURN_OK) {
        push(lists, list, data);
    }
}

std::string textOf(ListStorage& lists)
{
    return toText(lists, "alarms") + "\n" + toText(lists, "other");
}

class Store {
public:
    explicit Store(const std::string& file) : database(file, storeSchema(), frequentCheckpoints(), silent) {}

    static DatabaseSettings frequentCheckpoints()
    {
        DatabaseSettings settings;
        settings.checkpoints.pages = 10;
        settings.checkpoints.urgentPages = 40;
        settings.checkpoints.pause = std::chrono::milliseconds(0);
        return settings;
    }

    LogSinkT silent = [](std::int32_t, const std::string&) {};
    Database database;
    SqliteListStorage lists{database, {}};
};

/// Changes lists until it is killed, and writes a byte after each change.
[[noreturn]] void writeForEver(const std::string& file, std::uint64_t step, int acknowledgements)
{
    Store store(file);
    for (;;) {
        change(store.lists, ++step);
        if (write(acknowledgements, "+", 1) != 1) {
            _exit(1);
        }
    }
}

std::uint64_t countUntilEnd(int file)
{
    char bytes[4096];
    std::uint64_t count = 0;
    for (ssize_t length = 0; (length = read(file, bytes, sizeof bytes)) > 0;) {
        count += static_cast<std::uint64_t>(length);
    }
    return count;
}

/// How many changes the writer was told to be done before it was killed.
std::uint64_t writeAndKill(const std::string& file, std::uint64_t step, unsigned afterMicroseconds)
{
    int ends[2];
    EXPECT_EQ(0, pipe(ends));
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        writeForEver(file, step, ends[1]);
    }
    close(ends[1]);
    char first = 0;
    EXPECT_EQ(1, read(ends[0], &first, 1)) << "the writer does not begin";
    usleep(afterMicroseconds);
    kill(child, SIGKILL);
    const std::uint64_t count = 1 + countUntilEnd(ends[0]);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    return count;
}

}  // namespace

TEST(StoreKillTest, whatWasAcknowledgedIsThereAndTheChangeUnderWayIsThereOrNot)
{
    const ZorvTest::TemporaryDirectory directory;
    const std::string file = directory.write("zorv.db", "");
    MemoryListStorage expected({});
    std::uint64_t steps = 0;
    std::minstd_rand random(std::random_device{}());

    for (int round = 0; round < 20; ++round) {
        const std::uint64_t acknowledged = writeAndKill(file, steps, static_cast<unsigned>(random() % 20000));
        for (std::uint64_t step = 0; step < acknowledged; ++step) {
            change(expected, ++steps);
        }
        Store store(file);
        const std::string found = textOf(store.lists);
        if (found != textOf(expected)) {
            change(expected, ++steps);
        }
        ASSERT_EQ(textOf(expected), found) << "round " << round << ", step " << steps;
    }
    EXPECT_LT(100U, steps);
}

}  // namespace ZorvNode
