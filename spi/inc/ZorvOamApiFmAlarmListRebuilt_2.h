/**
 * Northbound alarm-list-rebuilt notification, version 2: consumers read the active alarm list again.
 */
#ifndef ZORV_OAM_API_FM_ALARM_LIST_REBUILT_2_H
#define ZORV_OAM_API_FM_ALARM_LIST_REBUILT_2_H

#include <stdint.h>

#define ZORV_OAM_API_FM_ALARM_LIST_REBUILT_EVENT_TYPE_2 "ZorvOamApiFmAlarmListRebuiltEventType_2"

/** Frozen. The event type says it all; C wants a member, so there is one, always 0. */
typedef struct ZorvOamApiFmAlarmListRebuiltEventValue_2 {
    uint8_t noData;
} ZorvOamApiFmAlarmListRebuiltEventValue_2;

#endif
