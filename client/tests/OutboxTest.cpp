#include "Outbox.hpp"

#include <gtest/gtest.h>

#include <thread>

namespace ZorvClientTest {

using namespace std::chrono_literals;
using ZorvClient::Entry;
using ZorvClient::Outbox;

namespace {

bool pushRaise(Outbox& outbox, const std::string& json = "{}")
{
    return outbox.push(Entry{json, nullptr, false});
}

bool pushClear(Outbox& outbox)
{
    return outbox.push(Entry{"{}", nullptr, true});
}

}  // namespace

TEST(OutboxTest, theLastTenthIsForClears)
{
    Outbox outbox(100);
    for (int i = 0; i < 90; ++i) {
        ASSERT_TRUE(pushRaise(outbox));
    }
    EXPECT_FALSE(pushRaise(outbox));
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(pushClear(outbox));
    }
    EXPECT_FALSE(pushClear(outbox));
    EXPECT_EQ(outbox.counters().queued, 100u);
    EXPECT_EQ(outbox.counters().dropped, 2u);
    EXPECT_EQ(outbox.counters().droppedClears, 1u);
}

TEST(OutboxTest, aSmallQueueKeepsOnePlaceForAClear)
{
    Outbox outbox(2);
    EXPECT_TRUE(pushRaise(outbox));
    EXPECT_FALSE(pushRaise(outbox));
    EXPECT_TRUE(pushClear(outbox));
}

TEST(OutboxTest, aBatchStaysQueuedUntilItIsSettled)
{
    Outbox outbox(10);
    pushRaise(outbox, "1");
    pushRaise(outbox, "2");
    pushRaise(outbox, "3");
    std::string body;
    EXPECT_EQ(outbox.copyBatch(2, 1000, body), 2u);
    EXPECT_EQ(body, "[1,2]");
    EXPECT_EQ(outbox.counters().queued, 3u);

    const std::vector<Entry> settled = outbox.settle(2, 1);
    ASSERT_EQ(settled.size(), 2u);
    EXPECT_EQ(settled[0].json, "1");
    EXPECT_EQ(settled[1].json, "2");
    EXPECT_EQ(outbox.counters().queued, 1u);
    EXPECT_EQ(outbox.counters().sent, 1u);
    EXPECT_EQ(outbox.counters().rejected, 1u);
}

TEST(OutboxTest, aBatchHasSoManyBytesOrOneEntry)
{
    Outbox outbox(10);
    for (const char* json : {"12345", "6", "7", "89"}) {
        pushRaise(outbox, json);
    }
    std::string body;
    EXPECT_EQ(outbox.copyBatch(10, 2, body), 1u);
    EXPECT_EQ(body, "[12345]");
    EXPECT_EQ(outbox.copyBatch(10, 9, body), 2u);
    EXPECT_EQ(body, "[12345,6]");
    EXPECT_EQ(outbox.copyBatch(10, 100, body), 4u);
}

TEST(OutboxTest, takesNothingOnceItIsStopped)
{
    Outbox outbox(10);
    pushRaise(outbox, "1");
    outbox.stop();
    EXPECT_FALSE(pushRaise(outbox, "2"));
    EXPECT_EQ(outbox.counters().dropped, 1u);

    Entry entry;
    EXPECT_TRUE(outbox.abandonOne(entry));
    EXPECT_EQ(entry.json, "1");
    EXPECT_FALSE(outbox.abandonOne(entry));
}

TEST(OutboxTest, onlyWhatWasOnItsWayBeforeIsResent)
{
    Outbox outbox(10);
    for (int i = 0; i < 5; ++i) {
        pushRaise(outbox);
    }
    outbox.markTransmitted(2);
    EXPECT_EQ(outbox.counters().resent, 0u);
    outbox.markTransmitted(5);
    EXPECT_EQ(outbox.counters().resent, 2u);
    outbox.settle(4, 0);
    outbox.markTransmitted(1);
    EXPECT_EQ(outbox.counters().resent, 3u);
}

TEST(OutboxTest, flushWaitsUntilOutcomesAreTold)
{
    Outbox outbox(10);
    EXPECT_TRUE(outbox.flush(0ms));
    pushRaise(outbox);
    outbox.settle(1, 0);
    EXPECT_FALSE(outbox.flush(1ms));
    outbox.markTold(1);
    EXPECT_TRUE(outbox.flush(0ms));
}

TEST(OutboxTest, flushDoesNotWaitForWhatIsQueuedLater)
{
    Outbox outbox(10);
    pushRaise(outbox);
    std::thread flushing([&] { EXPECT_TRUE(outbox.flush(10s)); });
    // Woken by the flush, so the flush has begun.
    EXPECT_TRUE(outbox.awaitRetry(1h, 0ms));
    pushRaise(outbox);
    outbox.settle(1, 0);
    outbox.markTold(1);
    flushing.join();
}

TEST(OutboxTest, stopEndsAllWaiting)
{
    Outbox outbox(10);
    std::thread stopping([&] { outbox.stop(); });
    EXPECT_FALSE(outbox.awaitRetry(1h, 1h));
    EXPECT_FALSE(outbox.awaitEntry());
    stopping.join();
}

TEST(OutboxTest, aRetryWaitEndsByItself)
{
    Outbox outbox(10);
    EXPECT_TRUE(outbox.awaitRetry(1ms, 1h));
}

}  // namespace ZorvClientTest
