/// The node is killed again and again under load: what it has acknowledged is there after the next start, under the same
/// ids, numbering goes on, and a consumer that goes on where it was sees every number or is told of a gap.
///
/// How often is settable, ZORV_TEST_KILLS=10000, how long at most, ZORV_TEST_SECONDS=600, and the course: ZORV_TEST_SEED.

#include <gmock/gmock.h>
#include <signal.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <iostream>
#include <iterator>

#include "FromEnvironment.hpp"
#include "KillWitness.hpp"
#include "Publisher.hpp"
#include "RunningNode.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr int publishers = 3;
constexpr int lastingAlarms = 20;
constexpr int typeWithSeverity = 202;
constexpr int typeWithoutSeverity = 101;
constexpr int typeOfAlerts = 156;
constexpr int firstFan = 100;               // no name is part of another one
constexpr unsigned long longestStart = 30;  // milliseconds of a start that is killed
constexpr std::size_t pieceOfLog = 100000;  // numbers
constexpr std::chrono::seconds patience(30);
const char* const log = "<log><level>warning</level><fileSize>1000000000</fileSize></log>\n";
const char* const filters =
    "<transientRaiseAlarmFilterTime>1</transientRaiseAlarmFilterTime>"
    "<transientCeaseAlarmFilterTime>1</transientCeaseAlarmFilterTime>"
    "<alarmToggleTriggerCount>3</alarmToggleTriggerCount><alarmToggleWindowSize>3</alarmToggleWindowSize>"
    "<alarmToggleSilentTimeout>1</alarmToggleSilentTimeout>";

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
        files.writeConfiguration(FM_LIBRARY, log);
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    static std::string lastingDn(int number) { return "ManagedElement=1,Fan=" + std::to_string(firstFan + number); }

    static std::string notification(const std::string& action, const std::string& dn, int eventTime,
                                    int minorType = typeWithoutSeverity)
    {
        return "{\"" + action + R"(":{"dn":")" + dn + R"(","majorType":32473,"minorType":)" +
               std::to_string(minorType) + (action == "raise" ? R"(,"severity":"MAJOR")" : "") + R"(,"eventTime":)" +
               std::to_string(eventTime) + "}}";
    }

    static void publish(const RunningNode& node, const std::vector<std::string>& notifications)
    {
        std::string batch;
        for (const std::string& notification : notifications) {
            batch += (batch.empty() ? "[" : ",") + notification;
        }
        node.request("POST", "/v1/notifications", batch + "]");
    }

    static std::string numberInInbox(const RunningNode& node)
    {
        return ZorvInput::jsonText(read(node, "/v1/counters")["notificationsInInbox"]);
    }

    static void awaitInbox(const RunningNode& node, const std::string& number)
    {
        const auto latest = std::chrono::steady_clock::now() + patience;
        while (numberInInbox(node) != number && std::chrono::steady_clock::now() < latest) {
            pause(20);
        }
        EXPECT_EQ(number, numberInInbox(node));
    }

    /// What is in the inbox stays there while the services have something to do.
    static void keepBusy(const RunningNode& node)
    {
        static int seconds = 1000;
        node.request("POST", "/v1/objects",
                     R"({"changes":[{"set":{"dn":"ManagedElement=1,SystemFunctions=1,Fm=1","attributes":)"
                     R"({"heartbeatInterval":)" +
                         std::to_string(++seconds) + "}}}]}");
        pause(20);
    }

    static ZorvInput::JsonDocumentT read(const RunningNode& node, const std::string& target)
    {
        ZorvInput::JsonDocumentT answer;
        ZorvInput::parseJson(node.request("GET", target), 16, answer);
        return answer;
    }

    void raiseLastingAlarms() const
    {
        const RunningNode node(files);
        std::vector<std::string> notifications;
        for (int number = 1; number <= lastingAlarms; ++number) {
            notifications.push_back(notification("raise", lastingDn(number), 1, typeWithSeverity));
        }
        publish(node, notifications);
        node.settle();
    }

    /// A node under load that is killed in the middle of it.
    void loadAndKill()
    {
        RunningNode node(files);
        AlarmFollower follower(files.socket());
        StreamReader consumer(files.socket(), witness.goesOn(true));
        std::vector<std::thread> threads;
        for (Publisher& publisher : all) {
            threads.emplace_back([&publisher] { publisher.run(); });
        }
        pause(random() % longestLife);
        node.kill();
        for (std::thread& thread : threads) {
            thread.join();
        }
        witness.note(follower.getAlarms());
        witness.note(consumer);
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
        node.request("POST", "/v1/settle", R"({"quietSeconds":0.05})");
        expectAlarms(awaitAlarms(node));
        StreamReader consumer(files.socket(), witness.goesOn(false));
        witness.note(consumer);
        node.kill();
        witness.note(follower.getAlarms());
    }

    /// Filters take their time.
    IdsT awaitAlarms(const RunningNode& node) const
    {
        const DnsT expected = expectedDns();
        const auto latest = std::chrono::steady_clock::now() + patience;
        IdsT present = readIds(node);
        while (dnsOf(present) != expected && std::chrono::steady_clock::now() < latest) {
            pause(20);
            present = readIds(node);
        }
        return present;
    }

    static IdsT readIds(const RunningNode& node)
    {
        const ZorvInput::JsonDocumentT answer = read(node, "/v1/alarms?limit=1000");
        IdsT ids;
        for (const auto& alarm : answer["alarms"].GetArray()) {
            EXPECT_TRUE(ids.emplace(alarm["source"].GetString(), ZorvInput::jsonText(alarm["fmAlarmId"])).second);
        }
        return ids;
    }

    DnsT expectedDns() const
    {
        DnsT expected;
        for (const Publisher& publisher : all) {
            const auto dns = publisher.activeDns();
            expected.insert(expected.end(), dns.begin(), dns.end());
        }
        for (int number = 1; number <= lastingAlarms; ++number) {
            expected.push_back(lastingDn(number));
        }
        std::sort(expected.begin(), expected.end());
        return expected;
    }

    static DnsT dnsOf(const IdsT& ids)
    {
        DnsT dns;
        for (const auto& [dn, id] : ids) {
            dns.push_back(dn);
        }
        return dns;
    }

    void expectAlarms(const IdsT& ids) const
    {
        for (int number = 1; number <= lastingAlarms; ++number) {
            const std::string dn = lastingDn(number);
            EXPECT_EQ(std::to_string(number), ids.count(dn) > 0 ? ids.at(dn) : "none") << dn;
        }
        const DnsT expected = expectedDns();
        const DnsT active = dnsOf(ids);
        EXPECT_THAT(difference(expected, active), IsEmpty()) << "missing";
        EXPECT_THAT(difference(active, expected), IsEmpty()) << "active, and should not be";
    }

    /// The alarm log of a long run is looked at in pieces.
    void checkLog()
    {
        const std::string file = files.path("run/log/FmAlarmLog.log");
        witness.expectLog(file);
        std::filesystem::remove(file);
        numbersSeen += witness.getNumberSeen();
        witness.forget();
    }

    void killAgainAndAgain(std::uint64_t most, int alarmType)
    {
        for (int number = 1; number <= publishers; ++number) {
            all.emplace_back(files.socket(), number, alarmType, seed);
        }
        raiseLastingAlarms();
        const auto begun = std::chrono::steady_clock::now();
        const std::chrono::seconds longest(fromEnvironment("ZORV_TEST_SECONDS", 86400));
        std::uint64_t kills = 0;
        while (kills < most && std::chrono::steady_clock::now() - begun < longest && !HasFailure()) {
            loadAndKill();
            ++kills;
            if (random() % 4 == 0) {
                killWhileItStarts();
                ++kills;
            }
            verify();
            ++kills;
            if (witness.getNumberSeen() > pieceOfLog) {
                checkLog();
            }
        }
        checkLog();
        std::size_t answered = 0;
        for (const Publisher& publisher : all) {
            answered += publisher.getNumberAnswered();
        }
        EXPECT_GT(answered, static_cast<std::size_t>(kills));
        std::cout << "ZORV_TEST_SEED=" << seed << " kills=" << kills << " notifications=" << answered
                  << " numbersSeen=" << numbersSeen << " lastNumber=" << witness.getLast() << std::endl;
    }

    NodeFiles files;
    const std::uint64_t seed = fromEnvironment("ZORV_TEST_SEED", 1);
    std::mt19937 random{static_cast<unsigned>(seed)};
    unsigned long longestLife = 60;  // milliseconds of load
    std::deque<Publisher> all;
    KillWitness witness;
    std::size_t numbersSeen = 0;
};

TEST_F(KillTest, nothingAcknowledgedIsMissingAndNumberingGoesOn)
{
    killAgainAndAgain(fromEnvironment("ZORV_TEST_KILLS", KILLS), typeWithSeverity);
}

/// Of a type whose severity the model prescribes, a raise that repeats one is ignored, also while a cease is pending.
TEST_F(KillTest, alarmsThatWaitInTheirFiltersAreNotLostEither)
{
    files.writeConfiguration(FM_LIBRARY, log, filters);
    longestLife = 1500;

    killAgainAndAgain(fromEnvironment("ZORV_TEST_FILTER_KILLS", FILTER_KILLS), typeWithoutSeverity);
}

/// Others are reported meanwhile, so that the last notification noted as handled is a later one.
TEST_F(KillTest, aRaiseInItsFilterIsActiveAfterTheRestart)
{
    files.writeConfiguration(FM_LIBRARY, log, "<transientRaiseAlarmFilterTime>4</transientRaiseAlarmFilterTime>");
    {
        RunningNode node(files);
        publish(node, {notification("raise", lastingDn(1), 1), notification("raise", lastingDn(2), 2, typeOfAlerts)});
        awaitInbox(node, "0");
        EXPECT_THAT(readIds(node), IsEmpty());
        node.kill();
    }
    const RunningNode node(files);
    node.settle();

    EXPECT_THAT(readIds(node), ElementsAre(Pair(lastingDn(1), "1")));
}

/// One that was reported late is the last one noted as handled, so that the clear behind it comes again.
TEST_F(KillTest, aClearThatComesAgainClearsNoOther)
{
    const std::string port = "ManagedElement=1,Port=";
    files.writeConfiguration(FM_LIBRARY, log, "<transientRaiseAlarmFilterTime>1</transientRaiseAlarmFilterTime>");
    {
        RunningNode node(files);
        publish(node, {notification("raise", port + "1", 1), notification("raise", port + "10", 2)});
        awaitInbox(node, "0");
        publish(node, {notification("raise", port + "2", 3), notification("clear", port + "1", 4)});
        while (dnsOf(readIds(node)) != DnsT{port + "10", port + "2"}) {
            keepBusy(node);
        }
        EXPECT_EQ("2", numberInInbox(node));
        node.kill();
    }
    const RunningNode node(files);
    node.settle();

    EXPECT_THAT(dnsOf(readIds(node)), ElementsAre(port + "10", port + "2"));
}

}  // namespace ZorvTest
