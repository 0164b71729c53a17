#include <cstdlib>
#include <iostream>
#include <random>

#include "FmTest.hpp"
#include "HistoryPlayer.hpp"
#include "TimeZone.hpp"

namespace ZorvFm {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::uint64_t usualHistories = 1000;
#else
constexpr std::uint64_t usualHistories = 10000;
#endif

std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise)
{
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::stoull(value);
}

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
                   << *player.play(shrunk) << toText(shrunk);
        }
    }
}

}  // namespace
}  // namespace ZorvFm
