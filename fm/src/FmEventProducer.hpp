/// Publishes FM notifications northbound, each in versions 3 and 2 side by side.
///
/// Threads:   the worker's; the router calls back on its own threads.
/// Ownership: each notification is the last of its holders': the router's consumers or, without any, nobody's.
/// Failure:   nothing is reported: a producer without consumers delivers nothing.
#pragma once

#include "EventProducer.hpp"
#include "FmNotifications.hpp"
#include "Singleton.hpp"
#include "ZorvReturn.h"

namespace ZorvFm {

class FmEventProducer : public Zorv::Singleton<FmEventProducer> {
public:
    void start();

    /// Must come while the event router is still there.
    void stop();

    ZorvReturnT sendNotification(const AlarmData& alarm);
    ZorvReturnT sendHeartbeat(const StatusSection& status);

    /// Waits up to 3 s for a consumer of alarm notifications, of either version; sends nothing when none shows up.
    void sendAlarmListRebuilt();

private:
    friend class Zorv::Singleton<FmEventProducer>;
    FmEventProducer() = default;

    template <class EventT, class EventStructT>
    using ProducerT = Zorv::EventProducer<EventT, EventStructT, Zorv::MatchAllFilter<EventT>>;

    bool waitForAlarmConsumer();

    ProducerT<AlarmNotification, ZorvOamApiFmNotificationEventValue_3> alarm3;
    ProducerT<AlarmListRebuiltNotification, ZorvOamApiFmAlarmListRebuiltEventValue_3> rebuilt3;
    ProducerT<HeartbeatNotification, ZorvOamApiFmHeartbeatEventValue_3> heartbeat3;
    ProducerT<AlarmNotificationV2, ZorvOamApiFmNotificationEventValue_2> alarm2;
    ProducerT<AlarmListRebuiltNotificationV2, ZorvOamApiFmAlarmListRebuiltEventValue_2> rebuilt2;
    ProducerT<HeartbeatNotificationV2, ZorvOamApiFmHeartbeatEventValue_2> heartbeat2;
};

}  // namespace ZorvFm
