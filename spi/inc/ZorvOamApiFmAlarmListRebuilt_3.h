/**
 * Northbound alarm-list-rebuilt notification, version 3: consumers read the active alarm list again.
 */
#ifndef ZORV_OAM_API_FM_ALARM_LIST_REBUILT_3_H
#define ZORV_OAM_API_FM_ALARM_LIST_REBUILT_3_H

#include <stdint.h>

#define ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_3 "ZorvOamApiFmAlarmListRebuiltEventType_3"

/** Frozen. The event type says it all; C wants a member, so there is one, always 0. */
typedef struct ZorvOamApiFmAlarmListRebuiltEventValue_3 {
    uint8_t noData;
} ZorvOamApiFmAlarmListRebuiltEventValue_3;

#endif
