/// The managed objects of the node as they are at one moment. A copy costs what has changed lately, not what there is.
///
/// Most changes give an object other attributes: such objects stand beside a tree that all copies share, until there are
/// many of them or an object comes or goes; then there is a new tree.
///
/// Threads: none of its own; whoever shares a state guards it, or shares it unchanged.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "model/MoTree.hpp"

namespace ZorvNode {

using namespace ZorvInput;

class MoState {
public:
    explicit MoState(MoTree tree) : settled(std::make_shared<const MoTree>(std::move(tree))) {}

    /// Null when there is no such object.
    MoInstanceT find(const std::string& dn) const;

    /// "" stands for the root.
    bool exists(const std::string& dn) const { return settled->exists(dn); }

    /// DNs of the direct children of one class, in the order of their creation.
    std::vector<std::string> childrenOf(const std::string& parentDn, const std::string& className) const
    {
        return settled->childrenOf(parentDn, className);
    }

    /// The object and everything below it, parents first; of "" everything.
    std::vector<std::string> subtreeOf(const std::string& dn) const { return settled->subtreeOf(dn); }

    /// Adds an object, or takes the place of the one with that name.
    void put(MoInstanceT instance);

    /// Removes an object with everything below it.
    void remove(const std::string& dn);

private:
    template <class ChangeT>
    void settle(ChangeT change);

    std::shared_ptr<const MoTree> settled;
    std::map<std::string, MoInstanceT> changed;  // by DN; what takes the place of an object of the tree
};

}  // namespace ZorvNode
