/// What a node knew when it ended it knows again: the real zorvd with the real library, twice on one state directory.

#include <gmock/gmock.h>

#include <filesystem>

#include "NodeFiles.hpp"

namespace ZorvTest {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class ZorvdRestartTest : public ::testing::Test {
protected:
    ZorvdRestartTest()
    {
        files.writeConfiguration(FM_LIBRARY);
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    /// The active alarms at the end of a scenario of these lines.
    std::string activeAlarmsAfter(const std::string& scenario)
    {
        files.directory.write("play.jsonl", scenario);
        const ProcessResult result =
            runProcess(files.command({"--play", files.path("play.jsonl"), "--show-alarms"}), {"TZ=UTC"});
        EXPECT_EQ(0, result.exitCode) << result.err;
        return result.out;
    }

    NodeFiles files;
};

TEST_F(ZorvdRestartTest, activeAlarmsAndTheirNumbersGoOn)
{
    const std::string first = activeAlarmsAfter(
        R"({"at":0,"raise":{"dn":"ManagedElement=1,Port=1","majorType":32473,"minorType":202,"severity":"MAJOR","text":"no light"}})"
        "\n"
        R"({"at":0,"raise":{"dn":"ManagedElement=1,Port=2","majorType":32473,"minorType":202,"severity":"MINOR"}})"
        "\n");
    EXPECT_THAT(first, StartsWith("active alarms: 2\n"));
    EXPECT_THAT(first, HasSubstr("no light"));

    const std::string restarted = activeAlarmsAfter(R"({"at":0,"suppress":"off"})"
                                                    "\n");
    EXPECT_EQ(first, restarted);

    const std::string continued = activeAlarmsAfter(
        R"({"at":0,"clear":{"dn":"ManagedElement=1,Port=1","majorType":32473,"minorType":202}})"
        "\n"
        R"({"at":0,"raise":{"dn":"ManagedElement=1,Port=3","majorType":32473,"minorType":202,"severity":"MINOR"}})"
        "\n");
    EXPECT_THAT(continued, StartsWith("active alarms: 2\n"));
    EXPECT_THAT(continued, Not(HasSubstr("Port=1")));
    EXPECT_THAT(continued, HasSubstr("Port=2"));
    EXPECT_THAT(continued, HasSubstr("Port=3"));
}

}  // namespace ZorvTest
