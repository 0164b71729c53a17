/// The managed objects of the node itself: a tree of unchangeable instances, children in the order of their creation.
///
/// A changed object is a new instance, so that a copy of the tree stays as it was.
///
/// Threads: none of its own; whoever shares a tree guards it, or shares it unchanged.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "model/MoValue.hpp"

namespace ZorvInput {

struct MoInstance {
    std::string dn;
    std::map<std::string, MoValue> attributes;  ///< those that have a value
    std::set<std::string> systemWritten;        ///< read-only ones that a component has written
};

using MoInstanceT = std::shared_ptr<const MoInstance>;

class MoTree {
public:
    /// Null when there is no such object.
    MoInstanceT find(const std::string& dn) const;

    /// "" stands for the root.
    bool exists(const std::string& dn) const { return dn.empty() || instances.count(dn) > 0; }

    /// Adds an object, or takes the place of the one with that name.
    void put(MoInstanceT instance);

    /// Removes an object with everything below it.
    void remove(const std::string& dn);

    /// DNs of the direct children of one class.
    std::vector<std::string> childrenOf(const std::string& parentDn, const std::string& className) const;

    /// The object and everything below it, parents first.
    std::vector<std::string> subtreeOf(const std::string& dn) const;

    const std::map<std::string, MoInstanceT>& getInstances() const { return instances; }

private:
    std::map<std::string, MoInstanceT> instances;
    std::map<std::string, std::vector<std::string>> children;
};

}  // namespace ZorvInput
