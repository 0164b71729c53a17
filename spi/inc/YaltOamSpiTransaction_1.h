/**
 * Transaction service, participant's side. Interface "YaltOamSpiTransaction" of "YaltOamSpiTransactionService" and
 * "ZorvOamSpiTransaction" of "ZorvOamSpiTransactionService", version "1"; same table.
 *
 * Threads:   callable from any thread, from inside join too.
 * Ownership: a registered resource stays the participant's and lives until its finish has returned.
 * Failure:   return codes; never throws.
 */
#ifndef YALT_OAM_SPI_TRANSACTION_1_H
#define YALT_OAM_SPI_TRANSACTION_1_H

#include "YaltOamSpiTransactionalResource_1.h"
#include "ZorvReturn.h"

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct YaltOamSpiTransaction_1T {
    /** 0 takes part (again: no change); -1 the transaction is ending; -2 no such transaction. */
    YaltReturnT (*registerParticipant)(unsigned long txHandle, const YaltOamSpiTransactionalResource_1T* resource);
} YaltOamSpiTransaction_1T;

typedef YaltOamSpiTransaction_1T YaltOamSpiTransaction_1;
typedef YaltOamSpiTransaction_1T ZorvOamSpiTransaction_1T;

#endif
