/// What others do to a node that runs: a component that never returns, a rain of signals, a clock that jumps. Alarms come
/// and go all the same.

#include <gmock/gmock.h>
#include <signal.h>

#include <filesystem>
#include <thread>

#include "NodeClient.hpp"
#include "RunningNode.hpp"
#include "json/Json.hpp"

namespace ZorvTest {

namespace {

using ::testing::ElementsAre;

constexpr std::chrono::milliseconds pause(10);
constexpr std::chrono::seconds patience(30);
constexpr int rain = 100;

std::string notification(const std::string& action, int port, std::uint64_t eventTime)
{
    return "{\"" + action + R"(":{"dn":"ManagedElement=1,Port=)" + std::to_string(port) +
           R"(","majorType":32473,"minorType":101,"eventTime":)" + std::to_string(eventTime) +
           (action == "raise" ? R"(,"severity":"MAJOR"}})" : "}}");
}

}  // namespace

class NeighbourTest : public ::testing::Test {
protected:
    /// @param more libraries, loaded behind the product.
    explicit NeighbourTest(const std::string& more = "")
    {
        files.writeConfiguration(FM_LIBRARY, more);
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
        node = std::make_unique<RunningNode>(files);
    }

    std::vector<std::string> readAlarms() const
    {
        ZorvInput::JsonDocumentT answer;
        ZorvInput::parseJson(node->request("GET", "/v1/alarms"), 16, answer);
        std::vector<std::string> names;
        for (const auto& alarm : answer["alarms"].GetArray()) {
            names.emplace_back(alarm["source"].GetString());
        }
        return names;
    }

    std::vector<std::string> awaitAlarms(std::size_t number) const
    {
        const auto latest = std::chrono::steady_clock::now() + patience;
        while (readAlarms().size() != number && std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(pause);
        }
        return readAlarms();
    }

    NodeFiles files;
    std::unique_ptr<RunningNode> node;
};

TEST_F(NeighbourTest, aRainOfSignalsDisturbsNobody)
{
    NodeClient client(files.socket());
    for (int drop = 0; drop < rain; ++drop) {
        for (const int number : {SIGHUP, SIGPIPE, SIGSTOP, SIGCONT, SIGCHLD, SIGURG, SIGWINCH}) {
            node->process().signal(number);
        }
        EXPECT_EQ(200, client.ask("POST", "/v1/notifications", notification("raise", 1000 + drop, 1)).status);
        if (drop > 0) {
            EXPECT_EQ(200, client.ask("POST", "/v1/notifications", notification("clear", 999 + drop, 2)).status);
        }
    }
    node->settle();

    EXPECT_THAT(readAlarms(), ElementsAre("ManagedElement=1,Port=" + std::to_string(999 + rain)));
    EXPECT_EQ(0, node->stop().exitCode);
}

/// The order of acceptance counts, whatever the applications' clocks say.
TEST_F(NeighbourTest, theApplicationsClocksMayJump)
{
    constexpr std::uint64_t now = 1700000000000000000;
    constexpr std::uint64_t latest = 18446744073709551615U;
    for (const std::uint64_t time : {now, latest, std::uint64_t{1}, now, latest, std::uint64_t{0}}) {
        node->request("POST", "/v1/notifications",
                      "[" + notification("raise", 1, time) + "," + notification("raise", 2, latest - time) + "," +
                          notification("clear", 1, time / 2) + "]");
        node->settle();
        EXPECT_THAT(readAlarms(), ElementsAre("ManagedElement=1,Port=2"));
    }
    node->kill();
    node = std::make_unique<RunningNode>(files);
    node->settle();

    EXPECT_THAT(readAlarms(), ElementsAre("ManagedElement=1,Port=2"));
}

class HangingNeighbourTest : public NeighbourTest {
protected:
    HangingNeighbourTest() : NeighbourTest("<library>" BAD_LIBRARIES "/StopHangs.so</library>") {}
};

/// While it is being stopped nothing is handed to components; what is published meanwhile waits for the next start.
TEST_F(HangingNeighbourTest, aComponentWhoseStopNeverReturnsKeepsNothingFromBeingAccepted)
{
    node->request("POST", "/v1/notifications", notification("raise", 1, 1));
    EXPECT_THAT(awaitAlarms(1), ElementsAre("ManagedElement=1,Port=1"));
    std::thread stopper([this] {
        try {
            NodeClient(files.socket()).ask("POST", "/v1/components/BadComponent/stop");
        } catch (const Poco::Exception&) {
            return;  // the node was killed
        }
    });
    std::this_thread::sleep_for(10 * pause);

    node->request("POST", "/v1/notifications", notification("raise", 2, 2));
    EXPECT_THAT(readAlarms(), ElementsAre("ManagedElement=1,Port=1"));
    node->kill();
    stopper.join();
    node = std::make_unique<RunningNode>(files);

    EXPECT_THAT(awaitAlarms(2), ElementsAre("ManagedElement=1,Port=1", "ManagedElement=1,Port=2"));
}

}  // namespace ZorvTest
