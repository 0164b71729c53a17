#include <re2/re2.h>

#include "CommandTest.hpp"

namespace ZorvCtl {

namespace {

const char* const scenario = R"({"at":0,"suppress":"on"}
{"at":0,"clear":{"dn":"P","majorType":1,"minorType":2}}
)";

}  // namespace

class PlayCommandTest : public CommandTest {
protected:
    PlayCommandTest()
    {
        node.answer("PUT /v1/suppression", R"({"on":true})");
        node.answer("POST /v1/notifications?wait=delivered", R"({"accepted":1,"rejected":[]})");
        node.answer("POST /v1/settle", R"({"quiet":true})");
    }

    static std::string withoutDuration(std::string text)
    {
        re2::RE2::GlobalReplace(&text, "in [0-9.]+ s", "in some s");
        return text;
    }

    ZorvTest::TemporaryDirectory directory;
};

TEST_F(PlayCommandTest, aPlayEndsWithItsSummary)
{
    const Outcome outcome = run({"play", directory.write("s.jsonl", scenario), "--speed", "100"});

    EXPECT_EQ(0, outcome.exitCode);
    EXPECT_EQ("played 2 actions (0 raises, 1 clear, 0 alerts) in some s\n", withoutDuration(outcome.out));
    EXPECT_EQ("", outcome.err);
}

TEST_F(PlayCommandTest, onATerminalABarShowsHowFarItIs)
{
    onTerminal = true;

    const Outcome outcome = run({"play", directory.write("s.jsonl", scenario)});

    EXPECT_EQ("\r[####################                    ] 1 of 2 actions"
              "\r[########################################] 2 of 2 actions\r\033[K",
              outcome.err);
}

TEST_F(PlayCommandTest, aWrongLineIsToldBeforeAnythingIsPlayed)
{
    const std::string file = directory.write("s.jsonl", std::string(scenario) + "{\"at\":1}\n");

    EXPECT_EQ((Outcome{2, "", "zorvctl: " + file + ":3: no action\n"}), run({"play", file}));
    EXPECT_TRUE(node.requests().empty());
}

TEST_F(PlayCommandTest, ctrlCEndsItWithWhatHasBeenPlayed)
{
    const std::string file = directory.write("s.jsonl", std::string(scenario) + R"({"at":600,"suppress":"off"})");

    const Outcome outcome = runUntilRequests({"play", file}, 2);

    EXPECT_EQ(130, outcome.exitCode);
    EXPECT_EQ("interrupted after 2 actions (0 raises, 1 clear, 0 alerts) in some s\n", withoutDuration(outcome.out));
    EXPECT_EQ("", outcome.err);
}

TEST_F(PlayCommandTest, aNodeThatIsGoneIsNoNode)
{
    const std::string file = directory.write("s.jsonl", scenario);

    EXPECT_EQ(3, runAsIs({"play", file, "--socket", "/nowhere/s"}).exitCode);
}

}  // namespace ZorvCtl
