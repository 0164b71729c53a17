/// Applications on a node that is killed and started again: what was acknowledged is known for good.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "ClientNode.hpp"
#include "zorv_client.h"

namespace ZorvTest {

using ::testing::IsEmpty;

namespace {

constexpr std::uint32_t majorType = 32473;
constexpr std::uint32_t lossOfSignal = 101;
constexpr std::uint32_t longEnough = 30000;

std::string portName(std::size_t number)
{
    // Of the same length: a clear takes the name of an absent alarm for a pattern.
    return "ManagedElement=1,Port=" + std::to_string(100000 + number);
}

/// Those that the others do not have.
std::vector<std::string> without(const std::multiset<std::string>& names, const std::multiset<std::string>& others)
{
    std::vector<std::string> left;
    std::set_difference(names.begin(), names.end(), others.begin(), others.end(), std::back_inserter(left));
    return left;
}

/// What the client has told so far.
struct Outcomes {
    static void count(const ZorvClientOutcomeT* outcome, void* self)
    {
        ++static_cast<Outcomes*>(self)->counts.at(static_cast<std::size_t>(outcome->kind));
    }

    std::array<std::atomic<std::size_t>, 3> counts{};
};

}  // namespace

class ClientRestartTest : public ::testing::Test {
protected:
    ClientRestartTest()
    {
        const std::string path = node.socketPath();
        const ZorvClientOptionsT options{path.c_str(), 100000, 0, &Outcomes::count, &outcomes};
        EXPECT_EQ(ZORV_CLIENT_OK, zorvClientOpen(&options, &client));
    }
    ~ClientRestartTest() override { zorvClientClose(client, 0); }

    void raise(std::size_t port) { post(port, &zorvClientRaise); }
    void clear(std::size_t port) { post(port, &zorvClientClear); }

    /// Raises the ports from first on until it is told to end, and clears every third one again.
    /// @return the ports that are still raised.
    std::set<std::size_t> raiseUntilEnd(std::size_t first)
    {
        std::set<std::size_t> raised;
        for (std::size_t port = first; !end; ++port) {
            raise(port);
            raised.insert(port);
            if (port % 3 == 0) {
                clear(port);
                raised.erase(port);
            }
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
        return raised;
    }

    /// Waits until the node has answered for so many more. False when that takes too long.
    bool awaitProgress(std::size_t more) const
    {
        const std::size_t target = outcomes.counts[ZORV_CLIENT_SENT] + more;
        const auto latest = std::chrono::steady_clock::now() + std::chrono::milliseconds(longEnough);
        while (outcomes.counts[ZORV_CLIENT_SENT] < target && std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return outcomes.counts[ZORV_CLIENT_SENT] >= target;
    }

    ClientNode node;
    Outcomes outcomes;
    ZorvClientT* client = nullptr;
    std::atomic<bool> end{false};

private:
    template <class FunctionT>
    void post(std::size_t port, FunctionT function)
    {
        const std::string dn = portName(port);
        ZorvClientNotificationT notification{};
        notification.dn = dn.c_str();
        notification.majorType = majorType;
        notification.minorType = lossOfSignal;
        notification.severity = ZORV_CLIENT_MAJOR;
        EXPECT_EQ(ZORV_CLIENT_OK, function(client, &notification));
    }
};

TEST_F(ClientRestartTest, callsBetweenTwoLivesOfTheNodeAreNotLost)
{
    raise(1);
    node.start();
    EXPECT_EQ(ZORV_CLIENT_OK, zorvClientFlush(client, longEnough));
    node.kill();
    raise(2);
    node.start();
    raise(3);
    EXPECT_EQ(ZORV_CLIENT_OK, zorvClientFlush(client, longEnough));

    EXPECT_THAT(node.awaitAlarms(3), ::testing::ElementsAre(portName(1), portName(2), portName(3)));
}

TEST_F(ClientRestartTest, whatSeveralThreadsReportOutlivesAKilledNode)
{
    constexpr std::size_t threadCount = 4;
    constexpr std::size_t portsOfAThread = 100000;
    std::array<std::set<std::size_t>, threadCount> raised;
    std::vector<std::thread> threads;
    node.start();
    for (std::size_t index = 0; index < threadCount; ++index) {
        threads.emplace_back([this, index, &raised] { raised[index] = raiseUntilEnd(index * portsOfAThread); });
    }
    bool goesOn = true;
    for (int kills = 0; kills < 5 && goesOn; ++kills) {
        goesOn = awaitProgress(200);
        node.kill();
        node.start();
    }
    EXPECT_TRUE(goesOn && awaitProgress(1));
    end = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(ZORV_CLIENT_OK, zorvClientFlush(client, longEnough));
    EXPECT_EQ(0u, outcomes.counts[ZORV_CLIENT_REJECTED]);

    std::multiset<std::string> expected;
    for (const std::set<std::size_t>& ports : raised) {
        for (const std::size_t port : ports) {
            expected.insert(portName(port));
        }
    }
    const std::multiset<std::string> active = node.awaitAlarms(expected.size());
    EXPECT_THAT(without(expected, active), IsEmpty()) << "missing";
    EXPECT_THAT(without(active, expected), IsEmpty()) << "too many";
}

}  // namespace ZorvTest
