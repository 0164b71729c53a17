/// A node that is absent, slow, full, or gone in the middle: nothing is forgotten that has no answer.
#include "ClientTest.hpp"

#include <functional>
#include <string>

namespace ZorvClientTest {

using ::testing::ElementsAre;

struct RetryTest : ClientTest {
    std::vector<std::string> publicationNames()
    {
        const std::string field = "Publication-ID: ";
        std::vector<std::string> names;
        for (const std::string& head : node.heads()) {
            const std::size_t begin = head.find(field) + field.size();
            names.push_back(head.substr(begin, head.find('\r', begin) - begin));
        }
        return names;
    }
};

TEST_F(RetryTest, callsSucceedWithoutANodeAndArriveWhenItComes)
{
    EXPECT_EQ(raiseAll(1, 2), ZORV_CLIENT_OK);
    EXPECT_EQ(client().flush(5ms), ZORV_CLIENT_TIMEOUT);
    EXPECT_EQ(client().counters().queued, 2u);
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2)));
    EXPECT_EQ(client().counters().resent, 0u);
}

TEST_F(RetryTest, originalTimesAreKept)
{
    node.next(loseConnection());
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    ASSERT_EQ(node.bodies().size(), 2u);
    EXPECT_EQ(node.bodies()[0], node.bodies()[1]);
}

TEST_F(RetryTest, aLostConnectionSendsTheWholeBatchAgain)
{
    raiseAll(1, 3);
    node.next(loseConnection());
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2, 3), ElementsAre(1, 2, 3)));
    EXPECT_THAT(outcomes.all(), ElementsAre("1 sent  ", "2 sent  ", "3 sent  "));
    EXPECT_EQ(client().counters().resent, 3u);
}

TEST_F(RetryTest, anAnswerCutShortIsNoAnswer)
{
    node.next(raw("HTTP/1.1 200 OK\r\nContent-Length: 28\r\n\r\n{\"accepted\":1,\"rej"));
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(1)));
}

TEST_F(RetryTest, aNodeWithoutRoomIsAskedAgain)
{
    for (const int status : {503, 408, 429, 500}) {
        node.next(answer(status, "{\"error\":{\"reason\":\"busy\"}}"));
    }
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_EQ(node.batches().size(), 5u);
    EXPECT_THAT(outcomes.all(), ElementsAre("1 sent  "));
    EXPECT_EQ(client().counters().resent, 4u);
}

TEST_F(RetryTest, tooLargeABatchIsHalved)
{
    raiseAll(1, 5);
    node.next(answer(413, ""));
    node.next(answer(413, ""));
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2, 3, 4, 5), ElementsAre(1, 2), ElementsAre(1),
                                            ElementsAre(2, 3), ElementsAre(4, 5)));
    EXPECT_EQ(client().counters().sent, 5u);
}

TEST_F(RetryTest, oneThatIsTooLargeAloneIsRejected)
{
    node.next(answer(413, "{\"error\":{\"reason\":\"larger than 10 bytes\"}}"));
    node.start();
    raiseAll(1, 1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(outcomes.all(), ElementsAre("1 rejected  larger than 10 bytes"));
}

TEST_F(RetryTest, anAnswerBeforeTheWholeRequestWasReadCounts)
{
    // More than a socket's buffer holds: the node answers while the client still writes.
    const std::string text(ZORV_CLIENT_MAX_TEXT, 'x');
    ZorvClientNotificationT notification{};
    notification.dn = "Equipment=1";
    notification.severity = ZORV_CLIENT_MINOR;
    notification.additionalText = text.c_str();
    settings.batchLimit = 500;
    settings.batchBytes = std::size_t{100} << 20U;
    for (int i = 0; i < 500; ++i) {
        ASSERT_EQ(client().post(ZorvClient::Kind::raise, notification), ZORV_CLIENT_OK);
    }
    node.answerEarly(answer(413, ""));
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_EQ(node.batches().at(0).size(), 250u);
    EXPECT_EQ(client().counters().sent, 500u);
}

TEST_F(RetryTest, aNodeThatDoesNotAnswerInTimeIsAskedAgain)
{
    settings.answerTimeout = 20ms;
    node.next(hang());
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(1)));
}

TEST_F(RetryTest, aRequestThatGoesAgainIsTheSameUnderTheSameName)
{
    node.next(loseConnection());
    node.next(hang());
    node.start();
    raise(1);
    EXPECT_TRUE(node.awaitRequests(2));
    raise(2);
    raise(3);
    node.release();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(1), ElementsAre(1), ElementsAre(2, 3)));
    const std::vector<std::string> names = publicationNames();
    ASSERT_EQ(names.size(), 4u);
    EXPECT_THAT(names[0], ::testing::MatchesRegex("[0-9a-f]{32}/1"));
    EXPECT_EQ(names[1], names[0]);
    EXPECT_EQ(names[2], names[0]);
    EXPECT_EQ(names[3], names[0].substr(0, 33) + "2");
}

TEST_F(RetryTest, aRestartBetweenTwoCallsLosesNothing)
{
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);
    node.stop();
    raise(2);
    EXPECT_EQ(client().flush(5ms), ZORV_CLIENT_TIMEOUT);
    node.start();
    raise(3);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    // Whether the third goes with the second is a matter of moments.
    std::vector<std::uint32_t> all;
    for (const std::vector<std::uint32_t>& batch : node.batches()) {
        all.insert(all.end(), batch.begin(), batch.end());
    }
    EXPECT_THAT(all, ElementsAre(1, 2, 3));
}

TEST_F(RetryTest, aRestartDuringARequestLosesNothing)
{
    node.next(hang());
    node.start();
    raise(1);
    ASSERT_TRUE(node.awaitRequests(1));
    raise(2);
    node.stop();
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(1), ElementsAre(2)));
}

TEST_F(RetryTest, closeDoesNotWaitForTheNextTry)
{
    settings.shortestWait = 1h;
    settings.longestWait = 1h;
    node.next(answer(503, ""));
    node.start();
    raise(1);
    ASSERT_TRUE(node.awaitRequests(1));
    EXPECT_EQ(client().close(1ms), ZORV_CLIENT_TIMEOUT);

    EXPECT_THAT(outcomes.all(), ElementsAre("1 abandoned  "));
}

TEST_F(RetryTest, closeGivesUpWhatHasNoAnswerAndTellsIt)
{
    node.next(hang());
    node.start();
    raise(1);
    ASSERT_TRUE(node.awaitRequests(1));
    raise(2);
    EXPECT_EQ(client().close(1ms), ZORV_CLIENT_TIMEOUT);

    EXPECT_THAT(outcomes.all(), ElementsAre("1 abandoned  ", "2 abandoned  "));
}

TEST_F(RetryTest, aRaiseOutOfAnAbandonedOneIsRefused)
{
    std::vector<ZorvClientResultT> results;
    std::function<void()> callback = [&] { results.push_back(raise(2)); };
    settings.outcome = [](const ZorvClientOutcomeT*, void* context) { (*static_cast<decltype(callback)*>(context))(); };
    settings.callbackContext = &callback;
    raise(1);
    EXPECT_EQ(client().close(1ms), ZORV_CLIENT_TIMEOUT);

    EXPECT_THAT(results, ElementsAre(ZORV_CLIENT_QUEUE_FULL));
}

TEST_F(RetryTest, closeWaitsForTheAnswer)
{
    node.next(loseConnection());
    node.start();
    raise(1);
    EXPECT_EQ(client().close(longEnough), ZORV_CLIENT_OK);

    EXPECT_THAT(outcomes.all(), ElementsAre("1 sent  "));
}

TEST_F(RetryTest, clearsFindRoomWhereRaisesDoNot)
{
    settings.queueCapacity = 10;
    EXPECT_EQ(raiseAll(1, 9), ZORV_CLIENT_OK);
    EXPECT_EQ(raise(10), ZORV_CLIENT_QUEUE_FULL);
    EXPECT_EQ(clear(11), ZORV_CLIENT_OK);
    EXPECT_EQ(clear(12), ZORV_CLIENT_QUEUE_FULL);
    EXPECT_EQ(client().counters().dropped, 2u);
    EXPECT_EQ(client().counters().droppedClears, 1u);
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 11)));
}

}  // namespace ZorvClientTest
