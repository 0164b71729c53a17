#include "portal/PortalTables.hpp"

#include <string_view>

#include "ZorvMgmtSpiPortal_1.h"
#include "ZorvMgmtSpiPortal_3.h"

namespace ZorvNode {

namespace {

using BindingT = TableBinding<InterfacePortal>;

ZorvReturnT registerComponent(const ZorvMgmtSpiComponent_1T* component)
{
    return BindingT::call("registerComponent",
                          [&](InterfacePortal& portal) { return portal.registerComponent(component); });
}

ZorvReturnT unregisterComponent(const ZorvMgmtSpiComponent_1T* component)
{
    return BindingT::call("unregisterComponent",
                          [&](InterfacePortal& portal) { return portal.unregisterComponent(component); });
}

ZorvReturnT getInterface(const char* componentName, const char* interfaceName, const char* interfaceVersion,
                         const void** interfaceTable)
{
    return BindingT::call("getInterface", [&](InterfacePortal& portal) {
        return interfaceName != nullptr && interfaceTable != nullptr
                   ? portal.getInterface(componentName, interfaceName, interfaceVersion, interfaceTable)
                   : ZORV_RETURN_FAILED;
    });
}

const void* getPortal(const char* version)
{
    static const ZorvMgmtSpiPortal_1T portal1 = {&registerComponent, &unregisterComponent, &getInterface};
    static const ZorvMgmtSpiPortal_3T portal3 = {&registerComponent, &unregisterComponent, &getInterface};
    const std::string_view wanted = version != nullptr ? version : "";
    if (wanted == "1") {
        return &portal1;
    }
    return wanted == "3" ? &portal3 : nullptr;
}

}  // namespace

const ZorvMgmtSpiPortalAccessor_1T* PortalTables::accessor()
{
    static const ZorvMgmtSpiPortalAccessor_1T functions = {&getPortal};
    return &functions;
}

}  // namespace ZorvNode
