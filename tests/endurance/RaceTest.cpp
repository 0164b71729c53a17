/// Everything at once in one process, for the thread sanitizer to see: a node with its interface and the library in it,
/// while applications publish, management reads, changes, suppresses, reloads, stops and starts.
///
/// How long it races is settable, ZORV_TEST_RACE_SECONDS=60, how often the library is unloaded, ZORV_TEST_UNLOADS=1000,
/// and the course: ZORV_TEST_SEED.

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <iostream>
#include <random>
#include <thread>

#include "FromEnvironment.hpp"
#include "NodeClient.hpp"
#include "RacingPublisher.hpp"
#include "TemporaryDirectory.hpp"
#include "api/Api.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

namespace {

using ClockT = std::chrono::steady_clock;

constexpr int publishers = 3;
constexpr std::chrono::milliseconds pause(2);
constexpr std::chrono::milliseconds longestLife(50);
constexpr std::chrono::seconds patience(60);
const char* const fmObject = "ManagedElement=1,SystemFunctions=1,Fm=1";
const std::string components[] = {"ZorvFmComponent", "ZorvFmMoImplComponent"};

ZorvNode::NodeConfiguration makeConfiguration(const TemporaryDirectory& directory, const std::string& store)
{
    directory.write("node.xml", "<ZorvNode><library>" FM_LIBRARY "</library><model>" EXAMPLE "/alarm-model.xml</model>"
                                "<eventRouter><inboxBound>500</inboxBound></eventRouter><replicatedLists><store>" +
                                    store + "</store></replicatedLists><ZorvFmComponent/></ZorvNode>");
    ZorvNode::NodeConfiguration configuration = ZorvNode::readNodeConfiguration(directory.path("node.xml"));
    std::filesystem::create_directories(configuration.logDirectory);
    std::filesystem::create_directories(configuration.store.directory);
    return configuration;
}

}  // namespace

class RaceTest : public ::testing::Test {
protected:
    using WorkT = std::function<void(NodeClient&, std::mt19937_64&)>;

    /// Does the work again and again until the time is over; each time counts.
    void race(const std::string& name, const WorkT& work)
    {
        rounds.push_back(std::make_unique<Rounds>(name));
        threads.emplace_back([this, work, &count = *rounds.back(), own = seed + rounds.size()] {
            std::mt19937_64 random(own);
            NodeClient client(configuration.api.socket);
            while (ClockT::now() < end) {
                work(client, random);
                ++count.number;
            }
        });
    }

    /// Whatever is in its way, the node says so.
    static void ask(NodeClient& client, const std::string& method, const std::string& target,
                    const std::string& body = "")
    {
        const NodeAnswer answer = client.ask(method, target, body);
        EXPECT_TRUE(answer.status == 200 || answer.status == 409 || answer.status == 422 || answer.status == 503)
            << method << " " << target << ": " << answer.status << " " << answer.body;
    }

    static std::string setting(const std::string& dn, const std::string& attribute, const std::string& value)
    {
        return R"({"changes":[{"set":{"dn":")" + dn + R"(","attributes":{")" + attribute + "\":" + value + "}}}]}";
    }

    void raceReaders()
    {
        race("alarms", [](NodeClient& client, std::mt19937_64& random) {
            ask(client, "GET", "/v1/alarms?limit=" + std::to_string(1 + random() % 1000));
            ask(client, "GET", "/v1/summary");
        });
        race("objects", [](NodeClient& client, std::mt19937_64& random) {
            ask(client, "GET", "/v1/objects?depth=" + std::to_string(random() % 6));
            ask(client, "GET", "/v1/objects?depth=1&dn=" + std::string(fmObject));
        });
        race("state", [](NodeClient& client, std::mt19937_64&) {
            for (const char* target : {"node", "counters", "lists", "components", "levels", "health"}) {
                ask(client, "GET", std::string("/v1/") + target);
            }
        });
        race("logs and streams", [](NodeClient& client, std::mt19937_64&) {
            for (const char* target :
                 {"logs/system?lines=100", "logs/alarms?lines=100", "logs/publications",
                  "notifications?after=oldest&follow=false", "notifications?after=oldest&follow=false&version=2"}) {
                ask(client, "GET", std::string("/v1/") + target);
            }
        });
    }

    void raceManagement()
    {
        race("suppression", [](NodeClient& client, std::mt19937_64& random) {
            ask(client, "PUT", "/v1/suppression", random() % 2 == 0 ? R"({"on":true})" : R"({"on":false})");
            std::this_thread::sleep_for(pause);
        });
        race("changes", [](NodeClient& client, std::mt19937_64& random) {
            ask(client, "POST", "/v1/objects",
                setting(fmObject, "heartbeatInterval", std::to_string(1 + random() % 3)));
            ask(client, "POST", "/v1/objects",
                setting("ManagedElement=1", "externalId", "\"node " + std::to_string(random() % 10) + "\""));
            ask(client, "PUT", "/v1/levels",
                R"({"trace":{"FM":)" + std::to_string(random() % 9) + R"(},"log":"information"})");
        });
        race("models", [](NodeClient& client, std::mt19937_64&) {
            ask(client, "POST", "/v1/model/reload");
            std::this_thread::sleep_for(10 * pause);
        });
        race("stops and starts", [](NodeClient& client, std::mt19937_64& random) {
            const std::string path = "/v1/components/" + components[random() % 2];
            ask(client, "POST", path + "/stop", random() % 2 == 0 ? "" : R"({"reason":"fail-over"})");
            ask(client, "POST", path + "/start");
            std::this_thread::sleep_for(std::chrono::milliseconds(random() % 100));
        });
    }

    void join()
    {
        for (std::thread& thread : threads) {
            thread.join();
        }
        threads.clear();
    }

    /// With nobody else there, all that was acknowledged comes to pass.
    std::set<std::string> awaitAlarms(const std::set<std::string>& expected) const
    {
        NodeClient client(configuration.api.socket);
        ask(client, "PUT", "/v1/suppression", R"({"on":false})");
        const auto latest = ClockT::now() + patience;
        std::set<std::string> present;
        do {
            present.clear();
            ZorvInput::JsonDocumentT answer;
            ZorvInput::parseJson(client.ask("GET", "/v1/alarms?limit=10000").body, 16, answer);
            for (const auto& alarm : answer["alarms"].GetArray()) {
                present.insert(alarm["source"].GetString());
            }
            std::this_thread::sleep_for(pause);
        } while (present != expected && ClockT::now() < latest);
        return present;
    }

    struct Rounds {
        explicit Rounds(std::string work) : name(std::move(work)) {}

        const std::string name;
        std::atomic<std::uint64_t> number{0};
    };

    const std::uint64_t seed = fromEnvironment("ZORV_TEST_SEED", 1);
    const std::uint64_t seconds = fromEnvironment("ZORV_TEST_RACE_SECONDS", RACE_SECONDS);
    const TemporaryDirectory directory;
    const ZorvNode::NodeConfiguration configuration = makeConfiguration(directory, "sqlite");
    const ClockT::time_point end = ClockT::now() + std::chrono::seconds(seconds);
    std::vector<std::unique_ptr<Rounds>> rounds;
    std::vector<std::thread> threads;
};

TEST_F(RaceTest, everythingAtOnce)
{
    ZorvNode::Node node(configuration, ZorvNode::readModel(configuration.model));
    ZorvNode::Api api(node);
    node.start();
    api.start();
    std::vector<std::unique_ptr<RacingPublisher>> all;
    for (int number = 1; number <= publishers; ++number) {
        all.push_back(std::make_unique<RacingPublisher>(node, number));
        race("publications",
             [&publisher = *all.back()](NodeClient&, std::mt19937_64& random) { publisher.publish(random); });
    }
    raceReaders();
    raceManagement();

    join();

    std::set<std::string> expected;
    for (const auto& publisher : all) {
        publisher->addActiveTo(expected);
    }
    EXPECT_EQ(expected, awaitAlarms(expected));
    api.stop();
    node.stop();
    std::cout << "ZORV_TEST_SEED=" << seed << " seconds=" << seconds;
    for (const auto& round : rounds) {
        EXPECT_GT(round->number, 0U) << round->name;
        std::cout << ", " << round->name << " " << round->number;
    }
    std::cout << std::endl;
}

/// Applications publish, and notifications go northbound, until there is nobody any more who takes them.
TEST_F(RaceTest, theLibraryIsUnloadedWhileCallbacksAreOnTheirWay)
{
    const ZorvNode::NodeConfiguration inMemory = makeConfiguration(directory, "memory");
    const std::uint64_t unloads = fromEnvironment("ZORV_TEST_UNLOADS", UNLOADS);
    std::mt19937_64 random(seed);
    for (std::uint64_t unload = 0; unload < unloads; ++unload) {
        ZorvNode::Node node(inMemory, ZorvNode::readModel(inMemory.model));
        const ZorvNode::Api northbound(node);
        node.start();
        std::atomic<bool> ending{false};
        for (int number = 1; number <= publishers; ++number) {
            threads.emplace_back([&, number, own = random()] {
                RacingPublisher publisher(node, number);
                std::mt19937_64 course(own);
                while (!ending) {
                    publisher.publish(course);
                }
            });
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % longestLife.count()));
        node.stop();
        ending = true;
        join();
        EXPECT_EQ(std::string::npos, directory.read("run/log/SystemLog.log").find("stay in memory"));
    }
    std::cout << "ZORV_TEST_SEED=" << seed << " unloads=" << unloads << std::endl;
}

}  // namespace ZorvTest
