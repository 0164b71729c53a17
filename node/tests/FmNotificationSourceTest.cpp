#include "ingress/FmNotificationSource.hpp"

#include "SourceFixture.hpp"
#include "ZorvOamSpiFmAlarmSuppress_1.h"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FmNotificationSourceTest : public SourceFixture {
protected:
    static FmNotification clear(const std::string& dn, std::uint64_t eventTime)
    {
        FmNotification notification = at(eventTime);
        notification.dn = dn;
        notification.severity = YALT_FM_SEVERITY_CLEARED;
        return notification;
    }

    FmNotificationSource source{router, {20}, nullptr, log.sink()};
};

// --- what a subscriber is sent

TEST_F(FmNotificationSourceTest, aSubscriberIsSentWhatHasItsTimeAndFollowsThenNewOnesInTheOrderOfAcceptance)
{
    publish(source, {300, 100, 200});

    subscribeFrom(consumer, "100");
    publish(source, {50, 400});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=100", "Port=200", "Port=50", "Port=400"));
    EXPECT_EQ(2U, source.getStatistics().sentAgain);
    EXPECT_EQ(5U, source.getStatistics().accepted);
}

TEST_F(FmNotificationSourceTest, itBeginsWithTheFirstOneThatHasItsTime)
{
    publish(source, {50, 100, 200, 100, 300});

    subscribeFrom(consumer, "100");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=100", "Port=200", "Port=100", "Port=300"));
    EXPECT_EQ(0U, source.getNumberWaiting());
}

TEST_F(FmNotificationSourceTest, aClearOfOneAlarmThatHasItsTimeIsNotSentAgain)
{
    publish(source, {50});
    source.publish({clear("Port=100", 100)});
    publish(source, {200});

    subscribeFrom(consumer, "100");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=200"));
    EXPECT_EQ(0U, source.getNumberWaiting());
}

TEST_F(FmNotificationSourceTest, aClearByPatternThatHasItsTimeIsSentAgain)
{
    source.publish({clear("Port=1.*", 100)});

    subscribeFrom(consumer, "100");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=1.*"));
}

TEST_F(FmNotificationSourceTest, aClearThatHasAnotherTimeIsSent)
{
    publish(source, {100});
    source.publish({clear("Port=100", 200)});

    subscribeFrom(consumer, "100");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=100", "Port=100"));
}

/// It may have been handled, and then it would clear what else has such a name.
TEST_F(FmNotificationSourceTest, aClearThatWasSentBeforeComesBackAsThePatternOfOneName)
{
    const unsigned long earlier = subscribeFrom(newConsumer(), "100");
    source.publish({clear("Port=1.5", 200), clear("Port=1.*", 300)});
    router.unregisterConsumer(earlier);
    source.publish({clear("Port=2", 400)});

    subscribeFrom(consumer, "100");

    EXPECT_THAT(consumer->events(router), ElementsAre("^Port=1\\.5$", "Port=1.*", "Port=2"));
}

TEST_F(FmNotificationSourceTest, withoutOneThatHasItsTimeItIsSentEverything)
{
    publish(source, {100, 200, 300});

    subscribeFrom(consumer, "150");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=100", "Port=200", "Port=300"));
}

TEST_F(FmNotificationSourceTest, aTimeOfZeroIsEverythingEvenWhenNotificationsHaveNoTime)
{
    publish(source, {0, 1});

    subscribeFrom(consumer, "0");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=0", "Port=1"));
}

TEST_F(FmNotificationSourceTest, theYoungestOfSeveralTimesCounts)
{
    publish(source, {100, 200, 300});
    YaltNameValuePair older = {filter2, "100"};
    YaltNameValuePair younger = {filter2, "200"};
    YaltNameValuePair* filter[] = {&younger, &older, nullptr};
    unsigned long id = 0;
    router.registerConsumer(consumer, id);

    router.addSubscription(id, type2, filter);

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=200", "Port=300"));
}

TEST_F(FmNotificationSourceTest, anotherEventTypesNotificationIsNeitherSentNorTakenForItsTime)
{
    FmNotification other = at(200);
    other.version = 1;
    publish(source, {100});
    source.publish({other});
    publish(source, {300});

    subscribeFrom(consumer, "200");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=100", "Port=300"));
}

TEST_F(FmNotificationSourceTest, aSubscriberWithoutATimeIsSentNewNotificationsOnly)
{
    publish(source, {100});

    subscribe(consumer);
    publish(source, {50});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=50"));
}

TEST_F(FmNotificationSourceTest, aFilterOfAnotherKindIsRefused)
{
    subscribe(consumer, type2, "SomethingElse", "0");
    subscribe(newConsumer(), type2, filter2, "yesterday");
    subscribe(newConsumer(), ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1, filter2, "0");

    publish(source, {100});

    EXPECT_THAT(consumer->events(router), IsEmpty());
    EXPECT_EQ(1U, source.getNumberWaiting());
}

TEST_F(FmNotificationSourceTest, aBatchIsAcceptedInItsOrder)
{
    subscribe(consumer);

    source.publish({at(3), at(1), at(2)});
    source.publish({});

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=3", "Port=1", "Port=2"));
    EXPECT_EQ(3U, source.getNumberInInbox());
}

// --- in which form

TEST_F(FmNotificationSourceTest, notificationsGoUnderTheEventTypeOfTheirFrameworkAndVersion)
{
    const auto types =
        std::make_shared<RecordingConsumer>([](const std::string& eventType, const void*) { return eventType; });
    for (const char* eventType : {ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                                  YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                                  YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4}) {
        subscribe(types, eventType);
    }

    for (const auto& [framework, version] : std::vector<std::pair<FmFramework, int>>{{FmFramework::zorv, 1},
                                                                                     {FmFramework::zorv, 2},
                                                                                     {FmFramework::yalt, 1},
                                                                                     {FmFramework::yalt, 2},
                                                                                     {FmFramework::yalt, 4}}) {
        FmNotification notification = at(1);
        notification.framework = framework;
        notification.version = version;
        source.publish({notification});
        router.waitUntilIdle(std::chrono::seconds(10));
    }

    EXPECT_THAT(types->events(router),
                ElementsAre(ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                            YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                            YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4));
}

TEST_F(FmNotificationSourceTest, versionFourCarriesAllFields)
{
    const auto fields = std::make_shared<RecordingConsumer>([](const std::string&, const void* value) {
        const auto& it = *static_cast<const YaltOamSpiNotificationFmStruct_4*>(value);
        return std::string(it.dn) + " " + std::to_string(it.majorType) + " " + std::to_string(it.minorType) + " " +
               std::to_string(it.eventTime) + " " + it.additionalText + " " + std::to_string(it.severity) + " " +
               it.additionalInfo.entries[1].name + "=" + it.additionalInfo.entries[1].value + " of " +
               std::to_string(it.additionalInfo.numberOfEntries);
    });
    subscribe(fields, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4);
    FmNotification notification;
    notification.dn = "Port=1";
    notification.majorType = 32473;
    notification.minorType = 9;
    notification.eventTime = 77;
    notification.text = "loss";
    notification.severity = -4;
    notification.info = {{"a", "b"}, {"c", "d"}};

    source.publish({notification});

    EXPECT_THAT(fields->events(router), ElementsAre("Port=1 32473 9 77 loss -4 c=d of 2"));
}

TEST_F(FmNotificationSourceTest, suppressionIsSentAsOneAndZero)
{
    const auto states = std::make_shared<RecordingConsumer>([](const std::string&, const void* value) {
        return std::to_string(*static_cast<const ZorvOamSpiFmAlarmSuppressType_1*>(value));
    });
    subscribe(states, ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1);

    EXPECT_TRUE(source.suppress(true));
    EXPECT_TRUE(source.isSuppressed());
    EXPECT_TRUE(source.suppress(false));
    EXPECT_FALSE(source.isSuppressed());

    EXPECT_THAT(states->events(router), ElementsAre("1", "0"));
}

TEST_F(FmNotificationSourceTest, suppressionThatNobodyTakesChangesNothing)
{
    EXPECT_FALSE(source.suppress(true));
    EXPECT_FALSE(source.isSuppressed());
}

}  // namespace ZorvNode
