/// Management's way to the managed objects: one transaction each, in which read-only attributes are not to be written.
///
/// Threads:   any.
/// Failure:   MoError with a line for people; nothing has changed then.
#pragma once

#include <functional>

#include "services/managedobjects/ManagedObjectService.hpp"

namespace ZorvNode {

class ManagementClient {
public:
    static constexpr std::uint32_t timeoutSeconds = 60;

    ManagementClient(TransactionService& transactionService, ManagedObjectService& objectService)
        : transactions(transactionService),
          objects(objectService)
    {
    }

    void set(const std::string& dn, const std::vector<MoNamedValue>& attributes);
    void create(const std::string& dn, const std::vector<MoNamedValue>& attributes);
    void remove(const std::string& dn);

    /// Runs an operation in a transaction and commits it.
    void transact(const std::function<void(unsigned long txHandle)>& operation);

private:
    TransactionService& transactions;
    ManagedObjectService& objects;
};

}  // namespace ZorvNode
