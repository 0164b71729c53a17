/// The transaction service as C tables: for owners and for participants.
#pragma once

#include "YaltOamSpiTransaction_1.h"
#include "services/TableBinding.hpp"
#include "services/transactions/TransactionService.hpp"

namespace ZorvNode {

class TransactionTables : TableBinding<TransactionService> {
public:
    explicit TransactionTables(TransactionService& transactions) : TableBinding(transactions) {}

    static const ZorvOamSpiTransactionMaster_1T* master();
    static const YaltOamSpiTransaction_1T* participant();
};

}  // namespace ZorvNode
