/// A disk that takes nothing for a while: the real zorvd goes on, tells of it, and has forgotten nothing afterwards.

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ZorvdDiskTest : public ::testing::Test {
protected:
    ZorvdDiskTest()
    {
        files.writeConfiguration(FM_LIBRARY,
                                 "<storageAlarm dn=\"ManagedElement=1\" majorType=\"32473\" minorType=\"903\"/>\n");
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    /// Every write of the node fails from now on, or none.
    static void breakDisk(const RunningNode& node, bool isBroken)
    {
        const std::string status = node.request("GET", "/v1/node");
        const std::string name = "\"processId\":";
        const pid_t process = std::stoi(status.substr(status.find(name) + name.size()));
        const rlimit limit{isBroken ? 0 : RLIM_INFINITY, RLIM_INFINITY};
        ASSERT_EQ(0, prlimit(process, RLIMIT_FSIZE, &limit, nullptr));
    }

    static std::string publish(const RunningNode& node, const std::string& port)
    {
        return node.request(
            "POST", "/v1/notifications",
            R"({"raise":{"dn":"ManagedElement=1,Port=)" + port +
                R"(","majorType":32473,"minorType":202,"severity":"MAJOR","eventTime":1714543200000000000}})");
    }

    /// "id DN" of each active alarm, when there are so many.
    static std::vector<std::string> awaitAlarms(const RunningNode& node, std::size_t number)
    {
        std::vector<std::string> lines;
        for (int look = 0; look < 300 && lines.size() != number; ++look) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            lines = alarms(node);
        }
        return lines;
    }

    static std::vector<std::string> alarms(const RunningNode& node)
    {
        std::istringstream table(node.out({"alarms"}));
        std::vector<std::string> found;
        std::string line;
        std::getline(table, line);
        while (std::getline(table, line)) {
            std::istringstream cells(line);
            std::string id;
            std::string severity;
            std::string time;
            std::string dn;
            if (cells >> id >> severity >> time >> dn && dn.find('=') != std::string::npos) {
                found.push_back(id + " " + dn);
            }
        }
        return found;
    }

    NodeFiles files;
};

TEST_F(ZorvdDiskTest, thatTakesNothingCostsNoAlarmAndIsAnAlarmItself)
{
    {
        RunningNode node(files);
        EXPECT_THAT(publish(node, "1"), Not(HasSubstr("durable")));
        EXPECT_THAT(awaitAlarms(node, 1), ElementsAre("1 ManagedElement=1,Port=1"));

        breakDisk(node, true);
        EXPECT_THAT(publish(node, "2"), HasSubstr(R"("durable":false)"));
        EXPECT_THAT(awaitAlarms(node, 4),
                    ::testing::UnorderedElementsAre("1 ManagedElement=1,Port=1", HasSubstr("ManagedElement=1,Port=2"),
                                                    HasSubstr("ManagedElement=1,Storage=state"),
                                                    HasSubstr("ManagedElement=1,Storage=log")));
        EXPECT_THAT(node.ctl({"status"}).out, HasSubstr("the state cannot be written"));
        EXPECT_THAT(node.out({"notifications", "--after", "0.0"}), HasSubstr("dn=\"ManagedElement=1,Port=2\""));

        breakDisk(node, false);
        EXPECT_THAT(awaitAlarms(node, 2),
                    ElementsAre("1 ManagedElement=1,Port=1", HasSubstr("ManagedElement=1,Port=2")));
        EXPECT_EQ(0, node.ctl({"status"}).exitCode);
        EXPECT_THAT(node.out({"log"}), HasSubstr("writing the store works again"));
        EXPECT_THAT(node.out({"log"}), HasSubstr("writing the logs works again, lost: "));
        EXPECT_THAT(publish(node, "3"), Not(HasSubstr("durable")));
        EXPECT_THAT(awaitAlarms(node, 3), ::testing::SizeIs(3));
        node.kill();
    }
    const RunningNode node(files);
    EXPECT_THAT(awaitAlarms(node, 3), ElementsAre("1 ManagedElement=1,Port=1", HasSubstr("ManagedElement=1,Port=2"),
                                                  HasSubstr("ManagedElement=1,Port=3")));
}

TEST_F(ZorvdDiskTest, anAlarmAboutItDoesNotOutliveANodeThatCouldNotClearIt)
{
    {
        RunningNode node(files);
        awaitAlarms(node, 0);
        breakDisk(node, true);
        publish(node, "1");
        EXPECT_THAT(awaitAlarms(node, 3), ::testing::SizeIs(3));
        node.kill();
    }
    RunningNode node(files);
    node.settle();
    EXPECT_THAT(alarms(node), IsEmpty());
}

}  // namespace ZorvTest
