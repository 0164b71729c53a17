#include "ingress/FmNotificationSource.hpp"

#include <gmock/gmock.h>

#include "RecordingConsumer.hpp"
#include "ZorvOamSpiFmAlarmSuppress_1.h"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const char* const type2 = YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2;
const char* const filter2 = YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2;

FmNotification at(std::uint64_t eventTime)
{
    FmNotification notification;
    notification.version = 2;
    notification.dn = "Port=" + std::to_string(eventTime);
    notification.eventTime = eventTime;
    return notification;
}

std::string dnOf(const std::string&, const void* value)
{
    return static_cast<const YaltOamSpiNotificationFmStruct_2*>(value)->dn;
}

}  // namespace

class FmNotificationSourceTest : public ::testing::Test {
protected:
    void subscribe(const std::shared_ptr<RecordingConsumer>& subscriber, const char* eventType, const char* name,
                   const char* value)
    {
        YaltNameValuePair pair = {name, value};
        YaltNameValuePair* filter[] = {name != nullptr ? &pair : nullptr, nullptr};
        unsigned long id = 0;
        router.registerConsumer(subscriber, id);
        router.addSubscription(id, eventType, filter);
    }

    EventRouter router{{}, [](std::int32_t, const std::string&) {}};
    FmNotificationSource source{router, 3};
    const std::shared_ptr<RecordingConsumer> consumer = std::make_shared<RecordingConsumer>(&dnOf);
};

TEST_F(FmNotificationSourceTest, aSubscriberIsSentRetainedNotificationsYoungerThanItsTimeThenNewOnes)
{
    source.publish(at(100));
    source.publish(at(200));
    source.publish(at(300));

    subscribe(consumer, type2, filter2, "100");
    source.publish(at(400));

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=200", "Port=300", "Port=400"));
}

TEST_F(FmNotificationSourceTest, newNotificationsAreSentWhateverTheirTime)
{
    subscribe(consumer, type2, filter2, "100");

    source.publish(at(99));
    source.publish(at(101));

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=99", "Port=101"));
}

TEST_F(FmNotificationSourceTest, onlyTheLatestAreRetained)
{
    for (std::uint64_t time = 1; time <= 5; ++time) {
        source.publish(at(time));
    }

    subscribe(consumer, type2, filter2, "0");

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=3", "Port=4", "Port=5"));
}

TEST_F(FmNotificationSourceTest, aSubscriberWithoutATimeIsSentNewNotificationsOnly)
{
    source.publish(at(100));

    subscribe(consumer, type2, nullptr, nullptr);
    source.publish(at(50));

    EXPECT_THAT(consumer->events(router), ElementsAre("Port=50"));
}

TEST_F(FmNotificationSourceTest, aFilterOfAnotherKindIsRefused)
{
    subscribe(consumer, type2, "SomethingElse", "0");
    subscribe(consumer, type2, filter2, "yesterday");

    source.publish(at(100));

    EXPECT_THAT(consumer->events(router), IsEmpty());
}

TEST_F(FmNotificationSourceTest, notificationsGoUnderTheEventTypeOfTheirFrameworkAndVersion)
{
    const auto types =
        std::make_shared<RecordingConsumer>([](const std::string& eventType, const void*) { return eventType; });
    for (const char* eventType : {ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                                  YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2,
                                  YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4}) {
        subscribe(types, eventType, nullptr, nullptr);
    }

    for (const auto& [framework, version] : std::vector<std::pair<FmFramework, int>>{{FmFramework::zorv, 1},
                                                                                     {FmFramework::zorv, 2},
                                                                                     {FmFramework::yalt, 1},
                                                                                     {FmFramework::yalt, 2},
                                                                                     {FmFramework::yalt, 4}}) {
        FmNotification notification = at(1);
        notification.framework = framework;
        notification.version = version;
        source.publish(notification);
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
    subscribe(fields, YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4, nullptr, nullptr);
    FmNotification notification;
    notification.dn = "Port=1";
    notification.majorType = 32473;
    notification.minorType = 9;
    notification.eventTime = 77;
    notification.text = "loss";
    notification.severity = -4;
    notification.info = {{"a", "b"}, {"c", "d"}};

    source.publish(notification);

    EXPECT_THAT(fields->events(router), ElementsAre("Port=1 32473 9 77 loss -4 c=d of 2"));
}

TEST_F(FmNotificationSourceTest, suppressionIsSentAsOneAndZero)
{
    const auto states = std::make_shared<RecordingConsumer>([](const std::string&, const void* value) {
        return std::to_string(*static_cast<const ZorvOamSpiFmAlarmSuppressType_1*>(value));
    });
    subscribe(states, ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1, nullptr, nullptr);

    source.suppress(true);
    source.suppress(false);

    EXPECT_THAT(states->events(router), ElementsAre("1", "0"));
}

}  // namespace ZorvNode
