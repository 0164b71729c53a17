#include <Poco/String.h>
#include <gmock/gmock.h>
#include <sched.h>
#include <signal.h>

#include <filesystem>

#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::HasSubstr;

class ZorvdLifeTest : public ::testing::Test {
protected:
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

TEST_F(ZorvdLifeTest, sigtermStopsTheComponentsAndLeavesNothingBehind)
{
    RunningNode node(files);

    const ProcessResult result = node.stop();

    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.out);
    EXPECT_EQ("", result.err);
    EXPECT_THAT(files.directory.read("run/log/SystemLog.log"),
                HasSubstr("INFORMATION component BadComponent stopped\n"));
    EXPECT_FALSE(std::filesystem::exists(files.path("run/zorvd.pid")));
    EXPECT_FALSE(std::filesystem::exists(files.socket()));
}

TEST_F(ZorvdLifeTest, sigintDoesTheSame)
{
    RunningNode node(files);

    node.process().signal(SIGINT);

    EXPECT_EQ(0, node.process().awaitEnd().exitCode);
    EXPECT_FALSE(std::filesystem::exists(files.socket()));
}

TEST_F(ZorvdLifeTest, sigtermEndsStreamsAndWaitingRequests)
{
    RunningNode node(files);
    RunningProcess follower(ctlCommand(files.socket(), {"notifications", "--follow"}));
    RunningProcess log(ctlCommand(files.socket(), {"log", "--follow"}));
    node.awaitStreams(2);

    EXPECT_EQ(0, node.stop().exitCode);

    EXPECT_TRUE(log.awaitError("zorvctl: the node has ended the stream; connecting again\n"));
    EXPECT_TRUE(follower.awaitError("zorvctl: the node has ended the stream; connecting again\n"));
}

TEST_F(ZorvdLifeTest, theNodeInterruptsNobodyWhenItIsWoken)
{
    const RunningNode node(files);

    const int given = sched_getscheduler(0);
    EXPECT_EQ(given == SCHED_OTHER ? SCHED_BATCH : given,
              sched_getscheduler(std::stoi(files.directory.read("run/zorvd.pid"))));
}

TEST_F(ZorvdLifeTest, sighupRereadsTheModel)
{
    RunningNode node(files);

    node.process().signal(SIGHUP);

    EXPECT_TRUE(node.process().awaitError("zorvd: model reread\n"));
}

TEST_F(ZorvdLifeTest, aWrongModelAtSighupLeavesTheOneInUse)
{
    RunningNode node(files);
    files.directory.write("model.xml", "<ZorvModel>\n<object dn=\"Node=1\"/></ZorvModel>");

    node.process().signal(SIGHUP);

    EXPECT_TRUE(node.process().awaitError("zorvd: the model in use stays: " + files.path("model.xml") +
                                          ":2: unknown class, \"Node\"\n"));
    EXPECT_EQ(0, node.stop().exitCode);
}

TEST_F(ZorvdLifeTest, aRunDirectoryBelongsToOneNode)
{
    const RunningNode first(files);

    const ProcessResult second = files.runNode();

    expectHeld("run", "zorvd.pid", second);
}

TEST_F(ZorvdLifeTest, aStateDirectoryBelongsToOneNode)
{
    const RunningNode first(files);
    files.writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so",
                             "<runDirectory>other</runDirectory><stateDirectory>run/state</stateDirectory>");

    const ProcessResult second = files.runNode();

    expectHeld("run/state", "zorv.lock", second);
}

TEST_F(ZorvdLifeTest, aNodeWithItsListsInMemoryHasNoStateDirectory)
{
    files.writeConfiguration(std::string(BAD_LIBRARIES) + "/WellBehaved.so",
                             "<replicatedLists><store>memory</store></replicatedLists>");

    EXPECT_EQ(0, RunningNode(files).stop().exitCode);

    EXPECT_FALSE(std::filesystem::exists(files.path("run/state")));
}

TEST_F(ZorvdLifeTest, theStateIsTheOwnersAlone)
{
    EXPECT_EQ(0, RunningNode(files).stop().exitCode);

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

    const ProcessResult refused = files.runNode();
    const ProcessResult accepted = RunningNode(files, {"--accept-empty"}).stop();

    EXPECT_EQ("zorvd: " + damage +
                  "; put a good copy in its place, or start with --accept-empty: the file is set aside "
                  "and the node begins with empty lists\n",
              refused.err);
    EXPECT_EQ(1, refused.exitCode);
    EXPECT_EQ(0, accepted.exitCode);
    EXPECT_THAT(files.directory.read("run/log/SystemLog.log"),
                HasSubstr("WARNING " + damage + "; set aside as " + store + ".corrupt-"));
}

TEST_F(ZorvdLifeTest, helpTeachesWithExamplesAndExitCodes)
{
    const ProcessResult result = runProcess({ZORVD, "--help"});

    EXPECT_THAT(result.out, HasSubstr("zorvctl --socket PATH alarms"));
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
