#include "scenario/ScenarioPlayer.hpp"

#include <gmock/gmock.h>

#include "Failure.hpp"
#include "ScriptedNode.hpp"
#include "scenario/ScenarioReader.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;

namespace {

const char* const publishing = "POST /v1/notifications?wait=delivered";
const char* const lastSettle = R"(POST /v1/settle {"quietSeconds":1.5,"timeoutSeconds":122})";

std::string clear(const std::string& at, const std::string& dn, const std::string& beside = "")
{
    return R"({"at":)" + at + R"(,"clear":{"dn":")" + dn + R"(","majorType":1,"minorType":2})" + beside + "}\n";
}

std::string published(const std::string& dn, const std::string& beside = "")
{
    return R"({"clear":{"dn":")" + dn + R"(","majorType":1,"minorType":2})" + beside + "}";
}

}  // namespace

class ScenarioPlayerTest : public ::testing::Test {
protected:
    ScenarioPlayerTest()
    {
        node.answer("POST /v1/settle", R"({"quiet":true})");
        node.answer("PUT /v1/suppression", R"({"on":true})");
    }

    void acceptAll() { node.answer(publishing, R"({"accepted":1,"rejected":[]})"); }

    PlaySummary play(const std::string& lines, double speed = 1000000)
    {
        return player.play(readScenario(directory.write("s.jsonl", lines)), speed);
    }

    std::string failureOf(const std::string& lines)
    {
        try {
            play(lines);
        } catch (const Failure& e) {
            return std::string(e.what()).substr(directory.path("s.jsonl").size());
        }
        return "played";
    }

    ZorvTest::TemporaryDirectory directory;
    ZorvTest::ScriptedNode node;
    Interruption interruption;
    NodeConnection connection{node.socket(), interruption};
    std::vector<std::size_t> progress;
    ScenarioPlayer player{connection, [this](std::size_t done) { progress.push_back(done); }};
};

TEST_F(ScenarioPlayerTest, aNotificationIsPublishedAsItWasWritten)
{
    acceptAll();
    const std::string line =
        R"({"raise":{"dn":"P","majorType":1,"minorType":2,"severity":"MAJOR","text":"t","info":[["b","1"],["a","2"]],)"
        R"("eventTime":18446744073709551615}})";

    const PlaySummary summary = play(R"({"at":0,)" + line.substr(1));

    EXPECT_THAT(node.requests(), ElementsAre(std::string(publishing) + " [" + line + "]", lastSettle));
    EXPECT_EQ(1U, summary.raises);
}

TEST_F(ScenarioPlayerTest, whatIsDueAtTheSameMomentSharesARequestInTheOrderOfTheFile)
{
    acceptAll();

    const PlaySummary summary = play(clear("0", "a") + clear("0", "b") + clear("1", "c"));

    EXPECT_THAT(node.requests(),
                ElementsAre(std::string(publishing) + " [" + published("a") + "," + published("b") + "]",
                            std::string(publishing) + " [" + published("c") + "]", lastSettle));
    EXPECT_EQ(3U, summary.actions);
    EXPECT_EQ(3U, summary.clears);
    EXPECT_THAT(progress, ElementsAre(2U, 3U));
}

TEST_F(ScenarioPlayerTest, eventTypesAreNotMixedInARequestSoThatTheirOrderHolds)
{
    acceptAll();
    const std::string zorv = R"(,"framework":"zorv")";
    const std::string one = R"(,"version":1)";

    play(clear("0", "a") + clear("0", "b", zorv) + clear("0", "c") + clear("0", "d", one));

    EXPECT_THAT(node.requests(), ElementsAre(std::string(publishing) + " [" + published("a") + "]",
                                             std::string(publishing) + " [" + published("b", zorv) + "]",
                                             std::string(publishing) + " [" + published("c") + "]",
                                             std::string(publishing) + " [" + published("d", one) + "]", lastSettle));
}

TEST_F(ScenarioPlayerTest, aRequestHasAHundredNotificationsAtMost)
{
    acceptAll();
    std::string lines;
    for (int number = 0; number < 201; ++number) {
        lines += clear("0", std::to_string(number));
    }

    play(lines);

    EXPECT_THAT(progress, ElementsAre(100U, 200U, 201U));
}

TEST_F(ScenarioPlayerTest, otherActionsStandBetweenTheNotificationsAroundThem)
{
    acceptAll();
    node.answer("POST /v1/objects", R"({"changed":1})");

    const PlaySummary summary = play(clear("0", "a") +
                                     R"({"at":0,"suppress":"on"}
{"at":0,"set":{"dn":"N=1","attributes":{"name":"r7","size":null}}}
{"at":0,"create":{"dn":"N=2","attributes":{}}}
{"at":0,"delete":{"dn":"N=2"}}
{"at":0,"settle":0.25}
{"at":0,"suppress":"off"}
)" + clear("0", "b"));

    EXPECT_THAT(
        node.requests(),
        ElementsAre(std::string(publishing) + " [" + published("a") + "]", R"(PUT /v1/suppression {"on":true})",
                    R"(POST /v1/objects {"changes":[{"set":{"dn":"N=1","attributes":{"name":"r7","size":null}}}]})",
                    R"(POST /v1/objects {"changes":[{"create":{"dn":"N=2","attributes":{}}}]})",
                    R"(POST /v1/objects {"changes":[{"delete":{"dn":"N=2"}}]})",
                    R"(POST /v1/settle {"quietSeconds":0.25,"timeoutSeconds":120})",
                    R"(PUT /v1/suppression {"on":false})", std::string(publishing) + " [" + published("b") + "]",
                    lastSettle));
    EXPECT_EQ(8U, summary.actions);
}

TEST_F(ScenarioPlayerTest, actionsWaitForTheirTimeDividedByTheSpeed)
{
    acceptAll();
    const auto begun = std::chrono::steady_clock::now();

    play(clear("0", "a") + clear("2", "b"), 10);

    EXPECT_LE(std::chrono::milliseconds(200), std::chrono::steady_clock::now() - begun);
}

TEST_F(ScenarioPlayerTest, aRejectionEndsThePlayWithTheLineOfTheNotification)
{
    node.answer(publishing, R"({"accepted":1,"rejected":[{"item":1,"field":"clear.dn","reason":"too long"}]})");

    EXPECT_EQ(":2: clear.dn: too long", failureOf(clear("0", "a") + clear("0", "b")));
}

TEST_F(ScenarioPlayerTest, aRefusedChangeEndsThePlayWithItsLine)
{
    node.answer("POST /v1/objects", R"({"error":{"reason":"no such object, \"N=9\""}})", 404);

    EXPECT_EQ(":2: no such object, \"N=9\"",
              failureOf("{\"at\":0,\"suppress\":\"on\"}\n{\"at\":0,\"delete\":{\"dn\":\"N=9\"}}\n"));
}

TEST_F(ScenarioPlayerTest, aNodeThatDoesNotBecomeQuietEndsThePlay)
{
    ZorvTest::ScriptedNode restless;
    restless.answer("POST /v1/settle", R"({"quiet":false})");
    NodeConnection other(restless.socket(), interruption);
    const Scenario scenario = readScenario(directory.write("s.jsonl", R"({"at":0,"settle":true})"));

    try {
        ScenarioPlayer(other, [](std::size_t) {}).play(scenario, 1);
        FAIL() << "was played";
    } catch (const Failure& e) {
        EXPECT_EQ(scenario.file + ":1: the node does not become quiet", e.what());
        EXPECT_EQ(refused, e.getExitCode());
    }
}

TEST_F(ScenarioPlayerTest, anInterruptedPlayEndsBeforeItsNextAction)
{
    interruption.interrupt();

    const PlaySummary summary = play(R"({"at":0,"suppress":"on"})");

    EXPECT_EQ(0U, summary.actions);
    EXPECT_TRUE(summary.interrupted);
    EXPECT_THAT(node.requests(), ElementsAre());
}

}  // namespace ZorvCtl
