/// What a node knew when it ended it knows again: the real zorvd with the real library, twice on one state directory.

#include <gmock/gmock.h>

#include <filesystem>

#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::HasSubstr;

class ZorvdRestartTest : public ::testing::Test {
protected:
    ZorvdRestartTest()
    {
        files.writeConfiguration(FM_LIBRARY);
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    static void raise(const RunningNode& node, const std::string& port)
    {
        node.out({"raise", "ManagedElement=1,Port=" + port, "32473/202", "--severity", "major", "--text", "no light",
                  "--time", "2024-05-01T06:00:0" + port + "Z"});
    }

    static std::string alarms(const RunningNode& node)
    {
        node.settle();
        return node.out({"alarms"});
    }

    static constexpr const char* heading =
        "ID  SEVERITY  LAST EVENT                     RESOURCE                 TYPE       PROBLEM            TEXT\n";

    static std::string line(const std::string& id, const std::string& port)
    {
        return id + "   MINOR     2024-05-01T06:00:0" + port + ".000+00:00  ManagedElement=1,Port=" + port +
               "  32473/202  Line Card Missing  no light\n";
    }

    NodeFiles files;
};

TEST_F(ZorvdRestartTest, anOrderlyEndKeepsAlarmsAndNumbering)
{
    {
        RunningNode node(files);
        raise(node, "1");
        raise(node, "2");
        EXPECT_EQ(heading + line("1", "1") + line("2", "2") + "2 active alarms\n", alarms(node));
        EXPECT_EQ(0, node.stop().exitCode);
    }
    const RunningNode node(files);
    EXPECT_EQ(heading + line("1", "1") + line("2", "2") + "2 active alarms\n", alarms(node));

    node.out({"clear", "ManagedElement=1,Port=1", "32473/202"});
    raise(node, "3");

    EXPECT_EQ(heading + line("2", "2") + line("3", "3") + "2 active alarms\n", alarms(node));
    EXPECT_THAT(node.out({"summary"}), HasSubstr("last sequence number  4\n"));
}

TEST_F(ZorvdRestartTest, aKillKeepsAlarmsAndNumbering)
{
    {
        RunningNode node(files);
        raise(node, "1");
        raise(node, "2");
        alarms(node);
        node.kill();
    }
    const RunningNode node(files);
    raise(node, "3");

    EXPECT_EQ(heading + line("1", "1") + line("2", "2") + line("3", "3") + "3 active alarms\n", alarms(node));
    EXPECT_THAT(node.out({"summary"}), HasSubstr("last sequence number  3\n"));
}

TEST_F(ZorvdRestartTest, whatIsAcceptedWhileTheComponentIsStoppedIsDeliveredWhenItStarts)
{
    const RunningNode node(files);
    node.out({"component", "stop", "ZorvFmComponent"});
    raise(node, "1");
    raise(node, "2");
    EXPECT_THAT(node.out({"counters"}), HasSubstr("\nnotificationsWaiting      2\n"));
    EXPECT_EQ(1, node.ctl({"status"}).exitCode);

    node.out({"component", "start", "ZorvFmComponent"});

    EXPECT_EQ(heading + line("1", "1") + line("2", "2") + "2 active alarms\n", alarms(node));
    EXPECT_THAT(node.out({"counters"}), HasSubstr("\nnotificationsWaiting      0\n"));
}

TEST_F(ZorvdRestartTest, whatIsAcceptedWhileTheComponentIsStoppedSurvivesAKill)
{
    {
        RunningNode node(files);
        node.out({"component", "stop", "ZorvFmComponent"});
        raise(node, "1");
        raise(node, "2");
        node.kill();
    }
    const RunningNode node(files);

    EXPECT_EQ(heading + line("1", "1") + line("2", "2") + "2 active alarms\n", alarms(node));
}

}  // namespace ZorvTest
