#include "scenario/ScenarioReader.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"
#include "files/InputError.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

using ::testing::ElementsAre;
using ::testing::Pair;

class ScenarioReaderTest : public ::testing::Test {
protected:
    Scenario read(const std::string& content) const { return readScenario(directory.write("s.jsonl", content)); }

    FmNotification notification(const std::string& line) const
    {
        return std::get<PublishAction>(read(line).actions.back().what).notification;
    }

    ZorvTest::TemporaryDirectory directory;
    const std::string header = R"({"scenario":"hour","start":"2024-05-01T06:00:00Z","description":"d"})"
                               "\n";
};

TEST_F(ScenarioReaderTest, aRaiseHasItsDefaults)
{
    const FmNotification it =
        notification(R"({"at":0.5,"raise":{"dn":"Port=4","majorType":32473,"minorType":9,"severity":"MAJOR"}})");

    EXPECT_EQ(FmFramework::yalt, it.framework);
    EXPECT_EQ(4, it.version);
    EXPECT_EQ("Port=4", it.dn);
    EXPECT_EQ(32473U, it.majorType);
    EXPECT_EQ(9U, it.minorType);
    EXPECT_EQ(4, it.severity);
    EXPECT_EQ("", it.text);
    EXPECT_EQ(0U, it.eventTime);
}

TEST_F(ScenarioReaderTest, eventTimesFollowFromStartAndAt)
{
    EXPECT_EQ(1714543200500000000U,
              notification(header + R"({"at":0.5,"clear":{"dn":"Port=4","majorType":1,"minorType":2}})").eventTime);
}

TEST_F(ScenarioReaderTest, anEventTimeCanBeGivenInNanoseconds)
{
    EXPECT_EQ(
        77U,
        notification(header + R"({"at":0,"clear":{"dn":"P","majorType":1,"minorType":2,"eventTime":77}})").eventTime);
    EXPECT_EQ(
        18446744073709551615U,
        notification(R"({"at":0,"clear":{"dn":"P","majorType":1,"minorType":2,"eventTime":"18446744073709551615"}})")
            .eventTime);
}

TEST_F(ScenarioReaderTest, additionalInformationIsReadFromPairsAndFromAnObject)
{
    EXPECT_THAT(
        notification(
            R"({"at":0,"alert":{"dn":"P","majorType":1,"minorType":2,"severity":1,"info":[["b","1"],["a","2"]]}})")
            .info,
        ElementsAre(Pair("b", "1"), Pair("a", "2")));
    EXPECT_THAT(
        notification(R"({"at":0,"alert":{"dn":"P","majorType":1,"minorType":2,"severity":1,"info":{"b":"1","a":"2"}}})")
            .info,
        ElementsAre(Pair("a", "2"), Pair("b", "1")));
}

TEST_F(ScenarioReaderTest, frameworkAndVersionStandBesideTheAction)
{
    const FmNotification it = notification(
        R"({"at":0,"raise":{"dn":"P","majorType":1,"minorType":2,"severity":-3},"framework":"zorv","version":1})");

    EXPECT_EQ(FmFramework::zorv, it.framework);
    EXPECT_EQ(1, it.version);
    EXPECT_EQ(-3, it.severity);
}

TEST_F(ScenarioReaderTest, actionsOnTheNodeAreRead)
{
    const Scenario it = read(header + R"({"at":0,"suppress":"on"}

{"at":1,"set":{"dn":"Node=1","attributes":{"name":"x"}}}
{"at":1,"create":{"dn":"Node=2","attributes":{}}}
{"at":1,"delete":{"dn":"Node=2"}}
{"at":2,"settle":true}
{"at":2,"settle":2.5})");

    ASSERT_EQ(6U, it.actions.size());
    EXPECT_EQ("hour", it.name);
    EXPECT_EQ(4U, it.actions[1].line);
    EXPECT_TRUE(std::get<SuppressAction>(it.actions[0].what).on);
    EXPECT_EQ(R"({"set":{"dn":"Node=1","attributes":{"name":"x"}}})", std::get<ChangeAction>(it.actions[1].what).json);
    EXPECT_EQ(R"({"create":{"dn":"Node=2","attributes":{}}})", std::get<ChangeAction>(it.actions[2].what).json);
    EXPECT_EQ(R"({"delete":{"dn":"Node=2"}})", std::get<ChangeAction>(it.actions[3].what).json);
    EXPECT_EQ(0.5, std::get<SettleAction>(it.actions[4].what).quietSeconds);
    EXPECT_EQ(2.5, std::get<SettleAction>(it.actions[5].what).quietSeconds);
}

struct ScenarioFailure {
    const char* name;
    std::string line;
    std::string message;
};

class ScenarioFailureTest : public ScenarioReaderTest, public ::testing::WithParamInterface<ScenarioFailure> {};

TEST_P(ScenarioFailureTest, isToldWithLineFieldAndValue)
{
    try {
        read("{\"at\":3.5,\"suppress\":\"on\"}\n" + GetParam().line);
        FAIL() << "was read";
    } catch (const InputError& e) {
        EXPECT_EQ(directory.path("s.jsonl") + ":2: " + GetParam().message, e.what());
    }
}

std::string raise(const std::string& fields, const std::string& beside = "")
{
    return R"({"at":4,"raise":{"dn":"P","majorType":1,"minorType":2,"severity":1)" + fields + "}" + beside + "}";
}

const ScenarioFailure scenarioFailures[] = {
    {"earlier", R"({"at":3,"suppress":"on"})", R"(at: earlier than the line before, "3")"},
    {"noTime", R"({"suppress":"on"})", "at: missing"},
    {"textAsTime", R"({"at":"4","suppress":"on"})", R"(at: not a number from 0 to 86400000, "4")"},
    {"negativeTime", R"({"at":-1,"suppress":"on"})", R"(at: not a number from 0 to 86400000, "-1")"},
    {"noAction", R"({"at":4})", "no action"},
    {"unknownAction", R"({"at":4,"sleep":1,"framework":"zorv"})", R"(no such action, "sleep")"},
    {"twoActions", R"({"at":4,"suppress":"on","settle":true})", R"(two actions in one line, "suppress, settle")"},
    {"unknownField", R"({"at":4,"suppress":"on","colour":1})", "colour: unknown field"},
    {"unknownInner", raise(R"(,"colour":1)"), "raise.colour: unknown field"},
    {"noDn", R"({"at":4,"raise":{"majorType":1,"minorType":2,"severity":1}})", "raise.dn: missing"},
    {"dnNoText", R"({"at":4,"raise":{"dn":7,"majorType":1,"minorType":2,"severity":1}})",
     R"(raise.dn: not a text, "7")"},
    {"typeNoNumber", R"({"at":4,"raise":{"dn":"P","majorType":"x","minorType":2,"severity":1}})",
     R"(raise.majorType: not a number from 0 to 4294967295, "x")"},
    {"typeTooLarge", R"({"at":4,"raise":{"dn":"P","majorType":4294967296,"minorType":2,"severity":1}})",
     R"(raise.majorType: not a number from 0 to 4294967295, "4294967296")"},
    {"typeNull", R"({"at":4,"raise":{"dn":"P","majorType":null,"minorType":2,"severity":1}})",
     R"(raise.majorType: not a number from 0 to 4294967295, "null")"},
    {"noSeverity", R"({"at":4,"raise":{"dn":"P","majorType":1,"minorType":2}})", "raise.severity: missing"},
    {"unknownSeverity", R"({"at":4,"raise":{"dn":"P","majorType":1,"minorType":2,"severity":"BAD"}})",
     R"(raise.severity: no severity, "BAD")"},
    {"clearWithSeverity", R"({"at":4,"clear":{"dn":"P","majorType":1,"minorType":2,"severity":"MINOR"}})",
     R"(clear.severity: not CLEARED, "MINOR")"},
    {"framework", raise("", R"(,"framework":"other")"), R"(framework: not zorv or yalt, "other")"},
    {"versionThree", raise("", R"(,"version":3)"), R"(version: framework yalt has no such version, "3")"},
    {"zorvFour", raise("", R"(,"framework":"zorv","version":4)"),
     R"(version: framework zorv has no such version, "4")"},
    {"infoInVersionTwo", raise(R"(,"info":{"a":"b"})", R"(,"version":2)"), R"(raise.info: only in version 4, "2")"},
    {"infoNoPair", raise(R"(,"info":[["a"]])"), R"(raise.info: not a pair of texts, "["a"]")"},
    {"infoNoObject", raise(R"(,"info":7)"), R"(raise.info: not an object, "7")"},
    {"raiseNoObject", R"({"at":4,"raise":7})", R"(raise: not an object, "7")"},
    {"suppress", R"({"at":4,"suppress":"maybe"})", R"(suppress: not on or off, "maybe")"},
    {"settleFalse", R"({"at":4,"settle":false})", R"(settle: not a number from 0.05 to 600, "false")"},
    {"settleLong", R"({"at":4,"settle":601})", R"(settle: not a number from 0.05 to 600, "601")"},
    {"lateHeader", R"({"scenario":"x"})", "scenario: only in the first line"},
    {"setWithoutAttributes", R"({"at":4,"set":{"dn":"N=1"}})", "set.attributes: missing"},
    {"createWithoutDn", R"({"at":4,"create":{"attributes":{}}})", "create.dn: missing"},
    {"deleteWithAttributes", R"({"at":4,"delete":{"dn":"N=1","attributes":{}}})", "delete.attributes: unknown field"},
    {"notJson", R"({"at":4)", "not JSON: at byte 7: Missing a comma or '}' after an object member"},
    {"tooDeep", R"({"at":[[[[[[[[[[[[[[[[1]]]]]]]]]]]]]]]]})", "JSON deeper than 16 levels"},
    {"array", "[1]", R"(not a JSON object, "[1]")"},
};

INSTANTIATE_TEST_SUITE_P(ScenarioReader, ScenarioFailureTest, ::testing::ValuesIn(scenarioFailures),
                         [](const auto& failure) { return std::string(failure.param.name); });

TEST_F(ScenarioReaderTest, aWrongStartIsTold)
{
    try {
        read(R"({"scenario":"x","start":"yesterday"})");
        FAIL() << "was read";
    } catch (const InputError& e) {
        EXPECT_EQ(directory.path("s.jsonl") + ":1: start: not a time like 2024-05-01T06:00:00Z, \"yesterday\"",
                  e.what());
    }
}

TEST_F(ScenarioReaderTest, anOverlongLineIsRefused)
{
    try {
        read("{\"at\":0,\"suppress\":\"" + std::string(70000, 'x') + "\"}");
        FAIL() << "was read";
    } catch (const InputError& e) {
        EXPECT_EQ(directory.path("s.jsonl") + ":1: line longer than 65536 bytes", e.what());
    }
}

}  // namespace ZorvCtl
