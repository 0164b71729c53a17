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
std::vector<std::string> concerned(const std::vector<MoWrite>& writes, const MoState& before)
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

std::vector<std::string> allDns(const MoState& before, const MoState& after)
{
    std::set<std::string> dns;
    for (const MoState* state : {&before, &after}) {
        for (std::string& dn : state->subtreeOf("")) {
            dns.insert(std::move(dn));
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

MoStore::MoStore(ModelFile file) : current{std::move(file.model), std::make_shared<const MoState>(std::move(file.tree))}
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
    const auto dns = concerned(writes, *current.state);
    if (optimistic && std::any_of(dns.begin(), dns.end(), [&](const std::string& dn) {
            return current.state->find(dn) != base.state->find(dn);
        })) {
        return false;
    }
    auto after = std::make_shared<MoState>(*current.state);
    if (!std::all_of(writes.begin(), writes.end(), [&after](const MoWrite& write) { return apply(write, *after); })) {
        return false;
    }
    auto changes = differences(*current.state, *after, *current.model, dns);
    current.state = std::move(after);
    inOrder(std::move(changes));
    return true;
}

void MoStore::replace(ModelFile file, const std::function<void(std::vector<MoChange>)>& inOrder)
{
    const LockT lock(mutex);
    MoTree tree = std::move(file.tree);
    for (const auto& [dn, fresh] : std::map<std::string, MoInstanceT>(tree.getInstances())) {
        if (const MoInstanceT old = current.state->find(dn)) {
            tree.put(carriedOver(fresh, old, *file.model->findClass(classOf(dn))));
        }
    }
    if (!(*current.model == *file.model)) {
        current.model = std::move(file.model);
    }
    auto after = std::make_shared<const MoState>(std::move(tree));
    auto changes = differences(*current.state, *after, *current.model, allDns(*current.state, *after));
    current.state = std::move(after);
    inOrder(std::move(changes));
}

}  // namespace ZorvNode
