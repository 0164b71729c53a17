/// The events that go northbound: alarm, heartbeat and alarm-list-rebuilt, each in versions 3 and 2.
///
/// Each is a reference-counted event with the published value inside; the router is handed the address of the value.
///
/// Threads:   filled by the pusher, read by consumers, released on any thread.
/// Ownership: an alarm notification owns block and texts: private copies, in one piece, that do not change with the alarm.
/// Failure:   std::bad_alloc.
#pragma once

#include <memory>
#include <string>

#include "RefCounter.hpp"
#include "ZorvOamApiFmAlarmListRebuilt_2.h"
#include "ZorvOamApiFmAlarmListRebuilt_3.h"
#include "ZorvOamApiFmHeartbeat_2.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_2.h"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvFm {

class AlarmData;
struct StatusSection;

/// What the values of an alarm notification point to.
struct NotificationMemory {
    FmAlarmBlock block{};
    std::unique_ptr<ZorvOamApiFmAdditionalInfoPair[]> pairs;
    std::unique_ptr<char[]> texts;
};

/// Carries the alarm identity, not the original sequence number.
class AlarmNotification : public Zorv::RefCounter, public ZorvOamApiFmNotificationEventValue_3 {
public:
    explicit AlarmNotification(const AlarmData& data);
    std::string toString() const;

private:
    NotificationMemory memory;
};

/// Carries the original sequence number, not the alarm identity.
class AlarmNotificationV2 : public Zorv::RefCounter, public ZorvOamApiFmNotificationEventValue_2 {
public:
    explicit AlarmNotificationV2(const AlarmData& data);
    std::string toString() const;

private:
    NotificationMemory memory;
};

class HeartbeatNotification : public Zorv::RefCounter, public ZorvOamApiFmHeartbeatEventValue_3 {
public:
    explicit HeartbeatNotification(const StatusSection& status);
    std::string toString() const;
};

class HeartbeatNotificationV2 : public Zorv::RefCounter, public ZorvOamApiFmHeartbeatEventValue_2 {
public:
    explicit HeartbeatNotificationV2(const StatusSection& status);
    std::string toString() const;
};

class AlarmListRebuiltNotification : public Zorv::RefCounter, public ZorvOamApiFmAlarmListRebuiltEventValue_3 {
public:
    AlarmListRebuiltNotification() : ZorvOamApiFmAlarmListRebuiltEventValue_3{} {}
};

class AlarmListRebuiltNotificationV2 : public Zorv::RefCounter, public ZorvOamApiFmAlarmListRebuiltEventValue_2 {
public:
    AlarmListRebuiltNotificationV2() : ZorvOamApiFmAlarmListRebuiltEventValue_2{} {}
};

}  // namespace ZorvFm
