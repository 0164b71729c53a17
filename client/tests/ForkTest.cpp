/// Children go on with an empty queue; what the parent has queued is sent by the parent, once.
#include "ClientTest.hpp"

#include <pthread.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <thread>

// A child that starts a thread is what is tested here; the sanitizer wants to be told that this is meant.
extern "C" const char* __tsan_default_options()
{
    return "die_after_fork=0";
}

namespace ZorvClientTest {

using ::testing::ElementsAre;

struct ForkTest : ClientTest {
    static Step answerAfterRelease()
    {
        Step step = answer(200, "{\"accepted\":1,\"rejected\":[]}");
        step.hang = true;
        return step;
    }

    /// A thread of the child on the stack of one of the parent's would have the same identity: the thread sanitizer,
    /// which does not know that the others are gone, takes it for a mistake.
    static void useOtherStacks()
    {
        pthread_attr_t attributes;
        ::pthread_attr_init(&attributes);
        ::pthread_attr_setstacksize(&attributes, std::size_t{32} << 20U);
        ::pthread_setattr_default_np(&attributes);
        ::pthread_attr_destroy(&attributes);
    }

    /// Client's ends of connections to the path that this process holds.
    static int connectionsTo(const std::string& path)
    {
        int count = 0;
        for (int descriptor = 0; descriptor < 1024; ++descriptor) {
            sockaddr_un peer{};
            socklen_t length = sizeof(peer);
            const bool isSocket = ::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &length) == 0;
            count += isSocket && path == peer.sun_path ? 1 : 0;
        }
        return count;
    }

    /// Runs the action in a child. True when it says so and the child ends well.
    template <class ActionT>
    static bool inChild(ActionT action)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            useOtherStacks();
            ::_exit(action() ? 0 : 1);
        }
        int status = 0;
        return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
};

TEST_F(ForkTest, whatIsQueuedStaysWithTheParent)
{
    raiseAll(1, 2);
    EXPECT_TRUE(inChild([this] {
        return client().counters().queued == 0 && client().flush(0ms) == ZORV_CLIENT_OK &&
               client().close(0ms) == ZORV_CLIENT_OK;
    }));
    node.start();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1, 2)));
}

TEST_F(ForkTest, childSendsWhatItRaises)
{
    node.start();
    raise(1);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);
    EXPECT_TRUE(inChild(
        [this] { return raise(2) == ZORV_CLIENT_OK && flush() == ZORV_CLIENT_OK && client().counters().sent == 1; }));

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(2)));
    EXPECT_EQ(client().counters().sent, 1u);
}

TEST_F(ForkTest, parentsRequestOnItsWayIsNotDisturbed)
{
    node.next(answerAfterRelease());
    node.start();
    raise(1);
    ASSERT_TRUE(node.awaitRequests(1));
    EXPECT_TRUE(inChild([this] {
        return raise(2) == ZORV_CLIENT_OK && flush() == ZORV_CLIENT_OK && client().close(0ms) == ZORV_CLIENT_OK;
    }));
    node.release();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    EXPECT_THAT(node.batches(), ElementsAre(ElementsAre(1), ElementsAre(2)));
    EXPECT_EQ(client().counters().resent, 0u);
}

TEST_F(ForkTest, childLetsGoOfTheParentsConnection)
{
    node.next(answerAfterRelease());
    node.start();
    raise(1);
    ASSERT_TRUE(node.awaitRequests(1));
    EXPECT_EQ(connectionsTo(node.path()), 1);
    EXPECT_TRUE(inChild([this] { return connectionsTo(node.path()) == 0; }));
    node.release();
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);
}

TEST_F(ForkTest, childOfAChildHasAnEmptyQueueToo)
{
    raise(1);
    EXPECT_TRUE(inChild([this] {
        return raise(2) == ZORV_CLIENT_OK && inChild([this] { return client().counters().queued == 0; }) &&
               client().counters().queued == 1;
    }));
    EXPECT_EQ(client().counters().queued, 1u);
}

TEST_F(ForkTest, forksWhileThreadsCall)
{
    settings.outcome = nullptr;  // what it locks a fork may find locked
    node.start();
    client();
    std::thread caller([this] { raiseAll(1, 500); });
    bool allWell = true;
    for (int i = 0; i < 20; ++i) {
        allWell =
            inChild([this] {
                return client().counters().queued == 0 && raise(1000) == ZORV_CLIENT_OK && flush() == ZORV_CLIENT_OK;
            }) &&
            allWell;
    }
    caller.join();
    EXPECT_TRUE(allWell);
    EXPECT_EQ(flush(), ZORV_CLIENT_OK);

    std::vector<std::uint32_t> fromParent;
    for (const auto& batch : node.batches()) {
        std::copy_if(batch.begin(), batch.end(), std::back_inserter(fromParent),
                     [](std::uint32_t minorType) { return minorType != 1000; });
    }
    EXPECT_EQ(fromParent.size(), 500u);
    EXPECT_TRUE(std::is_sorted(fromParent.begin(), fromParent.end()));
}

}  // namespace ZorvClientTest
