#include "model/ModelReader.hpp"

#include "files/InputError.hpp"
#include "files/XmlChecks.hpp"
#include "model/ClassReader.hpp"
#include "model/ObjectReader.hpp"

namespace ZorvInput {

namespace {

ModelFile readDocument(const std::string& path, const XmlElement& document)
{
    at(path, document, [&] { expectName(document, "ZorvModel"); });
    Model model;
    MoTree tree;
    ClassReader classes(path, model);
    for (const XmlElement& element : document.children) {
        if (element.name == "object") {
            ObjectReader(path, model, tree).read(element, "");
        } else {
            classes.read(element);
        }
    }
    return {std::make_shared<const Model>(std::move(model)), std::move(tree)};
}

}  // namespace

ModelFile readModel(const std::string& path)
{
    return readDocument(path, readXml(path));
}

}  // namespace ZorvInput
