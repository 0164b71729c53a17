/**
 * Log service. Interface "ZorvMwSpiLog", version "1", provided by any component.
 *
 * Threads:   callable from any thread; never calls back.
 * Ownership: texts are copied before the call returns.
 * Failure:   return codes; never throws, never blocks on a slow disk without a bound.
 */
#ifndef ZORV_MW_SPI_LOG_1_H
#define ZORV_MW_SPI_LOG_1_H

#include <stdint.h>

#include "ZorvReturn.h"

/** Severity of a log text; smaller is graver. */
typedef enum ZorvMwSpiLogLevelT {
    ZORV_LOG_ERROR = 3,
    ZORV_LOG_WARNING = 4,
    ZORV_LOG_NOTICE = 5,
    ZORV_LOG_INFORMATION = 6
} ZorvMwSpiLogLevelT;

#define ZORV_LOG_SYSTEM "SystemLog" /**< what the components tell about themselves, one line per text */
#define ZORV_LOG_ALARM "FmAlarmLog" /**< every reported alarm and alert, one XML record per text */

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct ZorvMwSpiLog_1T {
    /**
     * Where the log keeps its present level: texts of a level above it are not wanted. The place stays valid and the
     * same for the life of the process; read it atomically. 0 and the place in *level; -2 no such log.
     */
    ZorvReturnT (*getLevel)(const char* logName, const int32_t** level);

    /** Appends one text, stamped with time and level by the log. 0 taken, -1 lost, -2 no such log. */
    ZorvReturnT (*write)(const char* logName, int32_t level, const char* text);
} ZorvMwSpiLog_1T;

#endif
