#include "FmComponentManager.hpp"

#include "Logging.hpp"

namespace ZorvFm {

const void* FmComponentManager::getInterface(const ZorvMgmtSpiInterface_1& id) const
{
    ZORV_TRACE(" >> Try to get interface %s", id.interfaceName);
    const void* table = nullptr;
    if (portal == nullptr ||
        portal->getInterface(id.componentName, id.interfaceName, id.interfaceVersion, &table) != ZORV_RETURN_OK) {
        table = nullptr;
    }
    ZORV_TRACE(" << ");
    return table;
}

}  // namespace ZorvFm
