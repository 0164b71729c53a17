#include "FakePortal.hpp"

#include <algorithm>

namespace ZorvFakes {

namespace {

struct PortalOne {
    static constexpr const char* version = "1";
};

struct PortalThree {
    static constexpr const char* version = "3";
};

template <class PortalT>
int32_t registerComponent(const ZorvMgmtSpiComponent_1T* descriptor)
{
    FakePortal* fake = FakePortal::live();
    return fake ? fake->registerComponent(PortalT::version, descriptor) : ZORV_RETURN_FAILED;
}

template <class PortalT>
int32_t unregisterComponent(const ZorvMgmtSpiComponent_1T* descriptor)
{
    FakePortal* fake = FakePortal::live();
    return fake ? fake->unregisterComponent(PortalT::version, descriptor) : ZORV_RETURN_FAILED;
}

const void* getPortal(const char* version)
{
    FakePortal* fake = FakePortal::live();
    return fake ? fake->getPortal(version) : nullptr;
}

const ZorvMgmtSpiPortal_1T portal1 = {&registerComponent<PortalOne>, &unregisterComponent<PortalOne>,
                                      forward<&FakePortal::getInterface>};

const ZorvMgmtSpiPortal_3T portal3 = {&registerComponent<PortalThree>, &unregisterComponent<PortalThree>,
                                      forward<&FakePortal::getInterface>};

const ZorvMgmtSpiPortalAccessor_1T theAccessor = {&getPortal};

std::string shown(const char* text)
{
    return text ? text : "-";
}

bool isComplete(const ZorvMgmtSpiComponent_1T* descriptor)
{
    return descriptor && descriptor->componentName && descriptor->offeredInterfaces && descriptor->requiredInterfaces &&
           descriptor->optionalInterfaces && descriptor->start && descriptor->stop && descriptor->getInterface;
}

std::string nameOf(const ZorvMgmtSpiComponent_1T* descriptor)
{
    return descriptor ? shown(descriptor->componentName) : "-";
}

/// A null asks for anything.
bool isAsked(const char* asked, const std::string& offered)
{
    return !asked || asked == offered;
}

}  // namespace

FakePortal::FakePortal(Journal& theJournal) : Fake(theJournal, Topic::Portal)
{
}

const ZorvMgmtSpiPortalAccessor_1T* FakePortal::accessor()
{
    return &theAccessor;
}

void FakePortal::setPresent(const std::string& version, bool present)
{
    const std::lock_guard<std::mutex> lock(mutex);
    (version == "1" ? present1 : present3) = present;
}

void FakePortal::offer(const std::string& component, const std::string& interfaceName, const std::string& version,
                       const void* table)
{
    withdraw(interfaceName);
    const std::lock_guard<std::mutex> lock(mutex);
    offers.push_back({component, interfaceName, version, table});
}

void FakePortal::withdraw(const std::string& interfaceName)
{
    const std::lock_guard<std::mutex> lock(mutex);
    offers.erase(
        std::remove_if(offers.begin(), offers.end(), [&](const Offer& offer) { return offer.name == interfaceName; }),
        offers.end());
}

const ZorvMgmtSpiComponent_1T* FakePortal::component(const std::string& name) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (const Registration& registration : registered) {
        if (registration.descriptor->componentName == name) {
            return registration.descriptor;
        }
    }
    return nullptr;
}

std::vector<std::string> FakePortal::components() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::vector<std::string> names;
    for (const Registration& registration : registered) {
        names.emplace_back(registration.descriptor->componentName);
    }
    return names;
}

const void* FakePortal::getPortal(const char* version)
{
    journal.record(Topic::Portal, "getPortal " + shown(version));
    const std::lock_guard<std::mutex> lock(mutex);
    const std::string asked = shown(version);
    if (asked == "1" && present1) {
        return &portal1;
    }
    return asked == "3" && present3 ? &portal3 : nullptr;
}

int32_t FakePortal::registerComponent(const std::string& version, const ZorvMgmtSpiComponent_1T* descriptor)
{
    return answer("registerComponent " + version + " " + nameOf(descriptor), [&](std::string&) -> int32_t {
        if (!isComplete(descriptor)) {
            return ZORV_RETURN_FAILED;
        }
        if (component(descriptor->componentName)) {
            return ZORV_RETURN_EXISTS;
        }
        const std::lock_guard<std::mutex> lock(mutex);
        registered.push_back({version, descriptor});
        return ZORV_RETURN_OK;
    });
}

int32_t FakePortal::unregisterComponent(const std::string& version, const ZorvMgmtSpiComponent_1T* descriptor)
{
    return answer("unregisterComponent " + version + " " + nameOf(descriptor), [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto found = std::find_if(registered.begin(), registered.end(), [&](const Registration& registration) {
            return registration.version == version && registration.descriptor == descriptor;
        });
        if (found == registered.end()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        registered.erase(found);
        return ZORV_RETURN_OK;
    });
}

int32_t FakePortal::getInterface(const char* component, const char* name, const char* version, const void** table)
{
    const std::string call = "getInterface " + shown(component) + " " + shown(name) + " " + shown(version);
    const auto failure = planned(call);
    *table = find(component, name, version);  // filled in a failure by plan too: the code alone counts
    const int32_t code = failure ? *failure : (*table ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND);
    journal.record(Topic::Lookup, call + " -> " + std::to_string(code));
    return code;
}

const void* FakePortal::find(const char* component, const char* name, const char* version) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (const Offer& offer : offers) {
        if (name && offer.name == name && isAsked(component, offer.component) && isAsked(version, offer.version)) {
            return offer.table;
        }
    }
    for (const Registration& registration : registered) {
        const ZorvMgmtSpiComponent_1T& descriptor = *registration.descriptor;
        if (!name || !isAsked(component, descriptor.componentName)) {
            continue;
        }
        for (auto offered = descriptor.offeredInterfaces; *offered; ++offered) {
            if ((*offered)->interfaceName == std::string(name) &&
                isAsked(version, shown((*offered)->interfaceVersion))) {
                return descriptor.getInterface(*offered);
            }
        }
    }
    return nullptr;
}

}  // namespace ZorvFakes
