/**
 * FM notification, structure version 1: how an application raises, clears or sends an alarm.
 *
 * Both frameworks send the same structure, each under its own event type. A consumer gives a time (unsigned decimal, ns) as
 * filter: it is first sent the retained notifications that are younger, then all new ones.
 * Texts are C strings and the sender's; null reads as empty. Values are valid only during the consumer's callback.
 */
#ifndef YALT_OAM_SPI_NOTIFICATION_FM_1_H
#define YALT_OAM_SPI_NOTIFICATION_FM_1_H

#include <stdint.h>

#define ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1 "ZorvOamSpiNotificationFmEventType_1"
#define YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1 "YaltOamSpiNotificationFmEventType_1"
#define ZORV_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_1 "ZorvOamSpiNotificationFmFilterTypeDateTime_1"
#define YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_1 "YaltOamSpiNotificationFmFilterTypeDateTime_1"

/** Perceived severity (ITU-T X.733), with 0 for a clear. A field of this type is a signed 32-bit value. */
typedef enum YaltOamSpiNotificationFmSeverityT {
    YALT_FM_SEVERITY_CLEARED = 0,
    YALT_FM_SEVERITY_INDETERMINATE = 1,
    YALT_FM_SEVERITY_WARNING = 2,
    YALT_FM_SEVERITY_MINOR = 3,
    YALT_FM_SEVERITY_MAJOR = 4,
    YALT_FM_SEVERITY_CRITICAL = 5
} YaltOamSpiNotificationFmSeverityT;

/** Frozen. 32 bytes with LP64. It carries no event time: the receiver stamps it. */
typedef struct YaltOamSpiNotificationFmStruct {
    const char* dn; /**< distinguished name of the alarming resource */
    uint32_t    majorType;
    uint32_t    minorType;
    const char* additionalText;
    int32_t     severity; /**< YaltOamSpiNotificationFmSeverityT; any other value may arrive and must be survived */
} YaltOamSpiNotificationFmStruct;

#endif
