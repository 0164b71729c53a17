#include "services/managedobjects/MoState.hpp"

#include <utility>

namespace ZorvNode {

namespace {

constexpr std::size_t besideTheTree = 32;

}  // namespace

MoInstanceT MoState::find(const std::string& dn) const
{
    const auto found = changed.find(dn);
    return found != changed.end() ? found->second : settled->find(dn);
}

void MoState::put(MoInstanceT instance)
{
    if (exists(instance->dn) && changed.size() < besideTheTree) {
        MoInstanceT& place = changed[instance->dn];
        place = std::move(instance);
    } else {
        settle([&](MoTree& tree) { tree.put(std::move(instance)); });
    }
}

void MoState::remove(const std::string& dn)
{
    settle([&](MoTree& tree) { tree.remove(dn); });
}

/// A new tree, with everything that has changed and this change.
template <class ChangeT>
void MoState::settle(ChangeT change)
{
    auto tree = std::make_shared<MoTree>(*settled);
    for (const auto& [dn, instance] : changed) {
        tree->put(instance);
    }
    change(*tree);
    settled = std::move(tree);
    changed.clear();
}

}  // namespace ZorvNode
