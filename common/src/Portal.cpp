#include "Portal.hpp"

namespace Zorv {

void Portal::open(const ZorvMgmtSpiPortalAccessor_1T* accessor)
{
    portal = accessor == nullptr ? nullptr : static_cast<const ZorvMgmtSpiPortal_1T*>(accessor->getPortal("1"));
}

const void* Portal::getInterface(const char* componentName, const char* interfaceName,
                                 const char* interfaceVersion) const
{
    const ZorvMgmtSpiPortal_1T* open = portal;
    const void* table = nullptr;
    if (open == nullptr ||
        open->getInterface(componentName, interfaceName, interfaceVersion, &table) != ZORV_RETURN_OK) {
        return nullptr;
    }
    return table;
}

}  // namespace Zorv
