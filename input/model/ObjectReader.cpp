#include "model/ObjectReader.hpp"

#include <algorithm>

#include "files/XmlChecks.hpp"
#include "model/Dn.hpp"
#include "model/ValueText.hpp"

namespace ZorvInput {

void ObjectReader::read(const XmlElement& element, const std::string& enclosingDn)
{
    auto instance = std::make_shared<MoInstance>();
    at(file, element, [&] {
        expectAttributes(element, {"dn"});
        expectNoText(element);
        instance->dn = joinDn(enclosingDn, requiredAttribute(element, "dn"));
        const ClassDescription& description = checkPlace(instance->dn);
        for (const XmlElement& child : element.children) {
            if (child.name != "object") {
                at(file, child, [&] { readAttribute(child, description, *instance); });
            }
        }
        completeAttributes(description, *instance);
    });
    tree.put(instance);
    for (const XmlElement& child : element.children) {
        if (child.name == "object") {
            read(child, instance->dn);
        }
    }
}

const ClassDescription& ObjectReader::checkPlace(const std::string& dn) const
{
    const std::string part = lastPartOf(dn);
    const std::string parent = parentOf(dn);
    const ClassDescription* description = model.findClass(classOf(dn));
    if (part.find('=') == std::string::npos || !isKeyValue(part.substr(part.find('=') + 1))) {
        throw ValueError("dn: not \"Class=value\"", part);
    }
    if (description == nullptr) {
        throw ValueError("unknown class", classOf(dn));
    }
    if (!description->implementer.empty()) {
        throw ValueError("objects of this class are component " + description->implementer + "'s", dn);
    }
    if (!tree.exists(parent)) {
        throw ValueError("no parent object", parent);
    }
    if (!description->canBeIn(classOf(parent))) {
        throw ValueError("class " + description->name + " is not contained in class", classOf(parent));
    }
    if (tree.exists(dn)) {
        throw ValueError("object exists already", dn);
    }
    return *description;
}

void ObjectReader::readAttribute(const XmlElement& element, const ClassDescription& description, MoInstance& instance)
{
    const AttributeDescription* attribute = description.findAttribute(element.name);
    if (attribute == nullptr) {
        throw ValueError("class " + description.name + " has no attribute", element.name);
    }
    expectAttributes(element, {});
    MoValue& value = instance.attributes[attribute->name];
    if (!value.values.empty() && !attribute->isSequence) {
        throw ValueError("attribute has a value already", attribute->name);
    }
    value.type = attribute->type;
    value.values.push_back(readScalar(element, *attribute));
}

MoScalarT ObjectReader::readScalar(const XmlElement& element, const AttributeDescription& attribute) const
{
    if (attribute.type == YALT_MO_ATTRIBUTE_STRUCT) {
        expectNoText(element);
        return readStruct(element, *attribute.structure);
    }
    if (!element.children.empty()) {
        throw ValueError("elements in the value of attribute " + attribute.name, element.children.front().name);
    }
    return parseScalar(attribute, element.text);
}

/// A structure has all its members, in the order of the model; those without a value too.
MoScalarT ObjectReader::readStruct(const XmlElement& element, const StructDescription& structure) const
{
    std::vector<MoNamedValue> members;
    for (const AttributeDescription& member : structure.members) {
        members.push_back({member.name, {member.type, {}}});
    }
    for (const XmlElement& child : element.children) {
        at(file, child, [&] {
            const auto found = std::find_if(structure.members.begin(), structure.members.end(),
                                            [&child](const auto& member) { return member.name == child.name; });
            if (found == structure.members.end()) {
                throw ValueError("structure " + structure.name + " has no member", child.name);
            }
            MoValue& value = members[static_cast<std::size_t>(found - structure.members.begin())].value;
            if (!value.values.empty() && !found->isSequence) {
                throw ValueError("member has a value already", child.name);
            }
            value.values.push_back(readScalar(child, *found));
        });
    }
    return members;
}

void completeAttributes(const ClassDescription& description, MoInstance& instance)
{
    for (const AttributeDescription& attribute : description.attributes) {
        if (instance.attributes.count(attribute.name) > 0) {
            continue;
        }
        if (attribute.defaultValue) {
            instance.attributes[attribute.name] = *attribute.defaultValue;
        } else if (attribute.isMandatory) {
            throw ValueError("object has no value for attribute " + attribute.name, instance.dn);
        }
    }
}

}  // namespace ZorvInput
