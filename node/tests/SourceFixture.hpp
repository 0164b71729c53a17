/// A notification source with a router, and consumers that subscribe to it.
#pragma once

#include <gmock/gmock.h>

#include <future>

#include "LogRecorder.hpp"
#include "RecordingConsumer.hpp"
#include "ingress/FmNotificationSource.hpp"

namespace ZorvNode {

class SourceFixture : public ::testing::Test {
protected:
    static constexpr const char* type2 = YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2;
    static constexpr const char* filter2 = YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2;

    /// Of version 2, with its time in its DN.
    static FmNotification at(std::uint64_t eventTime)
    {
        FmNotification notification;
        notification.version = 2;
        notification.dn = "Port=" + std::to_string(eventTime);
        notification.eventTime = eventTime;
        notification.severity = YALT_FM_SEVERITY_MAJOR;
        return notification;
    }

    static void publish(FmNotificationSource& source, std::initializer_list<std::uint64_t> times)
    {
        for (const std::uint64_t time : times) {
            source.publish({at(time)});
        }
    }

    static std::shared_ptr<RecordingConsumer> newConsumer()
    {
        return std::make_shared<RecordingConsumer>([](const std::string&, const void* value) {
            return std::string(static_cast<const YaltOamSpiNotificationFmStruct_2*>(value)->dn);
        });
    }

    /// @param name null: without a filter.
    unsigned long subscribe(const std::shared_ptr<RouterConsumer>& subscriber, const char* eventType = type2,
                            const char* name = nullptr, const char* value = nullptr)
    {
        YaltNameValuePair pair = {name, value};
        YaltNameValuePair* filter[] = {name != nullptr ? &pair : nullptr, nullptr};
        unsigned long id = 0;
        router.registerConsumer(subscriber, id);
        router.addSubscription(id, eventType, filter);
        return id;
    }

    unsigned long subscribeFrom(const std::shared_ptr<RouterConsumer>& subscriber, const char* time)
    {
        return subscribe(subscriber, type2, filter2, time);
    }

    static std::string refusalOf(FmNotificationSource& source, std::vector<FmNotification> notifications)
    {
        try {
            source.publish(std::move(notifications));
        } catch (const SourceBusy& e) {
            return e.what();
        }
        return "accepted";
    }

    EventRouter router{{}, [](std::int32_t, const std::string&) {}};
    LogRecorder log;
    const std::shared_ptr<RecordingConsumer> consumer = newConsumer();
};

/// Takes nothing until it is let go.
class StalledConsumer : public RouterConsumer {
public:
    ZorvReturnT onEvent(unsigned long, const char*, YaltNameValuePair**, void*) override
    {
        gate.wait();
        return ZORV_RETURN_OK;
    }

    void letGo() { opened.set_value(); }

private:
    std::promise<void> opened;
    const std::shared_future<void> gate = opened.get_future().share();
};

}  // namespace ZorvNode
