/// The model file: any file is refused with one line, or makes a model that is right as a whole: it reads the same again,
/// every object has its class and its parent, and every value is one that its attribute allows.
#include "InputErrors.hpp"
#include "InputFile.hpp"
#include "model/Dn.hpp"
#include "model/ModelReader.hpp"
#include "model/ValueConversion.hpp"

using namespace ZorvFuzz;
using namespace ZorvInput;

namespace {

void checkObject(const ModelFile& file, const MoInstance& object)
{
    const ClassDescription* description = file.model->findClass(classOf(lastPartOf(object.dn)));
    require(description != nullptr, "an object has its class");
    require(file.tree.exists(parentOf(object.dn)), "an object has its parent");
    require(description->canBeIn(classOf(lastPartOf(parentOf(object.dn)))), "an object is where its class may be");
    require(description->implementer.empty(), "an implementer's objects are not in the file");
    for (const auto& [name, value] : object.attributes) {
        const AttributeDescription* attribute = description->findAttribute(name);
        require(attribute != nullptr, "an attribute is one of the class");
        checkValue(*attribute, value);
    }
    for (const AttributeDescription& attribute : description->attributes) {
        require(!attribute.isMandatory || object.attributes.count(attribute.name) > 0, "what is mandatory is there");
    }
}

void requireSame(const ModelFile& left, const ModelFile& right)
{
    require(*left.model == *right.model, "a file makes the same model again");
    const auto& objects = left.tree.getInstances();
    require(objects.size() == right.tree.getInstances().size(), "a file makes the same objects again");
    for (const auto& [dn, object] : objects) {
        const MoInstanceT twin = right.tree.find(dn);
        require(twin != nullptr && twin->attributes == object->attributes, "a file makes the same values again");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    const std::string path = file.write(textOf(data, size));
    try {
        const ModelFile model = readModel(path);
        for (const auto& [dn, object] : model.tree.getInstances()) {
            require(dn == object->dn, "an object is found by its name");
            checkObject(model, *object);
        }
        requireSame(model, readModel(path));
    } catch (const InputError& e) {
        requireOneLine(e, path);
    }
    return 0;
}
