#include "services/managedobjects/MoChange.hpp"

#include "model/Dn.hpp"

namespace ZorvNode {

namespace {

MoValue valueOf(const MoInstance& instance, const std::string& attribute)
{
    const auto found = instance.attributes.find(attribute);
    return found != instance.attributes.end() ? found->second : MoValue{};
}

std::vector<std::string> changedAttributes(const MoInstance& before, const MoInstance& after,
                                           const ClassDescription& description)
{
    std::vector<std::string> changed;
    for (const AttributeDescription& attribute : description.attributes) {
        const MoValue old = valueOf(before, attribute.name);
        const MoValue now = valueOf(after, attribute.name);
        if (attribute.notifies && old.values != now.values) {
            changed.push_back(attribute.name);
        }
    }
    return changed;
}

std::vector<std::string> attributeNames(const MoInstance& instance)
{
    std::vector<std::string> names;
    for (const auto& [name, value] : instance.attributes) {
        names.push_back(name);
    }
    return names;
}

}  // namespace

bool apply(const MoWrite& write, MoState& state)
{
    const MoInstanceT present = state.find(write.dn);
    if (write.created) {
        if (present || !state.exists(parentOf(write.dn))) {
            return false;
        }
        state.put(write.created);
        return true;
    }
    if (!present) {
        return false;
    }
    if (write.attribute.name.empty()) {
        state.remove(write.dn);
        return true;
    }
    auto changed = std::make_shared<MoInstance>(*present);
    changed->attributes[write.attribute.name] = write.attribute.value;
    if (write.bySystem) {
        changed->systemWritten.insert(write.attribute.name);
    }
    state.put(changed);
    return true;
}

std::vector<MoChange> differences(const MoState& before, const MoState& after, const Model& model,
                                  const std::vector<std::string>& dns)
{
    std::vector<MoChange> changes;
    for (const std::string& dn : dns) {
        const MoInstanceT old = before.find(dn);
        const MoInstanceT now = after.find(dn);
        if (old == now) {
            continue;
        }
        if (!now) {
            changes.push_back({YALT_CM_EVENT_MO_DELETED, dn, {}});
        } else if (!old) {
            changes.push_back({YALT_CM_EVENT_MO_CREATED, dn, attributeNames(*now)});
        } else {
            auto changed = changedAttributes(*old, *now, *model.findClass(classOf(dn)));
            if (!changed.empty()) {
                changes.push_back({YALT_CM_EVENT_ATTRIBUTES_CHANGED, dn, std::move(changed)});
            }
        }
    }
    return changes;
}

}  // namespace ZorvNode
