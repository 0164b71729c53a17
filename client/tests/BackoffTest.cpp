#include "Backoff.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ZorvClientTest {

using namespace std::chrono_literals;
using ZorvClient::Backoff;

TEST(BackoffTest, doublesUpToItsBound)
{
    Backoff backoff(50ms, 5s);
    std::vector<Backoff::DurationT> waits;
    for (int i = 0; i < 9; ++i) {
        waits.push_back(backoff.next());
    }
    EXPECT_THAT(waits, ::testing::ElementsAre(50ms, 100ms, 200ms, 400ms, 800ms, 1600ms, 3200ms, 5000ms, 5000ms));
}

TEST(BackoffTest, beginsAgainAfterAReset)
{
    Backoff backoff(50ms, 5s);
    backoff.next();
    backoff.next();
    backoff.reset();
    EXPECT_EQ(backoff.next(), 50ms);
}

}  // namespace ZorvClientTest
