#include "CommandTest.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;

namespace {

const std::string alarm =
    R"({"version":3,"stateful":true,"seqNo":12,"alarmId":7,"dn":"ManagedElement=1,Port=4","majorType":32473,)"
    R"("minorType":101,"eventTime":1714543200500000000,"severity":"MAJOR","additionalText":"no \"light\"",)"
    R"("eventType":2,"probableCause":8,"specificProblem":"Loss of Signal","originalEventTime":1714543200500000000,)"
    R"("originalSeverity":"MAJOR","originalAdditionalText":"no \"light\"","additionalInfo":[]})";
const std::string cleared =
    R"({"version":2,"stateful":true,"seqNo":13,"originalSeqNo":12,"dn":"P","majorType":1,"minorType":2,)"
    R"("eventTime":0,"severity":"CLEARED","additionalText":"","eventType":99,"probableCause":418,)"
    R"("specificProblem":"x","originalEventTime":1714543200500000000,"originalSeverity":"MAJOR",)"
    R"("originalAdditionalText":"was bad","additionalInfo":[["a","1"],["b c","\"2\""]]})";
const std::string alert =
    R"({"version":3,"stateful":false,"seqNo":4,"alarmId":0,"dn":"P","majorType":1,"minorType":2,)"
    R"("eventTime":1714543200500000000,"severity":17,"additionalText":"t","eventType":1,"probableCause":1024,)"
    R"("specificProblem":"x","originalEventTime":1714543200500000000,"originalSeverity":17,)"
    R"("originalAdditionalText":"t"})";
const std::string heartbeat = R"({"version":3,"lastStatefulSeqNo":12,"lastStatefulTimestamp":1714543200500000000,)"
                              R"("lastStatelessSeqNo":0,"lastStatelessTimestamp":0})";

std::string event(const std::string& name, const std::string& id, const std::string& data)
{
    return "event: " + name + (id.empty() ? "" : "\nid: " + id) + "\ndata: " + data + "\n\n";
}

const char* const alarmLine =
    "alarm 2024-05-01T06:00:00.500+00:00 MAJOR dn=\"ManagedElement=1,Port=4\" type=32473/101 "
    "specificProblem=\"Loss of Signal\" additionalText=\"no \\\"light\\\"\" seqNo=12 alarmId=7 "
    "eventType=\"communicationsAlarm (2)\" probableCause=\"lossOfSignal (8)\"\n";
const char* const clearLine =
    "clear - CLEARED dn=\"P\" type=1/2 specificProblem=\"x\" additionalText=\"\" seqNo=13 originalSeqNo=12 "
    "eventType=\"99\" probableCause=\"418\" originalSeverity=MAJOR originalEventTime=2024-05-01T06:00:00.500+00:00 "
    "originalAdditionalText=\"was bad\" additionalInfo={\"a\"=\"1\", \"b c\"=\"\\\"2\\\"\"}\n";
const char* const alertLine =
    "alert 2024-05-01T06:00:00.500+00:00 17 dn=\"P\" type=1/2 specificProblem=\"x\" additionalText=\"t\" seqNo=4 "
    "alarmId=0 eventType=\"other (1)\" probableCause=\"other (1024)\"\n";

}  // namespace

class NotificationCommandsTest : public CommandTest {};

TEST_F(NotificationCommandsTest, theHistoryIsPrintedALineEachAndEndsWithIt)
{
    node.stream("GET /v1/notifications?version=3&after=oldest&follow=false",
                ":\n\n" + event("resync", "1.0", "{}") + event("rebuilt", "1.0", R"({"version":3})") +
                    event("heartbeat", "12.0", heartbeat) + event("alarm", "12.0", alarm) +
                    event("alarm", "13.0", cleared) + event("alarm", "13.4", alert),
                false);

    EXPECT_EQ((Outcome{0,
                       "resync: notifications are missing, the alarm list is to be read anew: zorvctl alarms\n"
                       "rebuilt: the alarm list is to be read anew: zorvctl alarms\n"
                       "heartbeat lastStatefulSeqNo=12 lastStatefulTimestamp=2024-05-01T06:00:00.500+00:00 "
                       "lastStatelessSeqNo=0 lastStatelessTimestamp=-\n" +
                           std::string(alarmLine) + clearLine + alertLine,
                       ""}),
              run({"notifications"}));
}

TEST_F(NotificationCommandsTest, onATerminalTheSeverityIsColoured)
{
    node.stream("GET /v1/notifications?version=3&after=oldest&follow=false", event("alarm", "12.0", alarm), false);
    onTerminal = true;

    EXPECT_THAT(run({"notifications"}).out,
                ::testing::StartsWith("alarm 2024-05-01T06:00:00.500+00:00 \033[31mMAJOR\033[0m dn="));
}

TEST_F(NotificationCommandsTest, versionAndBeginningAreChosen)
{
    node.stream("GET /v1/notifications?version=2&after=12.3&follow=false", event("alarm", "13.3", cleared), false);

    EXPECT_EQ((Outcome{0, clearLine, ""}), run({"notifications", "--version", "2", "--after", "12.3"}));
}

TEST_F(NotificationCommandsTest, asJsonEachEventIsALine)
{
    node.stream("GET /v1/notifications?version=3&after=oldest&follow=false",
                event("heartbeat", "12.0", R"({"version":3})") + event("resync", "", "{}"), false);

    EXPECT_EQ((Outcome{0,
                       R"({"event":"heartbeat","id":"12.0","data":{"version":3}})"
                       "\n"
                       R"({"event":"resync","data":{}})"
                       "\n",
                       ""}),
              run({"notifications", "--json"}));
}

TEST_F(NotificationCommandsTest, afterTheEndOfTheStreamItGoesOnWhereItWas)
{
    node.stream("GET /v1/notifications?version=3", event("alarm", "12.0", alarm), false);
    node.stream("GET /v1/notifications?version=3", event("alarm", "12.4", alert), true);

    EXPECT_EQ((Outcome{130, std::string(alarmLine) + alertLine,
                       "zorvctl: the node has ended the stream; connecting again\n"}),
              runUntilRequests({"notifications", "--follow"}, 2));
    EXPECT_THAT(node.requests(),
                ElementsAre("GET /v1/notifications?version=3", "GET /v1/notifications?version=3 [12.0]"));
}

TEST_F(NotificationCommandsTest, aStreamThatBroughtNothingIsOpenedAgainAsAtFirst)
{
    node.stream("GET /v1/notifications?version=3&after=5.6", "", false);
    node.stream("GET /v1/notifications?version=3&after=5.6", "", true);

    EXPECT_EQ(130, runUntilRequests({"notifications", "--follow", "--after", "5.6"}, 2).exitCode);
}

TEST_F(NotificationCommandsTest, aRefusedStreamEndsIt)
{
    node.answer("GET /v1/notifications?version=3", R"({"error":{"reason":"too many streams"}})", 503);

    EXPECT_EQ((Outcome{1, "", "zorvctl: too many streams\n"}), run({"notifications", "--follow"}));
}

TEST_F(NotificationCommandsTest, anEventThatIsNotJsonIsTold)
{
    node.stream("GET /v1/notifications?version=3&after=oldest&follow=false", event("alarm", "1.0", "{"), false);

    EXPECT_EQ((Outcome{1, "",
                       "zorvctl: the node has sent an event that is not JSON: at byte 1: Missing a name for object "
                       "member\n"}),
              run({"notifications"}));
}

}  // namespace ZorvCtl
