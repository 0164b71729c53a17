/// scripts/play-example, which ./run ends with.

#include <Poco/File.h>
#include <gmock/gmock.h>

#include "Process.hpp"
#include "TemporaryDirectory.hpp"

namespace ZorvTest {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

const std::string script = PLAY_EXAMPLE;

}  // namespace

TEST(PlayExampleTest, showsNotificationsAlarmLogAndActiveAlarmsAndLeavesNoNodeBehind)
{
    const ProcessResult result = runProcess({script, BUILD, "100000"});

    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("", result.err);
    EXPECT_THAT(result.out,
                StartsWith("An hour of an access router, 100000 times as fast\n"
                           "\n"
                           "          the alarm list is to be read anew\n"
                           "          heartbeat\n"
                           "07:00:01  alert  WARNING   ManagedElement=1 · Node Restarted · restarted after a "
                           "power cycle\n"));
    EXPECT_THAT(result.out,
                HasSubstr("07:10:10  raise  MAJOR     Equipment=1,Slot=2,Port=11 · Loss of Signal · no light "
                          "· toggling\n"));
    EXPECT_THAT(result.out,
                HasSubstr("07:38:20  clear            Equipment=1,Slot=3,Port=03 · Loss of Signal · line card "
                          "is back in service\n"
                          "          and 21 more like it\n"));
    EXPECT_THAT(result.out, HasSubstr("\nAlarm log, 294 records; the last two:\n\n<FmLogRecord>\n"));
    EXPECT_THAT(result.out, HasSubstr("\nraise: taken by the node\nalert: taken by the node\nclear: taken by the node\n"
                                      "sent 3, rejected 0\n"));
    EXPECT_THAT(result.out, HasSubstr("\nActive alarms:\n\nID   SEVERITY  LAST EVENT "));
    EXPECT_THAT(result.out, HasSubstr("\n112  WARNING   2025-03-12T07:58:36.000+00:00  ManagedElement=1,Equipment=1,"
                                      "Processor=1 "));
    EXPECT_THAT(result.out, HasSubstr("\nplayed 2197 actions (1238 raises, 871 clears, 68 alerts) in "));
    EXPECT_FALSE(Poco::File(BUILD "/example/run/zorvd.pid").exists());
    EXPECT_FALSE(Poco::File(BUILD "/example/run/zorvd.sock").exists());
}

TEST(PlayExampleTest, aNodeThatDoesNotStartIsAFailureWithItsMessages)
{
    const TemporaryDirectory build;
    Poco::File(build.path("node")).createDirectories();
    Poco::File(build.write("node/zorvd", "#!/bin/sh\necho \"zorvd: cannot start\" >&2\nexit 1\n")).setExecutable();

    const ProcessResult result = runProcess({script, build.path()});

    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("zorvd: cannot start\nplay-example: the node does not start\n", result.err);
}

TEST(PlayExampleTest, aFolderWithoutANodeIsRefused)
{
    const TemporaryDirectory build;

    const ProcessResult result = runProcess({script, build.path()});

    EXPECT_EQ(1, result.exitCode);
    EXPECT_THAT(result.err, StartsWith("play-example: no zorvd in "));
    EXPECT_THAT(result.err, EndsWith("; build it first\n"));
}

}  // namespace ZorvTest
