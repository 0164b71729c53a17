#include "FakeEventRouter.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFakes {
namespace {

constexpr const char* eventType = "Type_1";

/// What producer and consumer callbacks were told.
std::vector<std::string> told;

int32_t addFilterResult = 0;

int32_t addFilter(unsigned long consumerId, const char* type, YaltNameValuePair** filter)
{
    told.push_back("add " + std::to_string(consumerId) + " " + type + " " + EventFilter::toString(filter));
    return addFilterResult;
}

int32_t removeFilter(unsigned long consumerId, const char* type, YaltNameValuePair** filter)
{
    told.push_back("remove " + std::to_string(consumerId) + " " + type + " " + EventFilter::toString(filter));
    return 0;
}

int32_t clearAll()
{
    told.emplace_back("clear");
    return 0;
}

int32_t done(const char* type, void* value)
{
    told.push_back("done " + std::string(type) + " " + static_cast<const char*>(value));
    return 0;
}

int32_t receive(unsigned long consumerId, const char* type, YaltNameValuePair** filter, void* value)
{
    told.push_back("event " + std::to_string(consumerId) + " " + type + " " + EventFilter::toString(filter) + " " +
                   static_cast<const char*>(value));
    return 7;
}

class FakeEventRouterTest : public testing::Test {
protected:
    FakeEventRouterTest()
    {
        told.clear();
        addFilterResult = 0;
        router.setRenderer(eventType, [](const void* shown) { return std::string(static_cast<const char*>(shown)); });
    }

    uint32_t produce()
    {
        uint32_t handle = 0;
        EXPECT_EQ(0, spi.registerProducer(&producer, &handle));
        EXPECT_EQ(0, spi.addEventType(handle, eventType));
        return handle;
    }

    unsigned long subscribe(YaltNameValuePair** filter = nullptr)
    {
        ZorvOamSpiEventConsumer_1T consumer{0, &receive};
        EXPECT_EQ(0, spi.registerConsumer(&consumer));
        EXPECT_EQ(0, spi.addSubscription(consumer.consumerId, eventType, filter));
        return consumer.consumerId;
    }

    std::vector<std::string> takeTold() { return std::exchange(told, {}); }

    Journal journal;
    FakeEventRouter router{journal};
    const ZorvOamSpiEventRouter_1T& spi = *FakeEventRouter::table();
    const ZorvOamSpiEventProducer_1T producer{&addFilter, &removeFilter, &clearAll, &done};
    char value[2] = "v";
};

TEST_F(FakeEventRouterTest, producersAreToldOfSubscriptionsBeforeAndAfterThem)
{
    EventFilter filter(EventFilter::Entries{{"a", "1"}});
    subscribe(filter.get());
    produce();
    router.addConsumer(eventType, {{"b", "2"}});
    router.addConsumer("Other_1");

    EXPECT_THAT(takeTold(), ElementsAre("add 1 Type_1 a=1", "add 1001 Type_1 b=2"));
}

TEST_F(FakeEventRouterTest, theEndOfASubscriptionIsToldToThoseWhoAcceptedIt)
{
    produce();
    const unsigned long accepted = router.addConsumer(eventType);
    addFilterResult = -1;
    const unsigned long refused = router.addConsumer(eventType);
    takeTold();

    router.removeConsumer(refused);
    router.removeConsumer(accepted);

    EXPECT_THAT(takeTold(), ElementsAre("remove 1001 Type_1 "));
}

TEST_F(FakeEventRouterTest, noEndIsToldForATypeTakenBack)
{
    const uint32_t handle = produce();
    router.addConsumer(eventType);
    takeTold();

    EXPECT_EQ(0, spi.removeEventType(handle, eventType));
    EXPECT_EQ(-2, spi.removeEventType(handle, eventType));
    router.removeConsumer(1001);

    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_F(FakeEventRouterTest, anEventTypeIsAnnouncedOnce)
{
    const uint32_t handle = produce();

    EXPECT_EQ(-3, spi.addEventType(handle, eventType));
    EXPECT_EQ(-2, spi.addEventType(99, eventType));
}

TEST_F(FakeEventRouterTest, aNotifiedValueIsDeliveredAndHandedBack)
{
    const uint32_t handle = produce();
    EventFilter filter(EventFilter::Entries{{"a", "1"}});
    const auto consumer = subscribe(filter.get());
    takeTold();
    journal.show({Topic::Done});
    journal.take();

    EXPECT_EQ(0, spi.notify(handle, consumer, eventType, filter.get(), value));

    EXPECT_THAT(journal.take(), ElementsAre("notify Type_1 consumer=1 filter=[a=1] v -> 0", "doneWithValue Type_1"));
    EXPECT_THAT(takeTold(), ElementsAre("event 1 Type_1 a=1 v", "done Type_1 v"));
}

TEST_F(FakeEventRouterTest, aRefusedValueIsNotHandedBack)
{
    const uint32_t handle = produce();
    const auto consumer = router.addConsumer(eventType);
    router.failNext("notify", -10);
    takeTold();

    EXPECT_EQ(-10, spi.notify(handle, consumer, eventType, nullptr, value));
    EXPECT_EQ(-2, spi.notify(handle, 99, eventType, nullptr, value));
    EXPECT_EQ(-2, spi.notify(99, consumer, eventType, nullptr, value));

    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_F(FakeEventRouterTest, heldValuesComeBackWhenReleasedInAnyOrder)
{
    char other[2] = "w";
    const uint32_t handle = produce();
    const auto consumer = router.addConsumer(eventType);
    router.hold(true);
    spi.notify(handle, consumer, eventType, nullptr, value);
    spi.notify(handle, consumer, eventType, nullptr, other);
    spi.notify(handle, consumer, eventType, nullptr, value);
    takeTold();
    EXPECT_EQ(3U, router.held());

    router.release(1);
    EXPECT_THAT(takeTold(), ElementsAre("done Type_1 w"));
    router.hold(false);
    EXPECT_THAT(takeTold(), ElementsAre("done Type_1 v", "done Type_1 v"));
    EXPECT_EQ(0U, router.held());
}

TEST_F(FakeEventRouterTest, heldValuesComeBackWhenConsumerOrProducerEnd)
{
    const uint32_t handle = produce();
    const auto first = router.addConsumer(eventType);
    const auto second = router.addConsumer(eventType);
    router.hold(true);
    spi.notify(handle, first, eventType, nullptr, value);
    spi.notify(handle, second, eventType, nullptr, value);
    takeTold();

    router.removeConsumer(first);
    EXPECT_EQ(1U, router.held());
    EXPECT_EQ(0, spi.unregisterProducer(handle, &producer));
    EXPECT_EQ(0U, router.held());
    EXPECT_EQ(-2, spi.unregisterProducer(handle, &producer));

    EXPECT_THAT(takeTold(), ElementsAre("remove 1001 Type_1 ", "done Type_1 v", "done Type_1 v"));
}

TEST_F(FakeEventRouterTest, firedEventsReachEverySubscribedConsumer)
{
    EventFilter filter(EventFilter::Entries{{"a", "1"}});
    subscribe(filter.get());
    subscribe();
    router.addConsumer(eventType);

    EXPECT_THAT(router.fire(eventType, value), ElementsAre(7, 7));
    EXPECT_THAT(router.fire("Other_1", value), IsEmpty());

    EXPECT_THAT(takeTold(), ElementsAre("event 1 Type_1 a=1 v", "event 2 Type_1 null v"));
}

TEST_F(FakeEventRouterTest, aSubscriptionEndsWithItsTypeAndFilter)
{
    EventFilter filter(EventFilter::Entries{{"a", "1"}});
    EventFilter equal(EventFilter::Entries{{"a", "1"}});
    EventFilter other(EventFilter::Entries{{"a", "2"}});
    const unsigned long consumer = subscribe(filter.get());
    EXPECT_THAT(router.subscriptions(), ElementsAre("Type_1 a=1"));

    EXPECT_EQ(-2, spi.removeSubscription(consumer, eventType, other.get()));
    EXPECT_EQ(-2, spi.removeSubscription(consumer, "Other_1", equal.get()));
    EXPECT_EQ(0, spi.removeSubscription(consumer, eventType, equal.get()));

    EXPECT_THAT(router.subscriptions(), IsEmpty());
}

TEST_F(FakeEventRouterTest, aConsumerEndsWithItsSubscriptions)
{
    const unsigned long consumer = subscribe();

    EXPECT_EQ(0, spi.unregisterConsumer(consumer));
    EXPECT_EQ(-2, spi.unregisterConsumer(consumer));
    EXPECT_EQ(-2, spi.addSubscription(consumer, eventType, nullptr));

    EXPECT_THAT(router.subscriptions(), IsEmpty());
}

TEST_F(FakeEventRouterTest, theShutDownClearsAllAtOnce)
{
    produce();
    router.addConsumer(eventType);
    takeTold();

    router.clearAll();
    router.removeConsumer(1001);

    EXPECT_THAT(takeTold(), ElementsAre("clear"));
    EXPECT_THAT(router.subscriptions(), IsEmpty());
}

TEST_F(FakeEventRouterTest, incompleteTablesAreRefused)
{
    uint32_t handle = 0;
    const ZorvOamSpiEventProducer_1T incomplete{&addFilter, &removeFilter, &clearAll, nullptr};
    ZorvOamSpiEventConsumer_1T mute{0, nullptr};

    EXPECT_EQ(-1, spi.registerProducer(&incomplete, &handle));
    EXPECT_EQ(-1, spi.registerConsumer(&mute));
}

}  // namespace
}  // namespace ZorvFakes
