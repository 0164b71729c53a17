#include "FmEventProducer.hpp"

#include <chrono>
#include <memory>
#include <thread>

namespace ZorvFm {
namespace {

constexpr int consumerAttempts = 30;
constexpr std::chrono::milliseconds consumerPause{100};

/// Pushes an event made for the purpose and gives up the creator's reference.
template <class ProducerT, class EventT>
void pushAndRelease(ProducerT& producer, EventT* event)
{
    const auto release = [](EventT* pushed) { pushed->releaseRef(); };
    const std::unique_ptr<EventT, decltype(release)> owned(event, release);
    producer.push(*event);
}

}  // namespace

void FmEventProducer::start()
{
    alarm3.start(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
    heartbeat3.start(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3);
    rebuilt3.start(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3);
    alarm2.start(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_2);
    heartbeat2.start(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2);
    rebuilt2.start(ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2);
}

void FmEventProducer::stop()
{
    alarm3.stop();
    heartbeat3.stop();
    rebuilt3.stop();
    alarm2.stop();
    heartbeat2.stop();
    rebuilt2.stop();
}

ZorvReturnT FmEventProducer::sendNotification(const AlarmData& alarm)
{
    ZORV_TRACE(" >> sendNotification");
    pushAndRelease(alarm3, new AlarmNotification(alarm));
    pushAndRelease(alarm2, new AlarmNotificationV2(alarm));
    ZORV_TRACE(" << sendNotification");
    return ZORV_RETURN_OK;
}

ZorvReturnT FmEventProducer::sendHeartbeat(const StatusSection& status)
{
    ZORV_TRACE(" >> sendHeartbeat");
    pushAndRelease(heartbeat3, new HeartbeatNotification(status));
    pushAndRelease(heartbeat2, new HeartbeatNotificationV2(status));
    ZORV_TRACE(" << sendHeartbeat");
    return ZORV_RETURN_OK;
}

void FmEventProducer::sendAlarmListRebuilt()
{
    ZORV_TRACE(" >> sendAlarmListRebuilt");
    if (waitForAlarmConsumer()) {
        ZORV_TRACE("Create AlarmListRebuilt notification");
        pushAndRelease(rebuilt3, new AlarmListRebuiltNotification);
        pushAndRelease(rebuilt2, new AlarmListRebuiltNotificationV2);
    }
    ZORV_TRACE(" << sendAlarmListRebuilt");
}

/// Only consumers of alarms count: whoever follows alarms is the one who must read the list again.
bool FmEventProducer::waitForAlarmConsumer()
{
    for (int attempt = 0; attempt < consumerAttempts; ++attempt) {
        if (alarm3.hasConsumers() || alarm2.hasConsumers()) {
            return true;
        }
        std::this_thread::sleep_for(consumerPause);
    }
    return false;
}

}  // namespace ZorvFm
