/// Who provides which interface: the node's own services, and the components that libraries have registered.
///
/// Threads:   any; components are asked with no lock held.
/// Ownership: a descriptor stays its component's; it is not touched after unregisterComponent.
/// Failure:   return codes of ZorvReturn.h; a component that throws when asked provides nothing.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "ZorvMgmtSpiComponent_1.h"

namespace ZorvNode {

class InterfacePortal {
public:
    using ComponentT = const ZorvMgmtSpiComponent_1T*;

    /// A service of the node itself. version "" stands for none.
    void provide(const std::string& component, const std::string& interface, const std::string& version,
                 const void* table);

    ZorvReturnT registerComponent(ComponentT component);
    ZorvReturnT unregisterComponent(ComponentT component);

    /// The rules are those of ZorvMgmtSpiPortal_1T.
    ZorvReturnT getInterface(const char* component, const char* interface, const char* version,
                             const void** table) const;

    /// A component was started or stopped: it may offer other tables from now on.
    void noteChange() { ++numberOfChanges; }

    /// Grows whenever another answer of getInterface is possible.
    std::uint64_t getNumberOfChanges() const { return numberOfChanges; }

    /// In the order in which they registered.
    std::vector<ComponentT> getComponents() const;

    /// Names whose registration was refused because they were taken; emptied by the call.
    std::vector<std::string> takeRefusedNames();

private:
    struct Service {
        std::string component;
        std::string interface;
        std::string version;
        const void* table;
    };

    struct Offer {
        ComponentT component;
        const ZorvMgmtSpiInterface_1* identity;
    };

    std::atomic<std::uint64_t> numberOfChanges{0};
    mutable std::mutex mutex;
    std::vector<Service> services;          // guarded by mutex
    std::vector<ComponentT> components;     // guarded by mutex
    std::vector<std::string> refusedNames;  // guarded by mutex
};

}  // namespace ZorvNode
