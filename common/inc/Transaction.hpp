/// A transaction of the middleware: begun here, aborted at the end of the scope unless it was committed.
///
/// Threads:   an object belongs to one thread at a time.
/// Failure:   the constructor throws ZorvException without a transaction service, or when it refuses; commit answers
///            with the service's code.
#pragma once

#include <cstdint>

#include "ZorvOamSpiTransactionMaster_1.h"

namespace Zorv {

class Transaction {
public:
    /// @param lockPolicy a ZorvOamSpiLockPolicyT. @param timeout seconds until the service aborts it by itself.
    Transaction(std::int32_t lockPolicy, std::uint32_t timeout);
    ~Transaction();

    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    unsigned long getHandle() const { return handle; }

    /// Ends the transaction, whatever the answer is.
    ZorvReturnT commit();

private:
    const ZorvOamSpiTransactionMaster_1T* master;  // not owned
    unsigned long handle = 0;                      // 0 once it has ended
};

}  // namespace Zorv
