#include "services/transactions/TransactionTables.hpp"

namespace ZorvNode {

namespace {

using BindingT = TableBinding<TransactionService>;

ZorvReturnT createTransaction(int32_t lockPolicy, uint32_t timeout, unsigned long* txHandle)
{
    return BindingT::call("createTransaction", [&](TransactionService& transactions) {
        return txHandle != nullptr ? transactions.create(lockPolicy, timeout, TransactionOrigin::component, *txHandle)
                                   : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT commitTransaction(unsigned long txHandle)
{
    return BindingT::call("commitTransaction",
                          [&](TransactionService& transactions) { return transactions.commit(txHandle); });
}

ZorvReturnT abortTransaction(unsigned long txHandle)
{
    return BindingT::call("abortTransaction",
                          [&](TransactionService& transactions) { return transactions.abort(txHandle); });
}

bool isComplete(const YaltOamSpiTransactionalResource_1T* resource)
{
    return resource != nullptr && resource->join != nullptr && resource->prepare != nullptr &&
           resource->commit != nullptr && resource->abort != nullptr && resource->finish != nullptr;
}

YaltReturnT registerParticipant(unsigned long txHandle, const YaltOamSpiTransactionalResource_1T* resource)
{
    return BindingT::call("registerParticipant", [&](TransactionService& transactions) {
        return isComplete(resource) ? transactions.registerParticipant(txHandle, resource) : ZORV_RETURN_FAILED;
    });
}

}  // namespace

const ZorvOamSpiTransactionMaster_1T* TransactionTables::master()
{
    static const ZorvOamSpiTransactionMaster_1T functions = {&createTransaction, &commitTransaction, &abortTransaction};
    return &functions;
}

const YaltOamSpiTransaction_1T* TransactionTables::participant()
{
    static const YaltOamSpiTransaction_1T functions = {&registerParticipant};
    return &functions;
}

}  // namespace ZorvNode
