/// The example as a whole: an hour of an access router played into the real zorvd with the real library.
///
/// What is expected was worked out from the scenario and the alarm model, notification by notification, before it was
/// compared with what the node does; see examples/access-router/README.md for why it is the same each time.

#include <Poco/RegularExpression.h>
#include <gmock/gmock.h>

#include "ExpectedText.hpp"
#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

namespace {

const std::string example = EXAMPLE;

/// Puts what belongs to this run in the place of what node.xml says.
void setElement(std::string& document, const std::string& name, const std::string& value)
{
    const std::size_t begin = document.find("<" + name + ">") + name.size() + 2;
    const std::size_t end = document.find("</" + name + ">", begin);
    ASSERT_NE(std::string::npos, end) << name;
    document.replace(begin, end - begin, value);
}

/// Senders of version 1 give no event time: the library stamps those with the monotonic clock, which begins in 1970.
std::string withoutMonotonicTimes(std::string text)
{
    const int all = Poco::RegularExpression::RE_GLOBAL;
    Poco::RegularExpression("(?<=[eE]ventTime\":)[0-9]{1,17}(?=[,}])").subst(text, "0", all);
    Poco::RegularExpression("(?<=LastEventTime\":\"|[^0-9])19[0-9]{2}-[0-9-]+T[0-9:.]+\\+00:00")
        .subst(text, "monotonic", all);
    return text;
}

std::string withoutLogTimes(std::string text)
{
    Poco::RegularExpression("(?<=<LogTimestamp>)[^<]*(?=</LogTimestamp>)")
        .subst(text, "time of writing", Poco::RegularExpression::RE_GLOBAL);
    return text;
}

}  // namespace

TEST(ExampleTranscriptTest, theBusyHourGivesTheNotificationsAlarmLogAndActiveAlarmsExpected)
{
    const NodeFiles files;
    std::string configuration = readFile(example + "/node.xml");
    setElement(configuration, "library", FM_LIBRARY);
    setElement(configuration, "model", example + "/alarm-model.xml");
    setElement(configuration, "runDirectory", files.path("run"));
    setElement(configuration, "logDirectory", files.path("log"));
    setElement(configuration, "stateDirectory", files.path("state"));
    files.directory.write("node.xml", configuration);

    RunningNode node(files);
    EXPECT_THAT(node.out({"play", example + "/busy-hour.jsonl", "--speed", "100000"}),
                MatchesRegex("played 2197 actions \\(1238 raises, 871 clears, 68 alerts\\) in [0-9.]+ s\n"));

    expectText("busy-hour.version3.jsonl", withoutMonotonicTimes(node.out({"notifications", "--json"})));
    expectText("busy-hour.version2.jsonl",
               withoutMonotonicTimes(node.out({"notifications", "--json", "--version", "2"})));
    expectText("busy-hour.alarms.json", withoutMonotonicTimes(node.out({"alarms", "--json"})));
    expectText("busy-hour.alarmlog.txt",
               withoutMonotonicTimes(withoutLogTimes(files.directory.read("log/FmAlarmLog.log"))));
    EXPECT_THAT(node.out({"counters"}), HasSubstr("\neventsLost                0\n"));
}

}  // namespace ZorvTest
