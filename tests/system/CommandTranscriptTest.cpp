/// Every command of zorvctl at a real node, with the access router's model: each text, colour and exit code.
///
/// The transcripts in expected/commands are to be read: they show what an operator sees.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "RunningNode.hpp"
#include "TerminalProcess.hpp"
#include "Transcript.hpp"

namespace ZorvTest {

namespace {

constexpr std::chrono::milliseconds pause(20);
const std::string controlC = "\x03";

}  // namespace

class CommandTranscriptTest : public ::testing::Test {
protected:
    CommandTranscriptTest()
    {
        files.writeConfiguration(FM_LIBRARY);
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    void startNode()
    {
        node = std::make_unique<RunningNode>(files);
        awaitHeartbeat("3");
        awaitHeartbeat("2");
    }

    /// The first heartbeat comes when it comes; the next one in an hour.
    void awaitHeartbeat(const std::string& version) const
    {
        const std::string history = "/v1/notifications?after=oldest&follow=false&version=" + version;
        while (node->request("GET", history).find("event: heartbeat") == std::string::npos) {
            std::this_thread::sleep_for(pause);
        }
    }

    void play(const std::string& name) { Transcript(files, node.get()).play("commands/" + name); }

    NodeFiles files;
    std::unique_ptr<RunningNode> node;
};

TEST_F(CommandTranscriptTest, alarms)
{
    startNode();
    play("alarms.txt");
}

TEST_F(CommandTranscriptTest, notifications)
{
    startNode();
    play("notifications.txt");
}

TEST_F(CommandTranscriptTest, objectsAndTheModel)
{
    startNode();
    play("objects.txt");
}

TEST_F(CommandTranscriptTest, theNode)
{
    startNode();
    play("node.txt");
}

TEST_F(CommandTranscriptTest, playing)
{
    startNode();
    play("play.txt");
}

TEST_F(CommandTranscriptTest, onATerminal)
{
    startNode();
    play("terminal.txt");
}

TEST_F(CommandTranscriptTest, withoutANode)
{
    play("without-a-node.txt");
}

TEST_F(CommandTranscriptTest, wrongCommandLines)
{
    play("wrong-command-lines.txt");
}

/// What is shown until Ctrl-C, with a raise in the middle.
class FollowingTest : public CommandTranscriptTest {
protected:
    void expectShown(const std::vector<std::string>& arguments, const std::string& before, const std::string& after)
    {
        startNode();
        raise(4);
        const Transcript transcript(files, node.get());
        TerminalProcess shown(ctlCommand(files.socket(), arguments), transcript.environment());
        const auto hasShown = [&](const std::string& wanted) {
            return shown.awaitShown([&](const std::string& text) { return transcript.masked(text) == wanted; });
        };
        EXPECT_TRUE(hasShown(before));
        raise(5);
        EXPECT_TRUE(hasShown(before + after));
        shown.type(controlC);
        const ProcessResult result = shown.awaitEnd();
        EXPECT_EQ(before + after, transcript.masked(result.out));
        EXPECT_EQ(130, result.exitCode);
    }

private:
    void raise(int port) const
    {
        node->out({"raise", "ManagedElement=1,Port=" + std::to_string(port), "32473/101", "--severity", "major",
                   "--time", "2024-05-01T06:00:00Z"});
        node->settle();
    }
};

TEST_F(FollowingTest, alarmsAreDrawnAnewAtEachChange)
{
    const std::string heading =
        "\\e[H\\e[J\\e[1mID\\e[0m  \\e[1mSEVERITY\\e[0m  \\e[1mLAST EVENT\\e[0m                     "
        "\\e[1mRESOURCE\\e[0m                 \\e[1mTYPE\\e[0m       \\e[1mPROBLEM\\e[0m         "
        "\\e[1mTEXT\\e[0m\n";
    const auto line = [](const std::string& id, const std::string& port) {
        return id + "   \\e[31mMAJOR\\e[0m     2024-05-01T06:00:00.000+00:00  ManagedElement=1,Port=" + port +
               "  32473/101  Loss of Signal\n";
    };
    expectShown({"alarms", "--watch"}, heading + line("1", "4") + "1 active alarm\n",
                heading + line("1", "4") + line("2", "5") + "2 active alarms\n");
}

TEST_F(FollowingTest, notificationsAreShownAsTheyCome)
{
    const auto line = [](const std::string& number, const std::string& port) {
        return "alarm 2024-05-01T06:00:00.000+00:00 \\e[31mMAJOR\\e[0m dn=\"ManagedElement=1,Port=" + port +
               "\" type=32473/101 specificProblem=\"Loss of Signal\" additionalText=\"\" seqNo=" + number +
               " alarmId=" + number + " eventType=\"communicationsAlarm (2)\" probableCause=\"lossOfSignal (8)\"\n";
    };
    expectShown({"notifications", "--follow", "--after", "0.0"}, line("1", "4"), line("2", "5"));
}

TEST_F(FollowingTest, aLogIsShownAsItIsWritten)
{
    const std::string line = "<TIME> published 1, rejected 0, by user <USER> group <GROUP> process <PROCESS>\n";
    expectShown({"log", "publications", "--follow"}, line, line);
}

}  // namespace ZorvTest
