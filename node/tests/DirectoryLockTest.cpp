#include "app/DirectoryLock.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "TemporaryDirectory.hpp"

namespace ZorvNode {

namespace {

std::string failureOf(const std::string& directory)
{
    try {
        const DirectoryLock lock(directory, "lock");
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "locked";
}

}  // namespace

class DirectoryLockTest : public ::testing::Test {
protected:
    const ZorvTest::TemporaryDirectory directory;
    const std::string another = directory.path() + ": another node";
    const std::string advice = " runs in this directory; stop it or name another directory in the configuration";
};

TEST_F(DirectoryLockTest, aSecondHolderIsToldWhoTheFirstOneIs)
{
    const DirectoryLock lock(directory.path(), "lock");

    EXPECT_EQ(another + ", process " + std::to_string(getpid()) + "," + advice, failureOf(directory.path()));
}

TEST_F(DirectoryLockTest, aHolderThatHasNotSaidWhoItIsIsAnotherNode)
{
    const DirectoryLock lock(directory.path(), "lock");
    directory.write("lock", "");

    EXPECT_EQ(another + advice, failureOf(directory.path()));
}

TEST_F(DirectoryLockTest, theFileOfAKilledProcessIsNoLock)
{
    directory.write("lock", "12345678901234567890\n");
    {
        const DirectoryLock lock(directory.path(), "lock");
        EXPECT_EQ(std::to_string(getpid()) + "\n", directory.read("lock"));
    }
    EXPECT_FALSE(std::filesystem::exists(directory.path("lock")));
}

TEST_F(DirectoryLockTest, aHolderThatLeavesLetsInOneOfThoseThatTryAtThatMoment)
{
    std::atomic<int> holders{0};
    std::atomic<int> most{0};
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            for (int attempt = 0; attempt < 2000; ++attempt) {
                try {
                    const DirectoryLock lock(directory.path(), "lock");
                    most = std::max(most.load(), ++holders);
                    std::this_thread::yield();
                    --holders;
                } catch (const std::runtime_error&) {
                    std::this_thread::yield();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(1, most);
}

TEST_F(DirectoryLockTest, aMissingDirectoryIsTold)
{
    EXPECT_EQ(directory.path("none/lock") + ": cannot be opened: No such file or directory; make it possible or name "
                                            "another directory in the configuration",
              failureOf(directory.path("none")));
}

TEST_F(DirectoryLockTest, aPrivateDirectoryIsForItsOwnerAlone)
{
    makePrivateDirectory(directory.path("a/b"));
    makePrivateDirectory(directory.path("a/b"));

    struct stat status {};
    EXPECT_EQ(0, stat(directory.path("a/b").c_str(), &status));
    EXPECT_EQ(0700U, status.st_mode & 07777U);
}

TEST_F(DirectoryLockTest, aPrivateDirectoryThatCannotBeMadeIsTold)
{
    directory.write("a", "a file");
    std::string failure;
    try {
        makePrivateDirectory(directory.path("a/b"));
    } catch (const std::runtime_error& e) {
        failure = e.what();
    }
    EXPECT_EQ(directory.path("a/b") +
                  ": cannot be made: Not a directory; make it possible or name another directory in "
                  "the configuration",
              failure);
}

}  // namespace ZorvNode
