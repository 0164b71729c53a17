#include "services/managedobjects/MoImplementers.hpp"

#include "services/managedobjects/MoError.hpp"

namespace ZorvNode {

const YaltOamSpiManagedObject_3T& MoImplementers::get(unsigned long txHandle, const std::string& component) const
{
    const Tables tables = tablesOf(component);
    if (transactions.joinOnce(txHandle, tables.resource) != ZORV_RETURN_OK) {
        throw MoError(ZORV_RETURN_FAILED, "component " + component + " does not answer: it is stopped, or has failed");
    }
    return *tables.objects;
}

/// Asked for again after each change of the portal; the number of changes is read first, so that none is overlooked.
MoImplementers::Tables MoImplementers::tablesOf(const std::string& component) const
{
    const std::uint64_t changes = portal.getNumberOfChanges();
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (const auto found = known.find(component); found != known.end() && found->second.asOf == changes) {
            return found->second;
        }
    }
    const Tables tables{
        changes, static_cast<TransactionService::ResourceT>(find(component, "YaltOamSpiTransactionalResource", "1")),
        static_cast<const YaltOamSpiManagedObject_3T*>(find(component, "YaltOamSpiManagedObject", "3"))};
    const std::lock_guard<std::mutex> lock(mutex);
    known[component] = tables;
    return tables;
}

const void* MoImplementers::find(const std::string& component, const char* interface, const char* version) const
{
    const void* table = nullptr;
    if (portal.getInterface(component.c_str(), interface, version, &table) != ZORV_RETURN_OK) {
        throw MoError(ZORV_RETURN_FAILED, "component " + component + " does not offer, \"" + interface + "\"");
    }
    return table;
}

}  // namespace ZorvNode
