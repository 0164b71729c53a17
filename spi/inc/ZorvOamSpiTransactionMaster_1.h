/**
 * Transaction service, owner's side: whoever reads or writes managed objects does it inside a transaction.
 * Interface "ZorvOamSpiTransactionMaster", version "1", of component "ZorvOamSpiTransactionService".
 *
 * Threads:   callable from any thread; a transaction belongs to one thread at a time.
 * Failure:   return codes; never throws.
 */
#ifndef ZORV_OAM_SPI_TRANSACTION_MASTER_1_H
#define ZORV_OAM_SPI_TRANSACTION_MASTER_1_H

#include <stdint.h>

#include "ZorvReturn.h"

/** What a transaction does to others that write the same objects. */
typedef enum ZorvOamSpiLockPolicyT {
    ZORV_LOCK_POLICY_NONE = 0,      /**< the last commit wins */
    ZORV_LOCK_POLICY_OPTIMISTIC = 1 /**< a commit fails when another one changed an object that it writes */
} ZorvOamSpiLockPolicyT;

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct ZorvOamSpiTransactionMaster_1T {
    /**
     * 0 and a handle, never 0. After timeout seconds (1 to 86400) without an end the transaction is aborted.
     * -1 wrong argument, -10 too many transactions.
     */
    ZorvReturnT (*createTransaction)(int32_t lockPolicy, uint32_t timeout, unsigned long* txHandle);

    /** All participants prepare and commit, or none: -1, and the transaction is aborted. -2 no such transaction. */
    ZorvReturnT (*commitTransaction)(unsigned long txHandle);

    /** -2 no such transaction. */
    ZorvReturnT (*abortTransaction)(unsigned long txHandle);
} ZorvOamSpiTransactionMaster_1T;

#endif
