/**
 * Trace service. Interface "YaltMwSpiTrace", without a version, provided by any component.
 *
 * Threads:   callable from any thread; never calls back.
 * Ownership: texts are copied before the call returns.
 * Failure:   return codes; never throws.
 */
#ifndef YALT_MW_SPI_TRACE_1_H
#define YALT_MW_SPI_TRACE_1_H

#include <stdint.h>

#include "ZorvReturn.h"

#define YALT_TRACE_DETAILED 8 /**< the most detailed level: entry, exit and every step */

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct YaltMwSpiTrace_1T {
    /**
     * Where the group's present level is kept: traces of a level above it are not wanted. Unknown groups come into
     * being. The place stays valid and the same for the life of the process; read it atomically.
     * 0 and the place in *level; -10 too many groups.
     */
    YaltReturnT (*getLevel)(const char* group, const int32_t** level);

    /** Appends one trace with its source location. 0 taken, -1 lost. */
    YaltReturnT (*write)(const char* group, int32_t level, const char* file, uint32_t line, const char* function,
                         const char* text);
} YaltMwSpiTrace_1T;

#endif
