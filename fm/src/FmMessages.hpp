/// What the callbacks push into the worker's input pipe.
///
/// Ownership: as for Zorv::PipeMessage.
#pragma once

#include "AlarmData.hpp"
#include "PipeMessage.hpp"
#include "ZorvOamSpiFmAlarmSuppress_1.h"
#include "ZorvStateChangeReason.h"

namespace ZorvFm {

enum FmMessageTypeT : Zorv::MessageTypeT {
    HA_STATE_CHANGED = 5,
    NTF_NEW_ALARM = 8,
    CM_ROUTER_EVENT = 16,
    NTF_NEW_ALARM_SUPPRESSION = 22
};

/// The component is told to change its state.
class FmStateChangeMessage : public Zorv::PipeMessage {
public:
    explicit FmStateChangeMessage(ZorvStateChangeReason changeReason)
        : PipeMessage(HA_STATE_CHANGED),
          reason(changeReason)
    {
    }

    const ZorvStateChangeReason reason;
};

/// An application raised, cleared or sent an alarm.
class FmNewAlarmMessage : public Zorv::PipeMessage {
public:
    template <class NotificationT>
    explicit FmNewAlarmMessage(const NotificationT& notification) : PipeMessage(NTF_NEW_ALARM),
                                                                    alarm(notification)
    {
    }

    AlarmData alarm;  // the worker completes it in place
};

/// The configuration changed; the worker rereads it.
class FmNewCmRouterEventMessage : public Zorv::PipeMessage {
public:
    FmNewCmRouterEventMessage() : PipeMessage(CM_ROUTER_EVENT) {}
};

/// Alarm suppression was turned on or off.
class FmNewAlarmSuppressionMessage : public Zorv::PipeMessage {
public:
    explicit FmNewAlarmSuppressionMessage(ZorvOamSpiFmAlarmSuppressType_1 newValue)
        : PipeMessage(NTF_NEW_ALARM_SUPPRESSION),
          value(newValue)
    {
    }

    const ZorvOamSpiFmAlarmSuppressType_1 value;
};

}  // namespace ZorvFm
