/**
 * FM notification, structure version 2: version 1 with the event time.
 *
 * Rules of version 1 hold.
 */
#ifndef YALT_OAM_SPI_NOTIFICATION_FM_2_H
#define YALT_OAM_SPI_NOTIFICATION_FM_2_H

#include "YaltOamSpiNotificationFm_1.h"

#define ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2 "ZorvOamSpiNotificationFmEventType_2"
#define YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2 "YaltOamSpiNotificationFmEventType_2"
#define ZORV_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2 "ZorvOamSpiNotificationFmFilterTypeDateTime_2"
#define YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2 "YaltOamSpiNotificationFmFilterTypeDateTime_2"

/** Frozen. 40 bytes with LP64. */
typedef struct YaltOamSpiNotificationFmStruct_2 {
    const char* dn;
    uint32_t    majorType;
    uint32_t    minorType;
    uint64_t    eventTime; /**< ns since 1970-01-01 UTC; 0: the receiver stamps it */
    const char* additionalText;
    int32_t     severity;
} YaltOamSpiNotificationFmStruct_2;

#endif
