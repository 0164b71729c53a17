#include "services/modelrepository/ModelRepository.hpp"

#include <utility>

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

}  // namespace

void ModelRepository::use(std::shared_ptr<const Model> model)
{
    const LockT lock(mutex);
    if (!models.empty() && *models.back() == *model) {
        return;
    }
    ClassesT& classes = generations.emplace_back();
    describe(*model, "", classes);
    for (const ClassDescription& description : model->getClasses()) {
        describe(*model, description.name, classes);
    }
    models.push_back(std::move(model));
}

void ModelRepository::describe(const Model& model, const std::string& className, ClassesT& classes)
{
    Described& described = classes[className];
    described.name = className;
    described.childNames = model.childClassesOf(className);
    for (const std::string& child : described.childNames) {
        described.childClasses.push_back(child.c_str());
    }
    if (const ClassDescription* description = model.findClass(className)) {
        for (const AttributeDescription& attribute : description->attributes) {
            described.attributes.push_back(
                {attribute.name.c_str(), attribute.type, attribute.isSequence, attribute.isReadOnly});
        }
    }
    described.description = {described.name.c_str(), described.childClasses.data(),
                             static_cast<std::uint32_t>(described.childClasses.size()), described.attributes.data(),
                             static_cast<std::uint32_t>(described.attributes.size())};
}

ZorvReturnT ModelRepository::getClass(const std::string& className, const ZorvOamSpiModelClass_1T** description) const
{
    const LockT lock(mutex);
    const auto found = generations.back().find(className);
    if (found == generations.back().end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    *description = &found->second.description;
    return ZORV_RETURN_OK;
}

}  // namespace ZorvNode
