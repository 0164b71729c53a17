/**
 * FM notification, structure version 4: version 2 with additional information. Second framework only.
 *
 * Rules of version 1 hold. The entries are the sender's; a null array with a count above 0 reads as no entries.
 */
#ifndef YALT_OAM_SPI_NOTIFICATION_FM_4_H
#define YALT_OAM_SPI_NOTIFICATION_FM_4_H

#include "YaltOamSpiNotificationFm_1.h"

#define YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4 "YaltOamSpiNotificationFmEventType_4"
#define YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_4 "YaltOamSpiNotificationFmFilterTypeDateTime_4"

/** One entry of additional information; a null text reads as empty. */
typedef struct YaltOamSpiFmAdditionalInfoEntry {
    const char* name;
    const char* value;
} YaltOamSpiFmAdditionalInfoEntry;

typedef struct YaltOamSpiFmAdditionalInfoContainer {
    const YaltOamSpiFmAdditionalInfoEntry* entries;
    uint32_t                               numberOfEntries;
} YaltOamSpiFmAdditionalInfoContainer;

/** Frozen. 56 bytes with LP64. */
typedef struct YaltOamSpiNotificationFmStruct_4 {
    const char*                         dn;
    uint32_t                            majorType;
    uint32_t                            minorType;
    uint64_t                            eventTime; /**< ns since 1970-01-01 UTC; 0: the receiver stamps it */
    const char*                         additionalText;
    int32_t                             severity;
    YaltOamSpiFmAdditionalInfoContainer additionalInfo;
} YaltOamSpiNotificationFmStruct_4;

#endif
