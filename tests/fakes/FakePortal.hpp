/// The middleware's interface portal: accessor, portals "1" and "3", and the register of interfaces.
///
/// Entries: "getPortal 1", "registerComponent 3 ZorvFmComponent -> 0" (the number is the portal's version),
/// "unregisterComponent 3 ZorvFmComponent -> 0"; on Topic::Lookup
/// "getInterface ZorvOamSpiEventService ZorvOamSpiEventRouter 1 -> 0", with "-" where a null was passed.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Fake.hpp"
#include "ZorvMgmtSpiComponent_1.h"
#include "ZorvMgmtSpiPortalAccessor_1.h"
#include "ZorvMgmtSpiPortal_1.h"
#include "ZorvMgmtSpiPortal_3.h"

namespace ZorvFakes {

class FakePortal : public Fake<FakePortal> {
public:
    explicit FakePortal(Journal& journal);

    /// What a library gets from its life-cycle manager. Valid for ever; answers null while no FakePortal lives.
    static const ZorvMgmtSpiPortalAccessor_1T* accessor();

    /// Both portals are there at first.
    void setPresent(const std::string& version, bool present);

    /// Offers a table under an identity; takes the place of an earlier one. An empty version is "the only one".
    void offer(const std::string& component, const std::string& interfaceName, const std::string& version,
               const void* table);

    /// Withdraws an interface, whoever offers it.
    void withdraw(const std::string& interfaceName);

    /// The registered descriptor of that name, or null.
    const ZorvMgmtSpiComponent_1T* component(const std::string& name) const;

    /// Names of the registered components, in the order of registration.
    std::vector<std::string> components() const;

    // The operations behind the tables.
    const void* getPortal(const char* version);
    int32_t registerComponent(const std::string& version, const ZorvMgmtSpiComponent_1T* descriptor);
    int32_t unregisterComponent(const std::string& version, const ZorvMgmtSpiComponent_1T* descriptor);
    int32_t getInterface(const char* component, const char* name, const char* version, const void** table);

private:
    struct Offer {
        std::string component;
        std::string name;
        std::string version;
        const void* table;
    };

    struct Registration {
        std::string version;
        const ZorvMgmtSpiComponent_1T* descriptor;  // not owned
    };

    const void* find(const char* component, const char* name, const char* version) const;

    mutable std::mutex mutex;
    bool present1 = true;  // guarded by mutex, as all below
    bool present3 = true;
    std::vector<Offer> offers;
    std::vector<Registration> registered;
};

}  // namespace ZorvFakes
