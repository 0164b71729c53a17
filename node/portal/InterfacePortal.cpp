#include "portal/InterfacePortal.hpp"

#include <algorithm>
#include <cstring>

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

/// A wish that is null takes anything.
bool fits(const char* wish, const char* value)
{
    return wish == nullptr || std::strcmp(wish, value != nullptr ? value : "") == 0;
}

bool isComplete(InterfacePortal::ComponentT component)
{
    return component != nullptr && component->componentName != nullptr && *component->componentName != '\0' &&
           component->offeredInterfaces != nullptr && component->requiredInterfaces != nullptr &&
           component->optionalInterfaces != nullptr && component->start != nullptr && component->stop != nullptr &&
           component->getInterface != nullptr;
}

const void* ask(InterfacePortal::ComponentT component, const ZorvMgmtSpiInterface_1* identity)
{
    try {
        return component->getInterface(identity);
    } catch (...) {
        return nullptr;
    }
}

}  // namespace

void InterfacePortal::provide(const std::string& component, const std::string& interface, const std::string& version,
                              const void* table)
{
    const LockT lock(mutex);
    services.push_back({component, interface, version, table});
    noteChange();
}

ZorvReturnT InterfacePortal::registerComponent(ComponentT component)
{
    if (!isComplete(component)) {
        return ZORV_RETURN_FAILED;
    }
    const LockT lock(mutex);
    const bool taken = std::any_of(components.begin(), components.end(), [component](ComponentT other) {
        return std::strcmp(other->componentName, component->componentName) == 0;
    });
    if (taken) {
        refusedNames.emplace_back(component->componentName);
        return ZORV_RETURN_EXISTS;
    }
    components.push_back(component);
    noteChange();
    return ZORV_RETURN_OK;
}

ZorvReturnT InterfacePortal::unregisterComponent(ComponentT component)
{
    const LockT lock(mutex);
    const auto found = std::find(components.begin(), components.end(), component);
    if (found == components.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    components.erase(found);
    noteChange();
    return ZORV_RETURN_OK;
}

ZorvReturnT InterfacePortal::getInterface(const char* component, const char* interface, const char* version,
                                          const void** table) const
{
    *table = nullptr;
    std::vector<Offer> offers;
    {
        const LockT lock(mutex);
        for (const Service& service : services) {
            if (fits(component, service.component.c_str()) && service.interface == interface &&
                fits(version, service.version.c_str())) {
                *table = service.table;
                return ZORV_RETURN_OK;
            }
        }
        for (ComponentT candidate : components) {
            for (auto offered = candidate->offeredInterfaces; *offered != nullptr; ++offered) {
                if (fits(component, candidate->componentName) && fits(interface, (*offered)->interfaceName) &&
                    fits(version, (*offered)->interfaceVersion)) {
                    offers.push_back({candidate, *offered});
                }
            }
        }
    }
    for (const Offer& offer : offers) {
        *table = ask(offer.component, offer.identity);
        if (*table != nullptr) {
            return ZORV_RETURN_OK;
        }
    }
    return ZORV_RETURN_NOT_FOUND;
}

std::vector<InterfacePortal::ComponentT> InterfacePortal::getComponents() const
{
    const LockT lock(mutex);
    return components;
}

std::vector<std::string> InterfacePortal::takeRefusedNames()
{
    const LockT lock(mutex);
    std::vector<std::string> taken;
    taken.swap(refusedNames);
    return taken;
}

}  // namespace ZorvNode
