/// Management's way to the managed objects: transactions in which read-only attributes are not to be written.
///
/// Threads:   any.
/// Failure:   MoError with a line for people; nothing has changed then.
#pragma once

#include <functional>

#include "services/managedobjects/ManagedObjectService.hpp"

namespace ZorvNode {

/// A change that management asks for.
struct MoRequest {
    enum class Kind { set, create, remove };

    Kind kind = Kind::set;
    std::string dn;
    std::vector<MoNamedValue> attributes;  ///< not for remove
};

class ManagementClient {
public:
    static constexpr std::uint32_t timeoutSeconds = 60;

    ManagementClient(TransactionService& transactionService, ManagedObjectService& objectService)
        : transactions(transactionService),
          objects(objectService)
    {
    }

    /// All of them in one transaction, in their order, or none.
    void change(const std::vector<MoRequest>& requests);

    /// Runs an operation in a transaction and commits it.
    void transact(const std::function<void(unsigned long txHandle)>& operation);

private:
    void change(unsigned long txHandle, const MoRequest& request);
    void set(unsigned long txHandle, const MoRequest& request);
    void create(unsigned long txHandle, const MoRequest& request);

    TransactionService& transactions;
    ManagedObjectService& objects;
};

}  // namespace ZorvNode
