#include "FmTimeSource.hpp"

#include "FmTest.hpp"

namespace ZorvFm {
namespace {

class FmTimeSourceTest : public FmTest {
protected:
    FmMonotonicTimeSource source;
};

TEST_F(FmTimeSourceTest, countsTheWholeSecondsOfTheMonotonicClock)
{
    middleware.clock.turnOn(4711999999999, 1700000000000000000);

    EXPECT_EQ(4711, source.getTime());
}

TEST_F(FmTimeSourceTest, withoutAMonotonicClockItIsTheTimeOfDay)
{
    middleware.clock.turnOn(4711999999999, 1700000000999999999);
    middleware.clock.fail(CLOCK_MONOTONIC);

    EXPECT_EQ(1700000000, source.getTime());
}

}  // namespace
}  // namespace ZorvFm
