/**
 * Alarm suppression: while it is on, only critical alarms go northbound.
 *
 * The event's value is one ZorvOamSpiFmAlarmSuppressType_1, valid only during the consumer's callback.
 */
#ifndef ZORV_OAM_SPI_FM_ALARM_SUPPRESS_1_H
#define ZORV_OAM_SPI_FM_ALARM_SUPPRESS_1_H

#include <stdint.h>

#define ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1 "ZorvOamSpiFmAlarmSuppressEventType_1"

enum { ZORV_FM_ALARM_SUPPRESS_OFF = 0, ZORV_FM_ALARM_SUPPRESS_ON = 1 };

/** 1 turns suppression on, any other value turns it off. */
typedef int32_t ZorvOamSpiFmAlarmSuppressType_1;

#endif
