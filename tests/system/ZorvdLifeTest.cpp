#include <Poco/String.h>
#include <gmock/gmock.h>
#include <signal.h>

#include <filesystem>

#include "NodeFiles.hpp"

namespace ZorvTest {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class ZorvdLifeTest : public ::testing::Test {
protected:
    /// Waits until the node's own log says so.
    bool awaitLog(const std::string& text) const
    {
        for (int attempt = 0; attempt < 1000; ++attempt) {
            if (files.directory.read("run/log/SystemLog.log").find(text) != std::string::npos) {
                return true;
            }
            usleep(10000);
        }
        return false;
    }

    /// A second node was told which process holds the directory.
    void expectHeld(const std::string& directory, const std::string& file, const ProcessResult& second) const
    {
        const std::string holder = Poco::trim(files.directory.read(directory + "/" + file));
        EXPECT_NE("", holder);
        EXPECT_EQ("zorvd: " + files.path(directory) + ": another node, process " + holder +
                      ", runs in this directory; stop it or name another directory in the configuration\n",
                  second.err);
        EXPECT_EQ(1, second.exitCode);
    }

    NodeFiles files;
};

TEST_F(ZorvdLifeTest, aPlayEndsByItselfWithASummary)
{
    const ProcessResult result = files.play();

    EXPECT_THAT(result.err, StartsWith("zorvd: played 1 actions (0 raises, 0 clears, 0 alerts) in "));
    EXPECT_THAT(result.err,
                EndsWith(" s: 0 alarm notifications northbound, 0 records in the alarm log, 0 events lost\n"));
    EXPECT_EQ("", result.out);
    EXPECT_EQ(0, result.exitCode);
}

TEST_F(ZorvdLifeTest, sigtermStopsTheComponentsInOrder)
{
    RunningProcess zorvd(files.command());
    ASSERT_TRUE(awaitLog("node started"));

    zorvd.signal(SIGTERM);
    const ProcessResult result = zorvd.awaitEnd();

    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.err);
    EXPECT_THAT(files.directory.read("run/log/SystemLog.log"),
                HasSubstr("INFORMATION component BadComponent stopped\n"));
    EXPECT_FALSE(std::filesystem::exists(files.path("run/zorvd.pid")));
}

TEST_F(ZorvdLifeTest, sigintInterruptsAPlay)
{
    files.directory.write("play.jsonl", "{\"at\":3600,\"suppress\":\"on\"}\n");
    RunningProcess zorvd(files.command({"--play", files.path("play.jsonl")}));
    ASSERT_TRUE(awaitLog("node started"));

    zorvd.signal(SIGINT);
    const ProcessResult result = zorvd.awaitEnd();

    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.err, StartsWith("zorvd: interrupted after 0 actions"));
}

TEST_F(ZorvdLifeTest, sighupRereadsTheModel)
{
    RunningProcess zorvd(files.command());
    ASSERT_TRUE(awaitLog("node started"));

    zorvd.signal(SIGHUP);

    EXPECT_TRUE(zorvd.awaitError("zorvd: model reread\n"));
}

TEST_F(ZorvdLifeTest, aWrongModelAtSighupLeavesTheOneInUse)
{
    RunningProcess zorvd(files.command());
    ASSERT_TRUE(awaitLog("node started"));
    files.directory.write("model.xml", "<ZorvModel>\n<object dn=\"Node=1\"/></ZorvModel>");

    zorvd.signal(SIGHUP);

    EXPECT_TRUE(zorvd.awaitError("zorvd: the model in use stays: " + files.path("model.xml") +
                                 ":2: unknown class, \"Node\"\n"));
    zorvd.signal(SIGTERM);
    EXPECT_EQ(0, zorvd.awaitEnd().exitCode);
}

TEST_F(ZorvdLifeTest, aRunDirectoryBelongsToOneNode)
{
    RunningProcess first(files.command());
    ASSERT_TRUE(awaitLog("node started"));

    const ProcessResult second = files.play();

    expectHeld("run", "zorvd.pid", second);
}

TEST_F(ZorvdLifeTest, aStateDirectoryBelongsToOneNode)
{
    RunningProcess first(files.command());
    ASSERT_TRUE(awaitLog("node started"));
    files.writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so",
                             "<runDirectory>other</runDirectory><stateDirectory>run/state</stateDirectory>");

    const ProcessResult second = files.play();

    expectHeld("run/state", "zorv.lock", second);
}

TEST_F(ZorvdLifeTest, aNodeWithItsListsInMemoryHasNoStateDirectory)
{
    files.writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so",
                             "<replicatedLists><store>memory</store></replicatedLists>");

    EXPECT_EQ(0, files.play().exitCode);

    EXPECT_FALSE(std::filesystem::exists(files.path("run/state")));
}

TEST_F(ZorvdLifeTest, theStateIsTheOwnersAlone)
{
    EXPECT_EQ(0, files.play().exitCode);

    const auto all = std::filesystem::perms::mask;
    EXPECT_EQ(std::filesystem::perms(0700), std::filesystem::status(files.path("run/state")).permissions() & all);
    EXPECT_EQ(std::filesystem::perms(0600),
              std::filesystem::status(files.path("run/state/zorv.db")).permissions() & all);
}

TEST_F(ZorvdLifeTest, aDamagedStoreStopsTheStartUntilItIsAcceptedThatTheListsAreEmpty)
{
    std::filesystem::create_directories(files.path("run/state"));
    const std::string store = files.directory.write("run/state/zorv.db", "no database, and not short");
    const std::string damage = store + ": file is not a database";

    const ProcessResult refused = files.play();
    const ProcessResult accepted = runProcess(files.command({"--play", files.path("play.jsonl"), "--accept-empty"}));

    EXPECT_EQ("zorvd: " + damage +
                  "; put a good copy in its place, or start with --accept-empty: the file is set aside "
                  "and the node begins with empty lists\n",
              refused.err);
    EXPECT_EQ(1, refused.exitCode);
    EXPECT_EQ(0, accepted.exitCode);
    EXPECT_THAT(files.directory.read("run/log/SystemLog.log"),
                HasSubstr("WARNING " + damage + "; set aside as " + store + ".corrupt-"));
}

TEST_F(ZorvdLifeTest, aRefusedActionEndsThePlayAsAFailure)
{
    files.directory.write("play.jsonl", "{\"at\":0,\"delete\":{\"dn\":\"Node=9\"}}\n");

    const ProcessResult result = files.play();

    EXPECT_EQ("zorvd: " + files.path("play.jsonl") + ":1: no such object, \"Node=9\"\n", result.err);
    EXPECT_EQ(1, result.exitCode);
}

TEST_F(ZorvdLifeTest, helpTeachesWithExamplesAndExitCodes)
{
    const ProcessResult result = runProcess({ZORVD, "--help"});

    EXPECT_THAT(result.out, HasSubstr("zorvd --config node.xml --play hour.jsonl --speed 600"));
    EXPECT_THAT(result.out, HasSubstr("Exit codes:"));
    EXPECT_EQ(0, result.exitCode);
}

TEST_F(ZorvdLifeTest, versionIsOneLine)
{
    const ProcessResult result = runProcess({ZORVD, "--version"});

    EXPECT_EQ("zorvd " ZORV_VERSION "\n", result.out);
    EXPECT_EQ(0, result.exitCode);
}

}  // namespace ZorvTest
