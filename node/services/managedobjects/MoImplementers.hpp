/// The components that implement classes of managed objects: finds them and lets them join transactions.
///
/// Threads:   any.
/// Failure:   MoError -1 when the component is not there, has not both interfaces or does not join.
#pragma once

#include <map>
#include <mutex>
#include <string>

#include "YaltOamSpiManagedObject_3.h"
#include "portal/InterfacePortal.hpp"
#include "services/transactions/TransactionService.hpp"

namespace ZorvNode {

class MoImplementers {
public:
    MoImplementers(const InterfacePortal& interfacePortal, TransactionService& transactionService)
        : portal(interfacePortal),
          transactions(transactionService)
    {
    }

    /// The component's table; the component has joined the transaction.
    const YaltOamSpiManagedObject_3T& get(unsigned long txHandle, const std::string& component) const;

private:
    struct Tables {
        std::uint64_t asOf = 0;  // changes of the portal
        TransactionService::ResourceT resource = nullptr;
        const YaltOamSpiManagedObject_3T* objects = nullptr;
    };

    Tables tablesOf(const std::string& component) const;
    const void* find(const std::string& component, const char* interface, const char* version) const;

    const InterfacePortal& portal;
    TransactionService& transactions;
    mutable std::mutex mutex;
    mutable std::map<std::string, Tables> known;  // guarded by mutex
};

}  // namespace ZorvNode
