#include "CommandTest.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;

namespace {

const char* const levels = R"({"log":"notice","trace":{"FM":0,"Node":8}})";
const char* const levelTable = "log         notice\ntrace FM    0\ntrace Node  8\n";
const char* const nodeAnswer =
    R"({"version":"0.1.0","processId":7,"startTime":"2024-05-01T06:00:00Z","uptimeSeconds":93784,"store":"sqlite",)"
    R"("durability":"process","stateDirectory":"/s","logDirectory":"/l","model":"/m.xml","activeAlarms":2,)"
    R"("components":[{"name":"A","state":"started"},{"name":"B","state":"failed"}]})";
const char* const statusTable = "version          0.1.0\n"
                                "process          7\n"
                                "started          2024-05-01T06:00:00Z, 1 d 2 h ago\n"
                                "store            sqlite, durability process\n"
                                "state directory  /s\n"
                                "log directory    /l\n"
                                "model            /m.xml\n"
                                "active alarms    2\n"
                                "components       A started\n"
                                "                 B failed\n";

}  // namespace

class ManagementCommandsTest : public CommandTest {
protected:
    ZorvTest::TemporaryDirectory directory;
};

TEST_F(ManagementCommandsTest, aGoodModelIsInOrder)
{
    const std::string file = directory.write("m.xml", "<ZorvModel><class name='N'/><object dn='N=1'/></ZorvModel>");

    EXPECT_EQ((Outcome{0, file + ": in order, 1 class, 1 object\n", ""}), runAsIs({"model", "check", file}));
}

TEST_F(ManagementCommandsTest, aBadModelIsToldWithItsPlaceAndHowToMendIt)
{
    const std::string file = directory.write("m.xml", "<ZorvModel>\n<object dn='N=1'/></ZorvModel>");

    EXPECT_EQ((Outcome{2, "",
                       "zorvctl: " + file + ":2: unknown class, \"N\"\n" +
                           "zorvctl: hint: declare the class before its objects, or correct the name before the "
                           "\"=\"\n"}),
              runAsIs({"model", "check", file}));
}

TEST_F(ManagementCommandsTest, theModelIsReadAnew)
{
    node.answer("POST /v1/model/reload", R"({"model":"/etc/zorv/m.xml"})");

    EXPECT_EQ((Outcome{0, "in use: /etc/zorv/m.xml\n", ""}), run({"model", "reload"}));
}

TEST_F(ManagementCommandsTest, componentsAreListed)
{
    node.answer("GET /v1/components", R"({"components":[{"name":"ZorvFm","state":"started"}]})");

    EXPECT_EQ((Outcome{0, "COMPONENT  STATE\nZorvFm     started\n", ""}), run({"component", "list"}));
    EXPECT_EQ((Outcome{0,
                       "{\n  \"components\": [\n    {\n      \"name\": \"ZorvFm\",\n      \"state\": \"started\"\n"
                       "    }\n  ]\n}\n",
                       ""}),
              run({"component", "list", "--json"}));
}

TEST_F(ManagementCommandsTest, componentsAreStartedAndStoppedWithAReason)
{
    node.answer("POST /v1/components/a%20b/start", R"({"name":"a b","state":"started"})");
    node.answer("POST /v1/components/x/stop", R"({"name":"x","state":"stopped"})");

    EXPECT_EQ((Outcome{0, "a b is started\n", ""}), run({"component", "start", "a b"}));
    EXPECT_EQ((Outcome{0, "x is stopped\n", ""}), run({"component", "stop", "x", "--reason", "switch-over"}));
    EXPECT_THAT(node.requests(), ElementsAre("POST /v1/components/a%20b/start {}",
                                             R"(POST /v1/components/x/stop {"reason":"switch-over"})"));
}

TEST_F(ManagementCommandsTest, listsAreShown)
{
    node.answer("GET /v1/lists", R"({"lists":[{"name":"FmStatusSection","itemSize":40,"items":1}]})");

    EXPECT_EQ((Outcome{0, "LIST             ITEMS  BYTES EACH\nFmStatusSection  1      40\n", ""}), run({"lists"}));
}

TEST_F(ManagementCommandsTest, countersAreShown)
{
    node.answer("GET /v1/counters", R"({"published":18446744073709551615,"x":0})");

    EXPECT_EQ((Outcome{0, "published  18446744073709551615\nx          0\n", ""}), run({"counters"}));
}

TEST_F(ManagementCommandsTest, theStatusOfAHealthyNode)
{
    node.answer("GET /v1/node", nodeAnswer);
    node.answer("GET /v1/health", R"({"health":"ok","reasons":[]})");

    EXPECT_EQ((Outcome{0, "health           ok\n" + std::string(statusTable), ""}), run({"status"}));
}

TEST_F(ManagementCommandsTest, theStatusOfADegradedNodeIsAFailureWithItsReasons)
{
    node.answer("GET /v1/node", nodeAnswer);
    node.answer("GET /v1/health", R"({"health":"degraded","reasons":["disk full","component B failed"]})", 503);

    EXPECT_EQ((Outcome{1,
                       "health           degraded\n"
                       "                 disk full\n"
                       "                 component B failed\n" +
                           std::string(statusTable),
                       ""}),
              run({"status"}));
}

TEST_F(ManagementCommandsTest, aNodeThatIsTooBusyForItsHealthIsAFailure)
{
    node.answer("GET /v1/node", nodeAnswer);
    node.answer("GET /v1/health", R"({"error":{"reason":"too many connections"}})", 503);

    EXPECT_EQ((Outcome{1, "", "zorvctl: too many connections\n"}), run({"status"}));
}

TEST_F(ManagementCommandsTest, aLogIsPrinted)
{
    node.answer("GET /v1/logs/system?lines=100", R"({"lines":["one","t\u001bwo"]})");
    node.answer("GET /v1/logs/alarms?lines=5", R"({"lines":[]})");

    EXPECT_EQ((Outcome{0, "one\nt\\x1Bwo\n", ""}), run({"log"}));
    EXPECT_EQ((Outcome{0, "", ""}), run({"log", "alarms", "--lines", "5"}));
}

TEST_F(ManagementCommandsTest, aFollowedLogIsNotRepeatedWhenTheNodeRestarts)
{
    node.stream("GET /v1/logs/system?lines=2&follow=true",
                "event: line\ndata: {\"line\":\"one\"}\n\nevent: line\ndata: {\"line\":\"t\\u001bwo\"}\n\n", false);
    node.stream("GET /v1/logs/system?lines=0&follow=true", "event: line\ndata: {\"line\":\"three\"}\n\n", true);

    EXPECT_EQ((Outcome{130, "one\nt\\x1Bwo\nthree\n", "zorvctl: the node has ended the stream; connecting again\n"}),
              runUntilRequests({"log", "--follow", "--lines", "2"}, 2));
}

TEST_F(ManagementCommandsTest, levelsAreShownAndChanged)
{
    node.answer("GET /v1/levels", levels);
    node.answer("PUT /v1/levels", levels);

    EXPECT_EQ((Outcome{0, levelTable, ""}), run({"level"}));
    EXPECT_EQ((Outcome{0, levelTable, ""}), run({"level", "log", "notice"}));
    EXPECT_EQ((Outcome{0, levelTable, ""}), run({"level", "trace", "Node", "8"}));
    EXPECT_THAT(node.requests(), ElementsAre("GET /v1/levels", R"(PUT /v1/levels {"log":"notice"})",
                                             R"(PUT /v1/levels {"trace":{"Node":8}})"));
}

}  // namespace ZorvCtl
