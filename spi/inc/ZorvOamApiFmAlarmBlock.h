/**
 * The alarm block that both versions of the northbound alarm notification point to.
 *
 * Ownership: block, texts and pairs belong to the notification; read-only for consumers.
 */
#ifndef ZORV_OAM_API_FM_ALARM_BLOCK_H
#define ZORV_OAM_API_FM_ALARM_BLOCK_H

#include <stdint.h>

/** One pair of additional information. */
typedef struct ZorvOamApiFmAdditionalInfoPair {
    char* name;
    char* value;
} ZorvOamApiFmAdditionalInfoPair;

/** Frozen. */
typedef struct FmAlarmBlock {
    char*                           dn; /**< of the alarming resource, as seen northbound */
    uint32_t                        majorType;
    uint32_t                        minorType;
    uint64_t                        eventTime; /**< ns since 1970-01-01 UTC */
    char*                           additionalText;
    int32_t                         severity;       /**< YaltOamSpiNotificationFmSeverityT */
    ZorvOamApiFmAdditionalInfoPair* additionalInfo; /**< null when there are no pairs */
    uint32_t                        numberOfPairs;
} FmAlarmBlock;

#endif
