#include "CommandTest.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const char* const alarm7 =
    R"({"dn":"ManagedElement=1,FmAlarm=7","fmAlarmId":"7","activeSeverity":"MAJOR",)"
    R"("source":"ManagedElement=1,Port=4","specificProblem":"Loss of Signal","additionalText":"no\nlight",)"
    R"("lastEventTime":"2024-05-01T08:00:00.500+02:00","sequenceNumber":12,"majorType":32473,"minorType":101,)"
    R"("eventType":"COMMUNICATIONSALARM","probableCause":8,"originalEventTime":"2024-05-01T08:00:00.000+02:00",)"
    R"("originalSeverity":"MINOR","originalAdditionalText":null,)"
    R"("additionalInfo":[{"name":"lane","value":"2"},{"name":"module","value":"übel"}]})";
const char* const alarm8 =
    R"({"dn":"ManagedElement=1,FmAlarm=8","fmAlarmId":"8","activeSeverity":"INDETERMINATE","source":"Tür=1",)"
    R"("specificProblem":null,"additionalText":"","lastEventTime":"2024-05-01T08:00:01.000+02:00",)"
    R"("majorType":32473,"minorType":9,"probableCause":418,"vendorField":true})";

std::string page(const std::string& alarms, const std::string& next)
{
    return R"({"alarms":[)" + alarms + R"(],"total":2)" + (next.empty() ? "" : R"(,"next":")" + next + "\"") + "}";
}

std::string event(const std::string& name, const std::string& id)
{
    return "event: " + name + "\nid: " + id + "\ndata: {}\n\n";
}

}  // namespace

class AlarmCommandsTest : public CommandTest {
protected:
    void answerBothAlarms()
    {
        node.answer("GET /v1/alarms", page(alarm7, "7"));
        node.answer("GET /v1/alarms?after=7", page(alarm8, ""));
    }
};

TEST_F(AlarmCommandsTest, theListIsATableOfAllPages)
{
    answerBothAlarms();

    EXPECT_EQ((Outcome{0,
                       "ID  SEVERITY       LAST EVENT                     RESOURCE                 TYPE       PROBLEM  "
                       "       TEXT\n"
                       "7   MAJOR          2024-05-01T08:00:00.500+02:00  ManagedElement=1,Port=4  32473/101  Loss of "
                       "Signal  no\\nlight\n"
                       "8   INDETERMINATE  2024-05-01T08:00:01.000+02:00  Tür=1                    32473/9    -\n"
                       "2 active alarms\n",
                       ""}),
              run({"alarms"}));
    EXPECT_THAT(node.requests(), ElementsAre("GET /v1/alarms", "GET /v1/alarms?after=7"));
}

TEST_F(AlarmCommandsTest, onATerminalSeveritiesAreColoured)
{
    node.answer("GET /v1/alarms", page(alarm7, ""));
    onTerminal = true;

    EXPECT_EQ("\033[1mID\033[0m  \033[1mSEVERITY\033[0m  \033[1mLAST EVENT\033[0m                     "
              "\033[1mRESOURCE\033[0m                 \033[1mTYPE\033[0m       \033[1mPROBLEM\033[0m         "
              "\033[1mTEXT\033[0m\n"
              "7   \033[31mMAJOR\033[0m     2024-05-01T08:00:00.500+02:00  ManagedElement=1,Port=4  32473/101  "
              "Loss of Signal  no\\nlight\n"
              "1 active alarm\n",
              run({"alarms"}).out);
}

TEST_F(AlarmCommandsTest, anEmptyListSaysSo)
{
    node.answer("GET /v1/alarms", page("", ""));

    EXPECT_EQ((Outcome{0, "no active alarms\n", ""}), run({"alarms"}));
}

TEST_F(AlarmCommandsTest, filtersAreTheNodesMatter)
{
    const std::string target =
        "GET /v1/alarms?severity=MAJOR%2CCRITICAL&dnPrefix=ManagedElement%3D1%2CT%C3%BCr&majorType=32473&minorType=9";
    node.answer(target, page("", ""));

    EXPECT_EQ((Outcome{0, "no active alarms that match\n", ""}),
              run({"alarms", "--severity", "major,Critical", "--dn", "ManagedElement=1,Tür", "--type", "32473/9"}));
    EXPECT_THAT(node.requests(), ElementsAre(target));
}

TEST_F(AlarmCommandsTest, aTypeWithoutMinorIsAllOfItsMajor)
{
    node.answer("GET /v1/alarms?majorType=32473", page("", ""));

    EXPECT_EQ(0, run({"alarms", "--type", "32473"}).exitCode);
}

TEST_F(AlarmCommandsTest, asJsonThePagesAreOneDocument)
{
    node.answer("GET /v1/alarms", R"({"alarms":[{"fmAlarmId":"7"}],"total":2,"next":"7"})");
    node.answer("GET /v1/alarms?after=7", R"({"alarms":[{"fmAlarmId":"8"}],"total":2})");

    EXPECT_EQ((Outcome{0,
                       "{\n  \"alarms\": [\n    {\n      \"fmAlarmId\": \"7\"\n    },\n    {\n"
                       "      \"fmAlarmId\": \"8\"\n    }\n  ],\n  \"total\": 2\n}\n",
                       ""}),
              run({"alarms", "--json"}));
}

TEST_F(AlarmCommandsTest, aWatchedListIsPrintedAnewWhenSomethingHasHappened)
{
    node.answer("GET /v1/alarms", page("", ""));
    node.answer("GET /v1/alarms", R"({"alarms":[{"fmAlarmId":"9","activeSeverity":"MINOR"}],"total":1})");
    node.stream("GET /v1/notifications", event("heartbeat", "1.0") + event("alarm", "2.0") + event("alarm", "3.0"),
                true);

    EXPECT_EQ((Outcome{130,
                       "no active alarms\n"
                       "\n"
                       "ID  SEVERITY  LAST EVENT  RESOURCE  TYPE  PROBLEM  TEXT\n"
                       "9   MINOR     -           -         -/-   -        -\n"
                       "1 active alarm\n",
                       ""}),
              runUntilRequests({"alarms", "--watch"}, 3));
}

TEST_F(AlarmCommandsTest, onATerminalAWatchedListIsDrawnInItsPlace)
{
    node.answer("GET /v1/alarms", page("", ""));
    node.stream("GET /v1/notifications", event("rebuilt", "1.0"), true);
    onTerminal = true;

    EXPECT_EQ((Outcome{130, "\033[H\033[Jno active alarms\n\033[H\033[Jno active alarms\n", ""}),
              runUntilRequests({"alarms", "--watch"}, 3));
}

TEST_F(AlarmCommandsTest, oneAlarmIsShownWithEverythingAndNamesBesideNumbers)
{
    node.answer("GET /v1/alarms/7", alarm7);

    EXPECT_EQ((Outcome{0,
                       "object           ManagedElement=1,FmAlarm=7\n"
                       "id               7\n"
                       "severity         MAJOR\n"
                       "resource         ManagedElement=1,Port=4\n"
                       "problem          Loss of Signal\n"
                       "text             no\\nlight\n"
                       "last event       2024-05-01T08:00:00.500+02:00\n"
                       "sequence number  12\n"
                       "major type       32473\n"
                       "minor type       101\n"
                       "event type       communicationsAlarm (2)\n"
                       "probable cause   lossOfSignal (8)\n"
                       "first event      2024-05-01T08:00:00.000+02:00\n"
                       "first severity   MINOR\n"
                       "first text       -\n"
                       "info             lane = 2\n"
                       "                 module = übel\n",
                       ""}),
              run({"alarm", "7"}));
}

TEST_F(AlarmCommandsTest, whatHasNoNameIsShownAsItIs)
{
    node.answer("GET /v1/alarms/8", alarm8);

    EXPECT_EQ((Outcome{0,
                       "object          ManagedElement=1,FmAlarm=8\n"
                       "id              8\n"
                       "severity        INDETERMINATE\n"
                       "resource        Tür=1\n"
                       "problem         -\n"
                       "text\n"
                       "last event      2024-05-01T08:00:01.000+02:00\n"
                       "major type      32473\n"
                       "minor type      9\n"
                       "probable cause  418\n"
                       "vendorField     true\n",
                       ""}),
              run({"alarm", "8"}));
}

TEST_F(AlarmCommandsTest, anAlarmThatIsNotThereIsTold)
{
    node.answer("GET /v1/alarms/9", R"({"error":{"reason":"no active alarm, \"9\"","field":"id"}})", 404);

    EXPECT_EQ((Outcome{1, "", "zorvctl: id: no active alarm, \"9\"\n"}), run({"alarm", "9"}));
}

TEST_F(AlarmCommandsTest, anIdIsANumber)
{
    for (const std::string id : {"", "a/b", "-1", "1 ", "18446744073709551616"}) {
        EXPECT_EQ(
            (Outcome{2, "",
                     "zorvctl: ID: not the id of an alarm, a number, \"" + id + "\"; see zorvctl alarm --help\n"}),
            run({"alarm", "--", id}));
    }
    EXPECT_THAT(node.requests(), IsEmpty());
}

TEST_F(AlarmCommandsTest, theSummaryIsShown)
{
    node.answer("GET /v1/summary", R"({"totalActive":2,"sumCritical":0,"lastChanged":null,"other":1})");

    EXPECT_EQ((Outcome{0, "active alarms  2\ncritical       0\nlast change    -\nother          1\n", ""}),
              run({"summary"}));
    EXPECT_EQ(
        (Outcome{0, "{\n  \"totalActive\": 2,\n  \"sumCritical\": 0,\n  \"lastChanged\": null,\n  \"other\": 1\n}\n",
                 ""}),
        run({"summary", "--json"}));
}

TEST_F(AlarmCommandsTest, aSummaryOfANewNodeTellsThatNothingHasChanged)
{
    node.answer("GET /v1/summary", R"({"heartbeatInterval":0,"lastChanged":"1970-01-01T00:00:00.000+00:00"})");

    EXPECT_EQ((Outcome{0, "heartbeat interval  off\nlast change         never\n", ""}), run({"summary"}));
}

TEST_F(AlarmCommandsTest, suppressionIsTurnedOnAndOff)
{
    node.answer("PUT /v1/suppression", R"({"on":true})");

    EXPECT_EQ((Outcome{0, "suppression is on\n", ""}), run({"suppress", "on"}));
    EXPECT_EQ((Outcome{0, "suppression is off\n", ""}), run({"suppress", "off"}));
    EXPECT_THAT(node.requests(),
                ElementsAre(R"(PUT /v1/suppression {"on":true})", R"(PUT /v1/suppression {"on":false})"));
}

}  // namespace ZorvCtl
