#include <iostream>
#include <random>

#include "FmTest.hpp"
#include "FromEnvironment.hpp"
#include "HistoryPlayer.hpp"
#include "TimeZone.hpp"

namespace ZorvFm {
namespace {

using ZorvTest::fromEnvironment;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

constexpr std::uint64_t usualHistories = isSanitized ? 1000 : 10000;

class RandomHistoryTest : public FmTest {
protected:
    const TimeZone utc{"UTC0"};
    HistoryPlayer player{middleware};
};

/// A history that differs is played again with ZORV_TEST_SEED=<its seed> ZORV_TEST_HISTORIES=1.
TEST_F(RandomHistoryTest, theHandlerDoesWhatTheReferenceModelDoes)
{
    const std::uint64_t seed = fromEnvironment("ZORV_TEST_SEED", std::random_device{}());
    const std::uint64_t histories = fromEnvironment("ZORV_TEST_HISTORIES", usualHistories);
    std::cout << "ZORV_TEST_SEED=" << seed << " ZORV_TEST_HISTORIES=" << histories << std::endl;

    for (std::uint64_t i = 0; i < histories; ++i) {
        const Reference::History history = Reference::makeHistory(seed + i);
        if (player.play(history)) {
            const Reference::History shrunk = player.shrink(history);
            FAIL() << "ZORV_TEST_SEED=" << seed + i << " ZORV_TEST_HISTORIES=1\n"
                   << player.play(shrunk).value_or("It differs no more.\n") << toText(shrunk);
        }
    }
}

/// What the test above prints of a difference is pasted here to play it again.
TEST_F(RandomHistoryTest, aHistoryThatIsWrittenDown)
{
    using namespace Reference;
    const History history{{10000000000, 0, 0, 60000000000, 2, true, "node <7>"},
                          {{1, 0, true, 2, "Link failure", 14, 4}, {1, 1, false, 10, "Login failed", 1, std::nullopt}},
                          {{"ManagedElement=1,Port=12", 1, 0, 4, "down", 5, 3}},
                          {
                              Suppress{1},
                              Send{{4, "ManagedElement=1,Port=1", 1, 0, 3, 1700000000000000000, "down", {{"a", "1"}}}},
                              Suppress{0},
                              Send{{4, "Port=[0-9]", 1, 0, 0, 1700000000500000000, "up", {}}},
                              PassTime{500000000},
                              Tick{},
                              Send{{2, "ManagedElement=1,Port=1", 1, 0, 5, 1700000001000000000, "down", {}}},
                              Send{{1, "ManagedElement=1,Port=1", 1, 0, 0, 0, "up", {}}},
                              Fail{Operation::REPLACE, -1},
                              Restart{false},
                              PassTime{10000000000},
                              Tick{},
                              ChangeModel{{{1, 1, true, 10, "Login failed", 1, std::nullopt}}},
                              Send{{4, "", 1, 1, 0, 0, "user=admin", {}}},
                              Fail{Operation::COMMIT, -10},
                              SaveSummary{},
                              SaveSummary{},
                          }};

    EXPECT_EQ(std::nullopt, player.play(history));
}

}  // namespace
}  // namespace ZorvFm
