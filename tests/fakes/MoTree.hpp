/// Managed-object instances in the order of their planting.
///
/// Threads: none of its own; the owner locks.
#pragma once

#include <list>
#include <map>
#include <string>
#include <vector>

#include "MoValue.hpp"

namespace ZorvFakes {

using MoAttributes = std::map<std::string, MoValue>;

class MoTree {
public:
    bool exists(const std::string& dn) const { return find(dn) != nullptr; }

    /// The attribute's value, or null when there is no such instance or attribute.
    const MoValue* value(const std::string& dn, const std::string& attribute) const;

    /// "Class=key" of the direct children of one class.
    std::vector<std::string> children(const std::string& parentDn, const std::string& className) const;

    /// A new instance, or further attributes for one that exists.
    void plant(const std::string& dn, const MoAttributes& attributes);

    /// An instance with all below it.
    void remove(const std::string& dn);

    void removeAttribute(const std::string& dn, const std::string& attribute);

private:
    struct Instance {
        std::string dn;
        MoAttributes attributes;
    };

    const Instance* find(const std::string& dn) const;
    Instance* find(const std::string& dn);

    std::list<Instance> instances;
};

}  // namespace ZorvFakes
