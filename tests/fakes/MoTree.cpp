#include "MoTree.hpp"

#include <algorithm>

#include "DnUtil.hpp"

namespace ZorvFakes {

const MoTree::Instance* MoTree::find(const std::string& dn) const
{
    const auto found =
        std::find_if(instances.begin(), instances.end(), [&](const Instance& instance) { return instance.dn == dn; });
    return found == instances.end() ? nullptr : &*found;
}

MoTree::Instance* MoTree::find(const std::string& dn)
{
    const auto found =
        std::find_if(instances.begin(), instances.end(), [&](const Instance& instance) { return instance.dn == dn; });
    return found == instances.end() ? nullptr : &*found;
}

const MoValue* MoTree::value(const std::string& dn, const std::string& attribute) const
{
    const Instance* instance = find(dn);
    if (!instance) {
        return nullptr;
    }
    const auto found = instance->attributes.find(attribute);
    return found == instance->attributes.end() ? nullptr : &found->second;
}

std::vector<std::string> MoTree::children(const std::string& parentDn, const std::string& className) const
{
    std::vector<std::string> names;
    for (const Instance& instance : instances) {
        const std::string_view name = Zorv::DnUtil::lastRdn(instance.dn);
        if (Zorv::DnUtil::parentDn(instance.dn) == parentDn && Zorv::DnUtil::rdnClass(name) == className) {
            names.emplace_back(name);
        }
    }
    return names;
}

void MoTree::plant(const std::string& dn, const MoAttributes& attributes)
{
    Instance* instance = find(dn);
    if (!instance) {
        instance = &instances.emplace_back(Instance{dn, {}});
    }
    for (const auto& [name, value] : attributes) {
        instance->attributes[name] = value;
    }
}

void MoTree::remove(const std::string& dn)
{
    instances.remove_if([&](const Instance& instance) {
        return instance.dn == dn || instance.dn.compare(0, dn.size() + 1, dn + ",") == 0;
    });
}

void MoTree::removeAttribute(const std::string& dn, const std::string& attribute)
{
    if (Instance* instance = find(dn)) {
        instance->attributes.erase(attribute);
    }
}

}  // namespace ZorvFakes
