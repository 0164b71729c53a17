/**
 * Transactional resource: what takes part in transactions. Interface "YaltOamSpiTransactionalResource", version "1".
 *
 * The transaction service calls join before the first use of a resource in a transaction, then, at its end, either
 * prepare, commit and finish, or abort and finish.
 *
 * Threads:   any thread of the middleware; the calls of one transaction come one by one.
 * Failure:   0 done; any other code from join or prepare makes the transaction fail. Never throws.
 */
#ifndef YALT_OAM_SPI_TRANSACTIONAL_RESOURCE_1_H
#define YALT_OAM_SPI_TRANSACTIONAL_RESOURCE_1_H

#include "ZorvReturn.h"

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct YaltOamSpiTransactionalResource_1T {
    /** Take part: the resource registers itself with YaltOamSpiTransaction_1T.registerParticipant. */
    YaltReturnT (*join)(unsigned long txHandle);

    /** Can the changes be committed? After 0 a commit must succeed. */
    YaltReturnT (*prepare)(unsigned long txHandle);

    YaltReturnT (*commit)(unsigned long txHandle);

    /** Forget all changes. */
    YaltReturnT (*abort)(unsigned long txHandle);

    /** The transaction is over: release everything that belongs to it. */
    YaltReturnT (*finish)(unsigned long txHandle);
} YaltOamSpiTransactionalResource_1T;

/** The same table under the shorter name that resources and services use. */
typedef YaltOamSpiTransactionalResource_1T YaltOamSpiTransactionalResource_1;

#endif
