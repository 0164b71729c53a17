#include "services/eventrouter/EventRouter.hpp"

#include <gmock/gmock.h>

#include <future>

#include "LogRecorder.hpp"
#include "RecordingConsumer.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;

namespace {

class CountingProducer : public RouterProducer {
public:
    ZorvReturnT addFilter(unsigned long, const char*, YaltNameValuePair** given) override
    {
        filter = given;
        return ZORV_RETURN_OK;
    }
    ZorvReturnT removeFilter(unsigned long, const char*, YaltNameValuePair**) override { return ZORV_RETURN_OK; }
    ZorvReturnT clearAll() override { return ZORV_RETURN_OK; }
    ZorvReturnT doneWithValue(const char*, void*) override
    {
        ++handedBack;
        if (throwsWhenDone) {
            throw 7;
        }
        return ZORV_RETURN_OK;
    }

    YaltNameValuePair** filter = nullptr;
    bool throwsWhenDone = false;
    std::atomic<int> handedBack{0};
};

class CallingConsumer : public RouterConsumer {
public:
    explicit CallingConsumer(std::function<ZorvReturnT()> function) : call(std::move(function)) {}
    ZorvReturnT onEvent(unsigned long, const char*, YaltNameValuePair**, void*) override { return call(); }

private:
    const std::function<ZorvReturnT()> call;
};

}  // namespace

class EventRouterTest : public ::testing::Test {
protected:
    unsigned long consume(std::function<ZorvReturnT()> call)
    {
        unsigned long consumer = 0;
        router.registerConsumer(std::make_shared<CallingConsumer>(std::move(call)), consumer);
        router.registerProducer(producer, handle);
        router.addEventType(handle, "T");
        router.addSubscription(consumer, "T", nullptr);
        return consumer;
    }

    ZorvReturnT notify(unsigned long consumer)
    {
        return router.notify(handle, consumer, "T", producer->filter, &value);
    }

    int value = 0;
    std::uint32_t handle = 0;
    LogRecorder log;
    const std::shared_ptr<CountingProducer> producer = std::make_shared<CountingProducer>();
    EventRouter router{{2, 3}, log.sink()};
};

TEST_F(EventRouterTest, aThrowingConsumerIsContainedAndCounted)
{
    const unsigned long consumer = consume([]() -> ZorvReturnT { throw 7; });

    notify(consumer);
    router.waitUntilIdle(std::chrono::seconds(10));

    EXPECT_EQ(1U, router.getStatistics().threw);
    EXPECT_EQ(1, producer->handedBack);
}

TEST_F(EventRouterTest, aThrowingProducerIsContainedAndCounted)
{
    producer->throwsWhenDone = true;
    const unsigned long consumer = consume([] { return 0; });

    notify(consumer);
    router.waitUntilIdle(std::chrono::seconds(10));

    EXPECT_EQ(1U, router.getStatistics().threw);
}

TEST_F(EventRouterTest, aConsumersRefusalIsCounted)
{
    const unsigned long consumer = consume([] { return -1; });

    notify(consumer);
    router.waitUntilIdle(std::chrono::seconds(10));

    EXPECT_EQ(1U, router.getStatistics().refused);
}

TEST_F(EventRouterTest, anOverflowIsLoggedOncePerBurst)
{
    std::promise<void> entered;
    std::promise<void> door;
    auto opened = door.get_future().share();
    bool first = true;
    const auto consumer = consume([&] {
        if (std::exchange(first, false)) {
            entered.set_value();
            opened.wait();
        }
        return 0;
    });
    notify(consumer);
    entered.get_future().wait();
    notify(consumer);
    notify(consumer);

    EXPECT_EQ(-10, notify(consumer));
    EXPECT_EQ(-10, notify(consumer));

    EXPECT_EQ(2U, router.getStatistics().lost);
    EXPECT_THAT(log.lines(), ElementsAre("4 Event queue of consumer 1 is full (2), events are lost: T"));
    door.set_value();
    router.waitUntilIdle(std::chrono::seconds(10));
}

TEST_F(EventRouterTest, aConsumerThatLeavesDoesNotWaitForItsCallback)
{
    std::promise<void> entered;
    std::promise<void> door;
    const auto consumer = consume([&] {
        entered.set_value();
        door.get_future().wait();
        return 0;
    });
    notify(consumer);
    entered.get_future().wait();

    EXPECT_EQ(0, router.unregisterConsumer(consumer));

    EXPECT_FALSE(router.allCallbacksEnded());
    door.set_value();
    router.waitUntilIdle(std::chrono::seconds(10));
    while (!router.allCallbacksEnded()) {
        std::this_thread::yield();
    }
    EXPECT_EQ(1, producer->handedBack);
}

TEST_F(EventRouterTest, moreConsumersThanTheBoundAreRefused)
{
    unsigned long id = 0;
    for (int count = 0; count < 3; ++count) {
        EXPECT_EQ(0, router.registerConsumer(std::make_shared<CallingConsumer>([] { return 0; }), id));
    }

    EXPECT_EQ(-10, router.registerConsumer(std::make_shared<CallingConsumer>([] { return 0; }), id));

    EXPECT_EQ(3UL, id);
}

TEST_F(EventRouterTest, eachAcceptedValueIsHandedBackOnceWhileConsumersComeAndGo)
{
    std::atomic<bool> stop{false};
    consume([] { return 0; });
    std::thread comingAndGoing([&] {
        while (!stop) {
            unsigned long id = 0;
            router.registerConsumer(std::make_shared<CallingConsumer>([] { return 0; }), id);
            router.addSubscription(id, "T", nullptr);
            router.unregisterConsumer(id);
        }
    });
    int accepted = 0;
    for (int count = 0; count < 2000; ++count) {
        for (unsigned long id = 1; id < 20; ++id) {
            accepted += router.notify(handle, id, "T", nullptr, &value) == 0 ? 1 : 0;
        }
    }
    stop = true;
    comingAndGoing.join();
    router.waitUntilIdle(std::chrono::seconds(10));

    EXPECT_EQ(accepted, producer->handedBack);
    EXPECT_EQ(router.getStatistics().accepted, router.getStatistics().delivered + router.getStatistics().dropped);
}

}  // namespace ZorvNode
