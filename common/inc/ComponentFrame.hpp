/// What the components of both frameworks have in common: their one object, their descriptor and the way to it.
///
/// Threads:   the descriptor's callbacks on any thread of the middleware, one at a time.
/// Ownership: the object is created at its first use and destroyed when the library is unloaded; accessor and portals are
///            the middleware's.
/// Failure:   exceptions never reach the middleware: they are logged and answered with -1.
#pragma once

#include "ComponentDescriptor.hpp"
#include "Guarded.hpp"
#include "ZorvMgmtSpiPortalAccessor_1.h"
#include "ZorvMgmtSpiPortal_1.h"
#include "ZorvMgmtSpiPortal_3.h"

namespace Zorv {

template <class ComponentT>
class ComponentFrame {
public:
    static ComponentT& instance()
    {
        static ComponentT component;
        return component;
    }

    ComponentFrame(const ComponentFrame&) = delete;
    ComponentFrame& operator=(const ComponentFrame&) = delete;

protected:
    explicit ComponentFrame(const char* componentName) : name(componentName) {}
    ~ComponentFrame() = default;

    void takePortal1() { portal1 = static_cast<const ZorvMgmtSpiPortal_1T*>(accessor->getPortal("1")); }
    void takePortal3() { portal3 = static_cast<const ZorvMgmtSpiPortal_3T*>(accessor->getPortal("3")); }

    /// Fills the descriptor from name and identities.
    void describe()
    {
        descriptor.describe(name, offered, required, optional);
        descriptor.spi.start = [](ZorvStateChangeReason reason) {
            return guarded("Component start", [reason] { return instance().start(reason); });
        };
        descriptor.spi.stop = [](ZorvStateChangeReason reason) {
            return guarded("Component stop", [reason] { return instance().stop(reason); });
        };
        descriptor.spi.getInterface = [](const ZorvMgmtSpiInterface_1* identity) {
            return instance().getInterface(*identity);
        };
    }

    const ZorvMgmtSpiPortalAccessor_1T* accessor = nullptr;
    const ZorvMgmtSpiPortal_1T* portal1 = nullptr;
    const ZorvMgmtSpiPortal_3T* portal3 = nullptr;
    ComponentDescriptor descriptor;
    bool started = false;
    ComponentDescriptor::IdentitiesT offered;
    ComponentDescriptor::IdentitiesT required;
    ComponentDescriptor::IdentitiesT optional;

private:
    const char* const name;
};

}  // namespace Zorv
