#include "api/resources/ObjectView.hpp"

#include "model/Dn.hpp"
#include "json/ModelValue.hpp"

namespace ZorvNode {

namespace {

constexpr unsigned deepestModel = 32;  // a class may be contained in itself

}  // namespace

ObjectView::ObjectView(ManagedObjectService& objectService, const MoStore& store, unsigned long txHandle)
    : objects(objectService),
      snapshot(store.snapshot()),
      tx(txHandle)
{
}

std::vector<std::string> ObjectView::childrenOf(const std::string& parentDn, const std::string& className) const
{
    std::vector<std::string> children;
    const std::uint64_t iterator = objects.newIterator(tx, parentDn, className);
    while (const char* name = objects.next(iterator)) {
        children.push_back(joinDn(parentDn, name));
    }
    objects.finalizeIterator(iterator);
    return children;
}

std::vector<std::string> ObjectView::childrenOf(const std::string& parentDn) const
{
    std::vector<std::string> children;
    for (const std::string& className : snapshot.model->childClassesOf(classOf(lastPartOf(parentDn)))) {
        const auto ofClass = childrenOf(parentDn, className);
        children.insert(children.end(), ofClass.begin(), ofClass.end());
    }
    return children;
}

std::vector<std::string> ObjectView::instancesOf(const std::string& className) const
{
    std::vector<std::string> instances;
    for (const std::string& parent : parentsOf(className)) {
        const auto children = childrenOf(parent, className);
        instances.insert(instances.end(), children.begin(), children.end());
    }
    return instances;
}

std::vector<std::string> ObjectView::parentsOf(const std::string& className) const
{
    return parentsOf(className, deepestModel);
}

std::vector<std::string> ObjectView::parentsOf(const std::string& className, unsigned levelsLeft) const
{
    std::vector<std::string> parents;
    for (const std::string& parentClass : classNamed(className).parents) {
        if (parentClass.empty()) {
            parents.emplace_back();
        } else if (levelsLeft > 0 && parentClass != className) {
            for (const std::string& grandparent : parentsOf(parentClass, levelsLeft - 1)) {
                const auto found = childrenOf(grandparent, parentClass);
                parents.insert(parents.end(), found.begin(), found.end());
            }
        }
    }
    return parents;
}

const ClassDescription& ObjectView::classNamed(const std::string& className) const
{
    const ClassDescription* description = snapshot.model->findClass(className);
    if (description == nullptr) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "the model has no class, \"" + className + "\"");
    }
    return *description;
}

const ClassDescription& ObjectView::classAt(const std::string& dn) const
{
    return classNamed(classOf(lastPartOf(dn)));
}

std::vector<MoValue> ObjectView::read(const std::string& dn) const
{
    const ClassDescription& description = classAt(dn);
    std::vector<const char*> names;
    for (const AttributeDescription& attribute : description.attributes) {
        names.push_back(attribute.name.c_str());
    }
    names.push_back(nullptr);
    YaltOamSpiMoAttributesResult_3T result{};
    objects.getAttributes(tx, dn, names.data(), result);
    std::vector<MoValue> values;
    for (std::uint32_t index = 0; index < result.numberOfAttributes; ++index) {
        values.push_back(copyOf(result.attributes[index]));
    }
    result.releaseAttributesResultCB(&result);
    return values;
}

void ObjectView::write(JsonWriter& json, const std::string& dn) const
{
    const std::vector<AttributeDescription>& attributes = classAt(dn).attributes;
    const std::vector<MoValue> values = read(dn);
    for (std::size_t index = 0; index < values.size(); ++index) {
        json.key(attributes[index].name);
        writeJson(json, attributes[index], values[index]);
    }
}

void viewObjects(ManagementClient& management, ManagedObjectService& objects, const MoStore& store,
                 const std::function<void(const ObjectView&)>& operation)
{
    management.transact([&](unsigned long txHandle) { operation(ObjectView(objects, store, txHandle)); });
}

}  // namespace ZorvNode
