#include "SourceFixture.hpp"
#include "ingress/InboxKeeper.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SourceBoundsTest : public SourceFixture {
protected:
    static constexpr KeeperSettings quick{std::chrono::milliseconds(1), std::chrono::milliseconds(1),
                                          std::chrono::milliseconds(1)};

    static std::uint64_t noCommits() { return 0; }

    /// Lets the keeper look again that often.
    static void awaitLooks(const std::atomic<std::uint64_t>& looks, std::uint64_t number)
    {
        const std::uint64_t before = looks;
        while (looks < before + number) {
            std::this_thread::yield();
        }
    }

    bool awaitEmptyInbox()
    {
        for (int attempt = 0; attempt < 10000 && source.getNumberInInbox() > 0; ++attempt) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return source.getNumberInInbox() == 0;
    }

    FmNotificationSource source{router, {3}, nullptr, log.sink()};
};

// --- waiting

TEST_F(SourceBoundsTest, whatNobodyTakesWaitsUntilTheBoundIsReached)
{
    publish(source, {1, 2, 3});

    EXPECT_EQ("3 notifications wait for a component that takes them, and the node keeps 3; try again",
              refusalOf(source, {at(4)}));
    EXPECT_EQ(3U, source.getNumberWaiting());
    EXPECT_EQ(1U, source.getStatistics().busy);
    EXPECT_EQ(3U, source.getStatistics().accepted);

    subscribeFrom(consumer, "0");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3"));
    EXPECT_EQ(0U, source.getNumberWaiting());
}

TEST_F(SourceBoundsTest, aBatchThatDoesNotFitIsRefusedWhole)
{
    publish(source, {1});

    EXPECT_EQ("1 notifications wait for a component that takes them, and the node keeps 3; try again",
              refusalOf(source, {at(2), at(3), at(4)}));

    EXPECT_EQ(1U, source.getNumberInInbox());
    EXPECT_EQ("accepted", refusalOf(source, {at(2), at(3)}));
}

TEST_F(SourceBoundsTest, aHeldSourceSendsWhenItIsReleased)
{
    subscribe(consumer);
    source.hold();
    publish(source, {1, 2});

    EXPECT_THAT(consumer->events(router), IsEmpty());
    EXPECT_EQ(2U, source.getNumberWaiting());

    source.release();
    publish(source, {3});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3"));
    EXPECT_EQ(0U, source.getNumberWaiting());
}

TEST_F(SourceBoundsTest, whatASubscriberWasSentWhileHeldDoesNotComeAgainAtTheRelease)
{
    source.hold();
    publish(source, {1, 2});
    subscribeFrom(consumer, "2");

    source.release();

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=2"));
}

// --- what is handled

TEST_F(SourceBoundsTest, whatIsNotKnownToBeHandledMakesNoRoom)
{
    subscribe(consumer);
    publish(source, {1, 2, 3});
    consumer->events(router);

    EXPECT_EQ("3 notifications are not known to be handled yet, and the node keeps 3; try again",
              refusalOf(source, {at(4)}));

    source.noteHandled(source.getLastTaken());
    EXPECT_EQ(0U, source.getNumberInInbox());
    EXPECT_EQ("accepted", refusalOf(source, {at(4)}));
}

TEST_F(SourceBoundsTest, whatIsOnItsWayIsNotTakenNorWhatCameLater)
{
    const auto stalled = std::make_shared<StalledConsumer>();
    subscribe(consumer);
    publish(source, {1});
    consumer->events(router);
    subscribe(stalled);
    publish(source, {2, 3});

    EXPECT_EQ(1U, source.getLastTaken().number);

    stalled->letGo();
    consumer->events(router);
    EXPECT_EQ(3U, source.getLastTaken().number);
}

TEST_F(SourceBoundsTest, whatWaitsIsNotTaken)
{
    publish(source, {1});

    EXPECT_EQ(0U, source.getLastTaken().number);
}

// --- what alarm handling has at a time

class SourceWindowTest : public SourceFixture {
protected:
    void handleAll() { source.noteHandled(source.getLastTaken()); }

    FmNotificationSource source{router, {6, 8}, nullptr, log.sink()};  // in portions of two
};

TEST_F(SourceWindowTest, theInboxIsSentInPortions)
{
    subscribe(consumer);
    publish(source, {1, 2, 3, 4, 5});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2"));
    EXPECT_EQ(2U, source.getLastTaken().number);
    EXPECT_EQ(0U, source.getNumberWaiting());
    EXPECT_TRUE(source.hasMoreToSend());
    handleAll();
    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2"));
    source.sendPortion();
    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4"));
    publish(source, {6});
    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4"));
    source.sendPortion();
    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4", "Port=5", "Port=6"));
    EXPECT_FALSE(source.hasMoreToSend());
    handleAll();
    EXPECT_EQ(0U, source.getNumberInInbox());
}

class SourceWindowFullTest : public SourceFixture {
protected:
    void handleAll() { source.noteHandled(source.getLastTaken()); }

    FmNotificationSource source{router, {6, 2}, nullptr, log.sink()};  // in portions of one
};

TEST_F(SourceWindowFullTest, noMoreIsSentUntilSomethingIsHandled)
{
    subscribe(consumer);
    publish(source, {1, 2, 3, 4});
    source.sendPortion();
    source.sendPortion();
    source.sendPortion();

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2"));
    handleAll();
    source.sendPortion();
    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4"));
}

TEST_F(SourceWindowFullTest, moreMayBeSentWhenNothingIsSeenToBeHandled)
{
    subscribe(consumer);
    publish(source, {1, 2, 3, 4, 5});
    source.sendPortion();
    consumer->events(router);

    source.allowMore();
    source.sendPortion();
    source.sendPortion();
    source.sendPortion();

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4"));
    EXPECT_EQ(5U, source.getNumberInInbox());
}

TEST_F(SourceWindowFullTest, noMoreMayBeSentWhileThereIsSomethingOnItsWay)
{
    const auto stalled = std::make_shared<StalledConsumer>();
    subscribe(stalled);
    publish(source, {1, 2, 3});
    source.sendPortion();

    source.allowMore();
    source.sendPortion();

    EXPECT_EQ(0U, source.getLastTaken().number);
    stalled->letGo();
    router.waitUntilIdle(std::chrono::seconds(10));
    EXPECT_EQ(2U, source.getLastTaken().number);
}

TEST_F(SourceWindowFullTest, whatIsNeverSeenToBeHandledIsSentAllTheSame)
{
    subscribe(consumer);
    publish(source, {1, 2, 3, 4, 5});
    std::atomic<std::uint64_t> looks{0};

    const InboxKeeper keeper(
        source, {[&] { return ++looks; }, [] { return std::uint64_t{0}; }},
        {std::chrono::milliseconds(1), std::chrono::milliseconds(1), std::chrono::milliseconds(1)});
    for (int attempt = 0; attempt < 10000 && source.getLastTaken().number < 5; ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3", "Port=4", "Port=5"));
    EXPECT_EQ(5U, source.getNumberInInbox());
}

TEST_F(SourceWindowTest, aSubscriberThatComesBackGetsTheInboxBitByBit)
{
    publish(source, {1, 2, 3});
    subscribeFrom(consumer, "0");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2"));
    source.sendPortion();
    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1", "Port=2", "Port=3"));
}

TEST_F(SourceWindowTest, whoTakesNewOnesOnlyGetsNoneThatWaited)
{
    publish(source, {1});
    subscribe(consumer);
    publish(source, {2});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=2"));
}

TEST_F(SourceWindowTest, aFullInboxTellsThatItIsNotHandledYet)
{
    subscribe(consumer);
    publish(source, {1, 2, 3, 4, 5, 6});

    EXPECT_EQ("6 notifications are not known to be handled yet, and the node keeps 6; try again",
              refusalOf(source, {at(7)}));
}

// --- the end of the alarm handling

TEST_F(SourceBoundsTest, anOrderlyEndTrimsWhatWasTaken)
{
    const unsigned long id = subscribe(consumer);
    publish(source, {1});
    consumer->events(router);
    const FmNotificationSource::Taken taken = source.getLastTaken();
    router.unregisterConsumer(id);
    publish(source, {2});

    source.noteOrderlyEnd(taken);

    EXPECT_EQ(1U, source.getNumberInInbox());
    EXPECT_EQ(1U, source.getNumberWaiting());
}

TEST_F(SourceBoundsTest, anOrderlyEndOfAnotherComponentTrimsNothing)
{
    subscribe(consumer);
    publish(source, {1});
    consumer->events(router);

    source.noteOrderlyEnd(source.getLastTaken());

    EXPECT_EQ(1U, source.getNumberInInbox());
}

TEST_F(SourceBoundsTest, whatSomebodyHadTakenWhoLeftWithoutAnOrderlyEndWaitsForTheNext)
{
    const unsigned long id = subscribe(consumer);
    publish(source, {1, 2});
    consumer->events(router);
    const FmNotificationSource::Taken taken = source.getLastTaken();

    router.unregisterConsumer(id);
    source.noteHandled(taken);

    EXPECT_EQ(2U, source.getNumberWaiting());
    const auto next = newConsumer();
    subscribeFrom(next, "0");
    EXPECT_THAT(next->events(router), ElementsAre("Port=1", "Port=2"));
}

TEST_F(SourceBoundsTest, aPortionOfManyPiecesIsSentAndWhatIsLeftOfItIsForWhatComes)
{
    FmNotificationSource large{router, {10000, 1000}, nullptr, log.sink()};  // portions of 250
    subscribe(consumer);
    large.publish(std::vector<FmNotification>(600, at(1)));
    EXPECT_EQ(250U, consumer->events(router).size());

    large.sendPortion();
    EXPECT_EQ(500U, consumer->events(router).size());
    large.sendPortion();
    EXPECT_EQ(600U, consumer->events(router).size());
    large.publish(std::vector<FmNotification>(200, at(2)));
    EXPECT_EQ(750U, consumer->events(router).size());
}

// --- the keeper

TEST_F(SourceBoundsTest, whatWasTakenLeavesWhenTheServicesAreQuiet)
{
    subscribe(consumer);
    publish(source, {1, 2});
    consumer->events(router);

    const InboxKeeper keeper(source, {[] { return 7U; }, &noCommits}, quick);

    EXPECT_TRUE(awaitEmptyInbox());
}

TEST_F(SourceBoundsTest, nothingLeavesWhileTheServicesWork)
{
    subscribe(consumer);
    publish(source, {1, 2});
    consumer->events(router);
    std::atomic<std::uint64_t> looks{0};
    std::atomic<bool> works{true};

    const InboxKeeper keeper(source, {[&] { return works ? ++looks : looks.load(); }, &noCommits}, quick);
    awaitLooks(looks, 20);

    EXPECT_EQ(2U, source.getNumberInInbox());
    works = false;
    EXPECT_TRUE(awaitEmptyInbox());
}

TEST_F(SourceBoundsTest, whatIsOnItsWayStaysHoweverQuietTheServicesAre)
{
    const auto stalled = std::make_shared<StalledConsumer>();
    subscribe(stalled);
    publish(source, {1});
    std::atomic<std::uint64_t> looks{0};

    const InboxKeeper keeper(source, {[&] { return ++looks, 7U; }, &noCommits}, quick);
    awaitLooks(looks, 20);

    EXPECT_EQ(1U, source.getNumberInInbox());
    stalled->letGo();
    EXPECT_TRUE(awaitEmptyInbox());
}

TEST_F(SourceBoundsTest, whatWasTakenLeavesAtTheThirdCommitThoughTheServicesWork)
{
    subscribe(consumer);
    publish(source, {1, 2});
    consumer->events(router);
    std::atomic<std::uint64_t> looks{0};
    std::atomic<std::uint64_t> commits{7};

    const InboxKeeper keeper(source, {[&] { return ++looks; }, [&] { return commits.load(); }}, quick);
    awaitLooks(looks, 20);
    commits = 9;
    awaitLooks(looks, 20);

    EXPECT_EQ(2U, source.getNumberInInbox());
    commits = 10;
    EXPECT_TRUE(awaitEmptyInbox());
}

TEST_F(SourceBoundsTest, commitsOfAnEarlierLifeDoNotCount)
{
    const unsigned long id = subscribe(consumer);
    publish(source, {1});
    consumer->events(router);
    std::atomic<std::uint64_t> looks{0};
    std::atomic<std::uint64_t> commits{0};
    const InboxKeeper keeper(source, {[&] { return ++looks; }, [&] { return commits.load(); }}, quick);
    awaitLooks(looks, 20);
    commits = 2;

    router.unregisterConsumer(id);
    const auto next = newConsumer();
    subscribeFrom(next, "0");
    next->events(router);
    awaitLooks(looks, 20);
    commits = 3;
    awaitLooks(looks, 20);

    EXPECT_EQ(1U, source.getNumberInInbox());
    commits = 5;
    EXPECT_TRUE(awaitEmptyInbox());
}

TEST_F(SourceBoundsTest, anEmptyInboxIsNotLookedAt)
{
    std::atomic<std::uint64_t> looks{0};
    const InboxKeeper keeper(source, {[&] { return ++looks; }, &noCommits}, quick);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(0U, looks);

    subscribe(consumer);
    publish(source, {1});
    consumer->events(router);
    awaitLooks(looks, 20);
}

}  // namespace ZorvNode
