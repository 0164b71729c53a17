/**
 * Northbound alarm notification, version 3: one reported raise, change or clear of an alarm, or one alert.
 *
 * It carries the alarm identity; the original sequence number is in version 2 only.
 * Ownership: the value belongs to its producer and is valid only during the consumer's callback.
 */
#ifndef ZORV_OAM_API_FM_NOTIFICATION_3_H
#define ZORV_OAM_API_FM_NOTIFICATION_3_H

#include <stdbool.h>
#include <stdint.h>

#include "ZorvOamApiFmAlarmBlock.h"

#define ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3 "ZorvOamApiFmNotificationEventType_3"

/** Frozen: never reorder, retype or append; a change is a new header. */
typedef struct ZorvOamApiFmNotificationEventValue_3 {
    FmAlarmBlock* alarm;
    bool          stateful;      /**< true: an alarm, raised and cleared; false: an alert */
    uint64_t      seqNo;         /**< stateful and stateless notifications are numbered apart, each without gaps */
    uint32_t      eventType;     /**< ITU-T X.733 */
    uint32_t      probableCause; /**< ITU-T X.733, M.3100 */
    char*         specificProblem;
    uint64_t      alarmId;           /**< names the alarm from its raise to its clear */
    uint64_t      originalEventTime; /**< ns since 1970-01-01 UTC, of the raise */
    char*         originalAdditionalText;
    int32_t       originalSeverity;
} ZorvOamApiFmNotificationEventValue_3;

#endif
