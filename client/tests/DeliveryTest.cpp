/// A node that does its part: what it gets, in which order and batches, and what is told about it.
#include "ClientTest.hpp"

#include <algorithm>
#include <functional>
#include <string>
#include <thread>

namespace ZorvClientTest {

using ::testing::ElementsAre;

struct DeliveryTest : ClientTest {};

TEST_F(DeliveryTest, sendsOneNotificationAsABatchOfOne)
{
    node.start();
    raise(7);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(7)));
    EXPECT_THAT(outcomes.all(), ElementsAre("7 sent  "));
}

TEST_F(DeliveryTest, requestIsAPostOfJson)
{
    node.start();
    raise(7);
    flush();

    EXPECT_THAT(node.heads(),
                ElementsAre(::testing::MatchesRegex("POST /v1/notifications HTTP/1.1\r\nHost: localhost\r\n"
                                                    "Content-Type: application/json\r\nAccept: application/json\r\n"
                                                    "Publication-ID: [0-9a-f]{32}/1\r\nContent-Length: " +
                                                    std::to_string(node.bodies().at(0).size()) + "\r\n\r\n")));
}

TEST_F(DeliveryTest, whatIsQueuedDuringARequestGoesInOneBatch)
{
    node.next(answer(503, ""));
    node.start();
    settings.shortestWait = 20ms;
    raise(1);
    ASSERT_TRUE(node.awaitRequests(1));
    raiseAll(2, 5);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(1), ElementsAre(2, 3, 4, 5)));
}

TEST_F(DeliveryTest, aBatchHasItsLimitAndTheOrderIsKept)
{
    settings.batchLimit = 3;
    raiseAll(1, 8);
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2, 3), ElementsAre(4, 5, 6), ElementsAre(7, 8)));
}

TEST_F(DeliveryTest, aBatchHasItsLimitOfBytesToo)
{
    settings.batchBytes = 250;
    raiseAll(1, 3);
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2), ElementsAre(3)));
}

TEST_F(DeliveryTest, batchesUnderLoadShareAConnection)
{
    settings.batchLimit = 2;
    raiseAll(1, 8);
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_EQ(node.batches().size(), 4u);
    EXPECT_EQ(node.connectionCount(), 1u);
}

TEST_F(DeliveryTest, anAnswerThatEndsTheConnectionIsNoLoss)
{
    settings.batchLimit = 1;
    node.next(
        raw("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 28\r\n\r\n{\"accepted\":1,\"rejected\":[]}"));
    raiseAll(1, 2);
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(2)));
    EXPECT_EQ(client().counters().resent, 0u);
}

TEST_F(DeliveryTest, holdsNoConnectionWhileThereIsNothingToSend)
{
    node.start();
    raise(1);
    flush();
    EXPECT_TRUE(node.awaitNoConnection());
    raise(2);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_EQ(node.connectionCount(), 2u);
    EXPECT_EQ(client().counters().resent, 0u);
}

TEST_F(DeliveryTest, rejectedItemsAreToldWithFieldAndReason)
{
    raiseAll(1, 3);
    node.next(rejectItems(3, {1}));
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(outcomes.all(), ElementsAre("1 sent  ", "2 rejected raise.dn no such object", "3 sent  "));
    EXPECT_EQ(client().counters().sent, 2u);
    EXPECT_EQ(client().counters().rejected, 1u);
    EXPECT_EQ(client().counters().queued, 0u);
}

TEST_F(DeliveryTest, aBatchRejectedWholeIsNotSentAgain)
{
    raiseAll(1, 2);
    node.next(answer(403, "{\"error\":{\"reason\":\"not permitted to publish\"}}"));
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(outcomes.all(),
                ElementsAre("1 rejected  not permitted to publish", "2 rejected  not permitted to publish"));
    EXPECT_EQ(node.batches().size(), 1u);
}

TEST_F(DeliveryTest, outcomeCallbackMayRaise)
{
    std::function<void(const ZorvClientOutcomeT&)> callback = [this](const ZorvClientOutcomeT& outcome) {
        if (outcome.context == reinterpret_cast<void*>(1)) {
            raise(2);
        }
    };
    settings.outcome = [](const ZorvClientOutcomeT* outcome, void* context) {
        (*static_cast<decltype(callback)*>(context))(*outcome);
    };
    settings.callbackContext = &callback;
    node.start();
    raise(1);
    EXPECT_TRUE(node.awaitRequests(2));
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(2)));
}

TEST_F(DeliveryTest, flushAndCloseAreRefusedInTheOutcomeCallback)
{
    struct Results {
        ZorvClient::Client* client = nullptr;
        ZorvClientResultT flush = ZORV_CLIENT_OK;
        ZorvClientResultT close = ZORV_CLIENT_OK;
    } results;
    settings.outcome = [](const ZorvClientOutcomeT*, void* context) {
        auto& called = *static_cast<Results*>(context);
        called.flush = called.client->flush(longEnough);
        called.close = called.client->close(longEnough);
    };
    settings.callbackContext = &results;
    results.client = &client();
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_EQ(results.flush, ZORV_CLIENT_WRONG_THREAD);
    EXPECT_EQ(results.close, ZORV_CLIENT_WRONG_THREAD);
}

TEST_F(DeliveryTest, callsFromManyThreadsAllArrive)
{
    node.start();
    client();
    std::vector<std::thread> callers;
    for (std::uint32_t caller = 0; caller < 4; ++caller) {
        callers.emplace_back([this, caller] { raiseAll(caller * 100 + 1, caller * 100 + 100); });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    std::vector<std::vector<std::uint32_t>> arrived(4);
    for (const auto& batch : node.batches()) {
        for (const std::uint32_t minorType : batch) {
            arrived.at((minorType - 1) / 100).push_back(minorType);
        }
    }
    for (const auto& caller : arrived) {
        EXPECT_EQ(caller.size(), 100u);
        EXPECT_TRUE(std::is_sorted(caller.begin(), caller.end()));
    }
}

}  // namespace ZorvClientTest
