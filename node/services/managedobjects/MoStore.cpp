#include "services/managedobjects/MoStore.hpp"

#include <algorithm>
#include <utility>

#include "files/InputError.hpp"
#include "model/Dn.hpp"
#include "model/ValueConversion.hpp"

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

/// Each object that a write concerns, once, in the order of the writes; with everything below a removed one.
std::vector<std::string> concerned(const std::vector<MoWrite>& writes, const MoTree& before)
{
    std::vector<std::string> dns;
    std::set<std::string> known;
    for (const MoWrite& write : writes) {
        const bool removed = !write.created && write.attribute.name.empty();
        for (const std::string& dn : removed ? before.subtreeOf(write.dn) : std::vector<std::string>{write.dn}) {
            if (known.insert(dn).second) {
                dns.push_back(dn);
            }
        }
    }
    return dns;
}

std::vector<std::string> allDns(const MoTree& before, const MoTree& after)
{
    std::set<std::string> dns;
    for (const MoTree* tree : {&before, &after}) {
        for (const auto& [dn, instance] : tree->getInstances()) {
            dns.insert(dn);
        }
    }
    return {dns.begin(), dns.end()};
}

bool fits(const AttributeDescription& attribute, const MoValue& value)
{
    try {
        checkValue(attribute, value);
        return true;
    } catch (const ValueError&) {
        return false;
    }
}

/// The instance of the new file, with what components have written into its predecessor.
MoInstanceT carriedOver(const MoInstanceT& fresh, const MoInstanceT& old, const ClassDescription& description)
{
    auto instance = std::make_shared<MoInstance>(*fresh);
    for (const std::string& name : old->systemWritten) {
        const AttributeDescription* attribute = description.findAttribute(name);
        const auto value = old->attributes.find(name);
        if (attribute != nullptr && attribute->isReadOnly && value != old->attributes.end() &&
            fits(*attribute, value->second)) {
            instance->attributes[name] = value->second;
            instance->systemWritten.insert(name);
        }
    }
    return instance->attributes == old->attributes ? old : instance;
}

}  // namespace

MoStore::MoStore(ModelFile file) : current{std::move(file.model), std::make_shared<const MoTree>(std::move(file.tree))}
{
}

MoSnapshot MoStore::snapshot() const
{
    const LockT lock(mutex);
    return current;
}

bool MoStore::commit(const MoSnapshot& base, const std::vector<MoWrite>& writes, bool optimistic,
                     const std::function<void(std::vector<MoChange>)>& inOrder)
{
    const LockT lock(mutex);
    if (current.model != base.model) {
        return false;  // the writes were checked against another model
    }
    const auto dns = concerned(writes, *current.tree);
    if (optimistic && std::any_of(dns.begin(), dns.end(), [&](const std::string& dn) {
            return current.tree->find(dn) != base.tree->find(dn);
        })) {
        return false;
    }
    auto after = std::make_shared<MoTree>(*current.tree);
    if (!std::all_of(writes.begin(), writes.end(), [&after](const MoWrite& write) { return apply(write, *after); })) {
        return false;
    }
    auto changes = differences(*current.tree, *after, *current.model, dns);
    current.tree = std::move(after);
    inOrder(std::move(changes));
    return true;
}

void MoStore::replace(ModelFile file, const std::function<void(std::vector<MoChange>)>& inOrder)
{
    const LockT lock(mutex);
    MoTree after = std::move(file.tree);
    for (const auto& [dn, fresh] : std::map<std::string, MoInstanceT>(after.getInstances())) {
        if (const MoInstanceT old = current.tree->find(dn)) {
            after.put(carriedOver(fresh, old, *file.model->findClass(classOf(dn))));
        }
    }
    if (!(*current.model == *file.model)) {
        current.model = std::move(file.model);
    }
    auto changes = differences(*current.tree, after, *current.model, allDns(*current.tree, after));
    current.tree = std::make_shared<const MoTree>(std::move(after));
    inOrder(std::move(changes));
}

}  // namespace ZorvNode
