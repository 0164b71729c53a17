/// The middleware's interface portal as this library sees it: found once through the accessor, asked from then on.
///
/// Threads:   open and close by the thread that loads the library; everything else from any thread.
/// Ownership: accessor, portals and interfaces are the middleware's.
/// Failure:   an interface that nobody provides is a null pointer, never an exception.
#pragma once

#include <atomic>

#include "Singleton.hpp"
#include "ZorvMgmtSpiPortalAccessor_1.h"
#include "ZorvMgmtSpiPortal_1.h"

namespace Zorv {

class Portal : public Singleton<Portal> {
public:
    /// Takes the portal of version "1" from the accessor. A null accessor closes.
    void open(const ZorvMgmtSpiPortalAccessor_1T* accessor);

    /// The function table, or null. componentName null: any provider; interfaceVersion null: the only version.
    const void* getInterface(const char* componentName, const char* interfaceName, const char* interfaceVersion) const;

    template <class InterfaceT>
    const InterfaceT* get(const char* componentName, const char* interfaceName, const char* interfaceVersion) const
    {
        return static_cast<const InterfaceT*>(getInterface(componentName, interfaceName, interfaceVersion));
    }

private:
    std::atomic<const ZorvMgmtSpiPortal_1T*> portal{nullptr};  // not owned; null until open
};

}  // namespace Zorv
