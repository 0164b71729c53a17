#include "services/managedobjects/MoImplementers.hpp"

#include "services/managedobjects/MoError.hpp"

namespace ZorvNode {

const YaltOamSpiManagedObject_3T& MoImplementers::get(unsigned long txHandle, const std::string& component) const
{
    const void* const resource = find(component, "YaltOamSpiTransactionalResource", "1");
    const void* const objects = find(component, "YaltOamSpiManagedObject", "3");
    if (transactions.joinOnce(txHandle, static_cast<TransactionService::ResourceT>(resource)) != ZORV_RETURN_OK) {
        throw MoError(ZORV_RETURN_FAILED, "component " + component + " does not answer: it is stopped, or has failed");
    }
    return *static_cast<const YaltOamSpiManagedObject_3T*>(objects);
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
