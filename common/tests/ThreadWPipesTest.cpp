#include "ThreadWPipes.hpp"

#include <Poco/Runnable.h>
#include <Poco/Thread.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/select.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ZorvException.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace Zorv {
namespace {

/// A message that counts how many of its kind live.
class Counted : public PipeMessage {
public:
    explicit Counted(MessageTypeT number) : PipeMessage(number) { ++alive; }
    ~Counted() override { --alive; }

    static std::atomic<int> alive;
};

std::atomic<int> Counted::alive{0};

/// Runs a function on a thread to its end.
void runOn(Poco::Thread& thread, const std::function<void()>& function)
{
    class Body : public Poco::Runnable {
    public:
        explicit Body(const std::function<void()>& theFunction) : bodyFunction(theFunction) {}
        void run() override { bodyFunction(); }

    private:
        const std::function<void()>& bodyFunction;
    } body(function);
    thread.start(body);
    thread.join();
}

class ThreadWPipesTest : public testing::Test {
protected:
    ~ThreadWPipesTest() override
    {
        pipes.reset();
        EXPECT_EQ(0, Counted::alive);
    }

    void push(MessageTypeT type) { pipes->pushToInput(new Counted(type)); }

    /// Takes all messages; their types in order.
    std::vector<MessageTypeT> pop()
    {
        std::vector<MessageTypeT> types;
        for (const PipeMessage* message : pipes->popFromInput()) {
            types.push_back(message->getType());
            delete message;
        }
        return types;
    }

    bool isReadable(int timeoutMilliseconds = 0) const
    {
        pollfd waiting{pipes->getInputReadFD(), POLLIN, 0};
        return poll(&waiting, 1, timeoutMilliseconds) == 1;
    }

    int bytesInThePipe() const
    {
        int bytes = 0;
        EXPECT_EQ(0, ioctl(pipes->getInputReadFD(), FIONREAD, &bytes));
        return bytes;
    }

    Poco::Thread thread;
    std::unique_ptr<ThreadWPipes> pipes = std::make_unique<ThreadWPipes>(thread);
};

TEST_F(ThreadWPipesTest, isEmptyAtFirst)
{
    EXPECT_FALSE(isReadable());
    EXPECT_THAT(pop(), IsEmpty());
}

TEST_F(ThreadWPipesTest, popGivesAllMessagesInTheOrderOfArrival)
{
    push(8);
    push(16);
    push(5);

    EXPECT_THAT(pop(), ElementsAre(8, 16, 5));
    EXPECT_THAT(pop(), IsEmpty());
}

TEST_F(ThreadWPipesTest, theDescriptorIsReadableWhileMessagesArePending)
{
    push(1);
    EXPECT_TRUE(isReadable());
    push(2);
    EXPECT_TRUE(isReadable());

    pop();
    EXPECT_FALSE(isReadable());

    push(3);
    EXPECT_TRUE(isReadable());
}

TEST_F(ThreadWPipesTest, onlyTheFirstMessageOfABatchSignals)
{
    push(1);
    push(2);
    push(3);
    EXPECT_EQ(1, bytesInThePipe());

    pop();
    EXPECT_EQ(0, bytesInThePipe());
}

TEST_F(ThreadWPipesTest, aStalledWorkerNeverBlocksThosePushing)
{
    constexpr int messages = 1000000;
    for (int i = 0; i < messages; ++i) {
        push(i);
    }

    EXPECT_EQ(1, bytesInThePipe());
    const std::vector<MessageTypeT> popped = pop();
    ASSERT_EQ(static_cast<size_t>(messages), popped.size());
    EXPECT_TRUE(std::is_sorted(popped.begin(), popped.end()));
}

TEST_F(ThreadWPipesTest, messagesOfManyThreadsArriveOnceAndInTheOrderOfEachThread)
{
    constexpr int threadCount = 4;
    constexpr int messagesOfEach = 5000;
    std::vector<std::thread> pushers;
    for (int pusher = 0; pusher < threadCount; ++pusher) {
        pushers.emplace_back([this, pusher] {
            for (int i = 0; i < messagesOfEach; ++i) {
                push(pusher * messagesOfEach + i);
            }
        });
    }

    std::vector<int> nextOf(threadCount, 0);
    int received = 0;
    while (received < threadCount * messagesOfEach && isReadable(10000)) {
        for (const MessageTypeT type : pop()) {
            EXPECT_EQ(nextOf[static_cast<size_t>(type / messagesOfEach)]++, type % messagesOfEach);
            ++received;
        }
    }
    for (std::thread& pusher : pushers) {
        pusher.join();
    }

    EXPECT_EQ(threadCount * messagesOfEach, received);
    EXPECT_THAT(pop(), IsEmpty());
    EXPECT_FALSE(isReadable());
}

TEST_F(ThreadWPipesTest, aWaitingWorkerIsWokenByAPush)
{
    std::thread pusher([this] { push(7); });

    EXPECT_TRUE(isReadable(10000));
    pusher.join();
    EXPECT_THAT(pop(), ElementsAre(7));
}

TEST_F(ThreadWPipesTest, messagesLeftInTheQueueAreDeletedWithIt)
{
    push(1);
    push(2);
    EXPECT_EQ(2, Counted::alive);

    pipes.reset();

    EXPECT_EQ(0, Counted::alive);
}

TEST_F(ThreadWPipesTest, messagesLeftBehindWaitForTheNextRunOfTheThread)
{
    std::vector<MessageTypeT> popped;
    runOn(thread, [] {});
    push(4);
    runOn(thread, [&] { popped = pop(); });

    EXPECT_THAT(popped, ElementsAre(4));
}

TEST_F(ThreadWPipesTest, theThreadFindsItsOwnObject)
{
    Poco::Thread other;
    ThreadWPipes* foundByOwn = nullptr;
    ThreadWPipes* foundByOther = pipes.get();
    runOn(thread, [&] { foundByOwn = ThreadWPipes::current(); });
    runOn(other, [&] { foundByOther = ThreadWPipes::current(); });

    EXPECT_EQ(pipes.get(), foundByOwn);
    EXPECT_EQ(nullptr, foundByOther);
    EXPECT_EQ(nullptr, ThreadWPipes::current());
}

TEST_F(ThreadWPipesTest, theObjectIsNotFoundAfterItsEnd)
{
    ThreadWPipes* found = pipes.get();
    pipes.reset();
    runOn(thread, [&] { found = ThreadWPipes::current(); });

    EXPECT_EQ(nullptr, found);
}

TEST_F(ThreadWPipesTest, theDescriptorsAreClosedWithTheObject)
{
    const int descriptor = pipes->getInputReadFD();
    EXPECT_NE(-1, fcntl(descriptor, F_GETFD));

    pipes.reset();

    EXPECT_EQ(-1, fcntl(descriptor, F_GETFD));
}

TEST_F(ThreadWPipesTest, theDescriptorIsNotInherited)
{
    EXPECT_EQ(FD_CLOEXEC, fcntl(pipes->getInputReadFD(), F_GETFD) & FD_CLOEXEC);
}

// --- When the system has no descriptors left

/// Opens descriptors until all below a number are taken.
class DescriptorHoard {
public:
    explicit DescriptorHoard(int upTo)
    {
        for (int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC); descriptor >= 0;
             descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC)) {
            descriptors.push_back(descriptor);
            if (descriptor >= upTo) {
                return;
            }
        }
    }

    ~DescriptorHoard()
    {
        for (const int descriptor : descriptors) {
            close(descriptor);
        }
    }

    DescriptorHoard(const DescriptorHoard&) = delete;
    DescriptorHoard& operator=(const DescriptorHoard&) = delete;

private:
    std::vector<int> descriptors;
};

/// Sets the limit of open descriptors for its scope.
class DescriptorLimit {
public:
    explicit DescriptorLimit(rlim_t limit)
    {
        getrlimit(RLIMIT_NOFILE, &before);
        const rlimit changed{limit, before.rlim_max};
        EXPECT_EQ(0, setrlimit(RLIMIT_NOFILE, &changed));
    }

    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &before); }

    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit before{};
};

std::string constructionFailure()
{
    const Poco::Thread thread;
    try {
        const ThreadWPipes pipes(thread);
    } catch (const ZorvException& e) {
        return e.what();
    }
    return "";
}

TEST(ThreadWPipesFailureTest, noDescriptorLeft)
{
    // The sanitizer that checks object types needs a descriptor of its own when it first meets a class.
    EXPECT_STREQ("met", Zorv::ZorvException("%s", "met").what());
    const DescriptorLimit limit(64);
    const DescriptorHoard hoard(64);

    EXPECT_EQ("Could not create the input pipe: Too many open files", constructionFailure());
}

TEST(ThreadWPipesFailureTest, aDescriptorThatSelectCannotTake)
{
    const DescriptorLimit limit(FD_SETSIZE + 64);
    const DescriptorHoard hoard(FD_SETSIZE - 1);
    const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(next);

    EXPECT_EQ("Could not create the input pipe: descriptor " + std::to_string(next) + " is beyond the reach of select",
              constructionFailure());
    const int afterwards = open("/dev/null", O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(next, afterwards);
    close(afterwards);
}

}  // namespace
}  // namespace Zorv
