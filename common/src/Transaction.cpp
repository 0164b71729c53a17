#include "Transaction.hpp"

#include "Portal.hpp"
#include "ZorvException.hpp"

namespace Zorv {

Transaction::Transaction(std::int32_t lockPolicy, std::uint32_t timeout)
    : master(Portal::instance().get<ZorvOamSpiTransactionMaster_1T>("ZorvOamSpiTransactionService",
                                                                    "ZorvOamSpiTransactionMaster", "1"))
{
    if (master == nullptr) {
        throw ZorvException("Transaction service is missing");
    }
    const ZorvReturnT result = master->createTransaction(lockPolicy, timeout, &handle);
    if (result != ZORV_RETURN_OK) {
        throw ZorvException("Failed to create transaction, reason (%d )!", result);
    }
}

Transaction::~Transaction()
{
    if (handle != 0) {
        master->abortTransaction(handle);
    }
}

ZorvReturnT Transaction::commit()
{
    const unsigned long ending = handle;
    handle = 0;
    return master->commitTransaction(ending);
}

}  // namespace Zorv
