/// The node is killed again and again under load: what it has acknowledged is there after the next start, under the same
/// ids, and numbering goes on.

#include <Poco/StringTokenizer.h>
#include <gmock/gmock.h>
#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

#include "AlarmFollower.hpp"
#include "Publisher.hpp"
#include "RunningNode.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

using ::testing::IsEmpty;

namespace {

constexpr int publishers = 3;
constexpr int lastingAlarms = 20;
constexpr int firstFan = 100;               // no name is part of another one
constexpr unsigned long longestLife = 60;   // milliseconds of load
constexpr unsigned long longestStart = 30;  // milliseconds of a start that is killed

using IdsT = std::map<std::string, std::string>;  // by DN

using DnsT = std::vector<std::string>;

DnsT difference(const DnsT& all, const DnsT& without)
{
    DnsT rest;
    std::set_difference(all.begin(), all.end(), without.begin(), without.end(), std::back_inserter(rest));
    return rest;
}

void pause(unsigned long milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace

class KillTest : public ::testing::Test {
protected:
    KillTest()
    {
        files.writeConfiguration(FM_LIBRARY, "<log><level>warning</level><fileSize>1000000000</fileSize></log>\n");
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
        for (int number = 1; number <= publishers; ++number) {
            all.emplace_back(files.socket(), number);
        }
    }

    static std::string lastingDn(int number) { return "ManagedElement=1,Fan=" + std::to_string(firstFan + number); }

    void raiseLastingAlarms() const
    {
        const RunningNode node(files);
        std::string batch;
        for (int number = 1; number <= lastingAlarms; ++number) {
            batch += (batch.empty() ? "[" : ",") + std::string(R"({"raise":{"dn":")") + lastingDn(number) +
                     R"(","majorType":32473,"minorType":202,"severity":"MAJOR","eventTime":1}})";
        }
        node.request("POST", "/v1/notifications", batch + "]");
        node.settle();
    }

    /// A node under load that is killed in the middle of it.
    void loadAndKill()
    {
        RunningNode node(files);
        AlarmFollower follower(files.socket());
        std::vector<std::thread> threads;
        for (Publisher& publisher : all) {
            threads.emplace_back([&publisher] { publisher.run(); });
        }
        pause(random() % longestLife);
        node.kill();
        for (std::thread& thread : threads) {
            thread.join();
        }
        note(follower.getAlarms());
    }

    void killWhileItStarts()
    {
        RunningProcess starting(files.command());
        pause(random() % longestStart);
        starting.signal(SIGKILL);
        starting.awaitEnd();
    }

    /// A node that is let do its work: what has to be active is active.
    void verify()
    {
        RunningNode node(files);
        AlarmFollower follower(files.socket());
        for (Publisher& publisher : all) {
            publisher.finish();
        }
        node.settle();
        expectAlarms(readIds(node));
        node.kill();
        note(follower.getAlarms());
    }

    static IdsT readIds(const RunningNode& node)
    {
        ZorvInput::JsonDocumentT answer;
        ZorvInput::parseJson(node.request("GET", "/v1/alarms?limit=1000"), 16, answer);
        IdsT ids;
        for (const auto& alarm : answer["alarms"].GetArray()) {
            EXPECT_TRUE(ids.emplace(alarm["source"].GetString(), ZorvInput::jsonText(alarm["fmAlarmId"])).second);
        }
        return ids;
    }

    void expectAlarms(const IdsT& ids)
    {
        DnsT expected;
        for (const Publisher& publisher : all) {
            const auto dns = publisher.activeDns();
            expected.insert(expected.end(), dns.begin(), dns.end());
        }
        for (int number = 1; number <= lastingAlarms; ++number) {
            const std::string dn = lastingDn(number);
            expected.push_back(dn);
            EXPECT_EQ(std::to_string(number), ids.count(dn) > 0 ? ids.at(dn) : "none") << dn;
        }
        std::sort(expected.begin(), expected.end());
        DnsT active;
        for (const auto& [dn, id] : ids) {
            active.push_back(dn);
        }
        EXPECT_THAT(difference(expected, active), IsEmpty()) << "missing";
        EXPECT_THAT(difference(active, expected), IsEmpty()) << "active, and should not be";
    }

    /// Numbers grow by one within a life, and none is used again in a later one.
    void note(const std::vector<SeenAlarm>& alarms)
    {
        std::uint64_t last = 0;
        for (const SeenAlarm& alarm : alarms) {
            ASSERT_TRUE(last == 0 ? alarm.seqNo > lastSeen() : alarm.seqNo == last + 1)
                << alarm.seqNo << " after " << (last == 0 ? lastSeen() : last);
            last = alarm.seqNo;
            seen[alarm.seqNo] = alarm.dn + " " + alarm.severity;
        }
    }

    std::uint64_t lastSeen() const { return seen.empty() ? 0 : seen.rbegin()->first; }

    /// Each number stands in the alarm log once, in order, and what was seen stands there as it was seen.
    void expectLog() const
    {
        std::map<std::uint64_t, std::string> logged;
        std::istringstream lines(files.directory.read("run/log/FmAlarmLog.log"));
        for (std::string line; std::getline(lines, line);) {
            const std::size_t begin = line.find("<Alarm>");
            if (begin == std::string::npos) {
                continue;
            }
            const Poco::StringTokenizer fields(line.substr(begin), ";");
            const std::uint64_t number = std::stoull(fields[9]);
            ASSERT_TRUE(logged.empty() || number > logged.rbegin()->first) << number;
            logged[number] = fields[2] + " " + fields[7];
        }
        for (const auto& [number, alarm] : seen) {
            ASSERT_EQ(alarm, logged.count(number) > 0 ? logged.at(number) : "not logged") << number;
        }
    }

    NodeFiles files;
    std::vector<Publisher> all;
    std::mt19937 random{1};
    std::map<std::uint64_t, std::string> seen;  // by sequence number
};

TEST_F(KillTest, nothingAcknowledgedIsMissingAndNumberingGoesOn)
{
    raiseLastingAlarms();

    for (int kills = 0; kills < KILLS && !HasFailure();) {
        loadAndKill();
        ++kills;
        if (random() % 4 == 0) {
            killWhileItStarts();
            ++kills;
        }
        verify();
        ++kills;
    }

    expectLog();
    std::size_t answered = 0;
    for (const Publisher& publisher : all) {
        answered += publisher.getNumberAnswered();
    }
    EXPECT_GT(answered, static_cast<std::size_t>(KILLS));
    RecordProperty("notificationsAcknowledged", static_cast<int>(answered));
}

}  // namespace ZorvTest
