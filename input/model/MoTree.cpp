#include "model/MoTree.hpp"

#include <algorithm>
#include <utility>

#include "model/Dn.hpp"

namespace ZorvInput {

MoInstanceT MoTree::find(const std::string& dn) const
{
    const auto found = instances.find(dn);
    return found != instances.end() ? found->second : nullptr;
}

void MoTree::put(MoInstanceT instance)
{
    const std::string dn = instance->dn;
    if (instances.insert_or_assign(dn, std::move(instance)).second) {
        children[parentOf(dn)].push_back(dn);
    }
}

void MoTree::remove(const std::string& dn)
{
    if (!exists(dn)) {
        return;
    }
    for (const std::string& gone : subtreeOf(dn)) {
        instances.erase(gone);
        children.erase(gone);
    }
    auto& siblings = children[parentOf(dn)];
    siblings.erase(std::find(siblings.begin(), siblings.end(), dn));
}

std::vector<std::string> MoTree::childrenOf(const std::string& parentDn, const std::string& className) const
{
    std::vector<std::string> found;
    const auto all = children.find(parentDn);
    if (all != children.end()) {
        std::copy_if(all->second.begin(), all->second.end(), std::back_inserter(found),
                     [&className](const std::string& dn) { return classOf(dn) == className; });
    }
    return found;
}

std::vector<std::string> MoTree::subtreeOf(const std::string& dn) const
{
    std::vector<std::string> subtree{dn};
    for (std::size_t next = 0; next < subtree.size(); ++next) {
        const auto below = children.find(subtree[next]);
        if (below != children.end()) {
            subtree.insert(subtree.end(), below->second.begin(), below->second.end());
        }
    }
    return subtree;
}

}  // namespace ZorvInput
