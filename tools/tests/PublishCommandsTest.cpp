#include "CommandTest.hpp"
#include "TimeText.hpp"
#include "json/Json.hpp"

namespace ZorvCtl {

using ::testing::ElementsAre;

namespace {

const char* const target = "POST /v1/notifications?wait=routed";
const char* const taken = R"({"accepted":1,"rejected":[]})";

}  // namespace

class PublishCommandsTest : public CommandTest {};

TEST_F(PublishCommandsTest, aRaiseIsPublishedWithEverythingThatWasSaid)
{
    node.answer(target, taken);

    const Outcome outcome = run({"raise", "ManagedElement=1,Port=4", "32473/101", "--severity", "major", "--text",
                                 "no \"light\"", "--info", "b=1=2", "--info", "a=", "--time",
                                 "2024-05-01T08:00:00.5+02:00", "--framework", "yalt", "--version", "4"});

    EXPECT_EQ((Outcome{0, "published: raise MAJOR ManagedElement=1,Port=4 32473/101\n", ""}), outcome);
    EXPECT_THAT(
        node.requests(),
        ElementsAre(std::string(target) +
                    R"( {"raise":{"dn":"ManagedElement=1,Port=4","majorType":32473,"minorType":101,"severity":"MAJOR",)"
                    R"("text":"no \"light\"","info":[["b","1=2"],["a",""]],"eventTime":1714543200500000000}})"));
}

TEST_F(PublishCommandsTest, aClearHasNoSeverity)
{
    node.answer(target, taken);

    const Outcome outcome = run({"clear", "Port=4", "32473/101", "--time", "77"});

    EXPECT_EQ((Outcome{0, "published: clear Port=4 32473/101\n", ""}), outcome);
    EXPECT_THAT(node.requests(),
                ElementsAre(std::string(target) + R"( {"clear":{"dn":"Port=4","majorType":32473,"minorType":101,)"
                                                  R"("eventTime":77}})"));
}

TEST_F(PublishCommandsTest, frameworkVersionAndASeverityWithoutNameAreHandedOn)
{
    node.answer(target, taken);

    const Outcome outcome =
        run({"alert", "P", "1/2", "--severity", "17", "--time", "77", "--framework", "zorv", "--version", "1"});

    EXPECT_EQ((Outcome{0, "published: alert 17 P 1/2\n", ""}), outcome);
    EXPECT_THAT(node.requests(),
                ElementsAre(std::string(target) + R"( {"alert":{"dn":"P","majorType":1,"minorType":2,"severity":17,)"
                                                  R"("eventTime":77},"framework":"zorv","version":1})"));
}

TEST_F(PublishCommandsTest, withoutTimeItHappensNow)
{
    node.answer(target, taken);
    const std::uint64_t before = timeNow();

    run({"clear", "P", "1/2"});

    ZorvInput::JsonDocumentT body;
    ZorvInput::parseJson(node.requests().front().substr(std::string(target).size() + 1), 8, body);
    EXPECT_LE(before, body["clear"]["eventTime"].GetUint64());
    EXPECT_GE(timeNow(), body["clear"]["eventTime"].GetUint64());
}

TEST_F(PublishCommandsTest, aRejectionIsTheNodesReasonWithItsField)
{
    node.answer(target, R"({"accepted":0,"rejected":[{"item":0,"field":"raise.dn","reason":"too long"}]})", 422);

    EXPECT_EQ((Outcome{1, "", "zorvctl: raise.dn: too long\n"}), run({"raise", "P", "1/2", "--severity", "minor"}));
}

TEST_F(PublishCommandsTest, aRefusalOfTheRequestIsTold)
{
    node.answer(target, R"({"error":{"reason":"not permitted to publish"}})", 403);

    EXPECT_EQ((Outcome{1, "", "zorvctl: not permitted to publish\n"}), run({"clear", "P", "1/2"}));
}

struct WrongArguments {
    const char* name;
    std::vector<std::string> arguments;
    const char* message;
};

class WrongArgumentsTest : public CommandTest, public ::testing::WithParamInterface<WrongArguments> {};

TEST_P(WrongArgumentsTest, areToldAndNothingIsAskedOfTheNode)
{
    const Outcome outcome = run(GetParam().arguments);

    EXPECT_EQ((Outcome{2, "", "zorvctl: " + std::string(GetParam().message) + " --help\n"}), outcome);
    EXPECT_THAT(node.requests(), ElementsAre());
}

const WrongArguments wrongArguments[] = {
    {"noCommand", {}, "a command is needed; see zorvctl"},
    {"unknownCommand", {"rise"}, "not understood: rise; see zorvctl"},
    {"unknownOption", {"alarms", "--sevrity", "x"}, "not understood: --sevrity; see zorvctl alarms"},
    {"noType", {"raise", "P"}, "TYPE is required; see zorvctl raise"},
    {"noSeverity", {"raise", "P", "1/2"}, "--severity is required; see zorvctl raise"},
    {"typeWithoutMinor",
     {"clear", "P", "1"},
     "TYPE: not a type like 32473/101, with both numbers, \"1\"; see zorvctl clear"},
    {"typeTooLarge",
     {"clear", "P", "1/4294967296"},
     "TYPE: not a type like 32473/101, numbers from 0 to 4294967295, \"1/4294967296\"; see zorvctl clear"},
    {"severity",
     {"raise", "P", "1/2", "--severity", "bad"},
     "--severity: not critical, major, minor, warning, indeterminate, cleared or a 32-bit number, \"bad\"; see "
     "zorvctl raise"},
    {"info", {"clear", "P", "1/2", "--info", "x"}, "--info: not NAME=VALUE, \"x\"; see zorvctl clear"},
    {"time",
     {"clear", "P", "1/2", "--time", "noon"},
     "--time: not a time like 2024-05-01T06:00:00Z, \"noon\"; see zorvctl clear"},
    {"after",
     {"notifications", "--after", "7"},
     "--after: not oldest or two sequence numbers like 12.3, STATEFUL.STATELESS, \"7\"; see zorvctl notifications"},
    {"suppress", {"suppress", "maybe"}, "STATE: maybe not in {on,off}; see zorvctl suppress"},
    {"speed", {"play", "x", "--speed", "0"}, "--speed: not a factor from 0.001 to 1000000, \"0\"; see zorvctl play"},
    {"objectCommand", {"object", "move"}, "not understood: move; see zorvctl object"},
    {"traceLevel", {"level", "trace", "FM", "9"}, "LEVEL: Value 9 not in range 0 to 8; see zorvctl level trace"},
    {"watchedJson", {"alarms", "--watch", "--json"}, "--json excludes --watch; see zorvctl alarms"},
};

INSTANTIATE_TEST_SUITE_P(Commands, WrongArgumentsTest, ::testing::ValuesIn(wrongArguments),
                         [](const auto& wrong) { return std::string(wrong.param.name); });

}  // namespace ZorvCtl
