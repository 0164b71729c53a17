#include "model/ClassReader.hpp"

#include <Poco/Ascii.h>
#include <Poco/NumberParser.h>
#include <Poco/StringTokenizer.h>

#include <algorithm>

#include "files/XmlChecks.hpp"
#include "model/ValueText.hpp"

namespace ZorvInput {

namespace {

const std::string& nameAttribute(const XmlElement& element)
{
    const std::string& name = requiredAttribute(element, "name");
    const bool isName = !name.empty() && Poco::Ascii::isAlpha(name.front()) &&
                        std::all_of(name.begin(), name.end(), [](char character) {
                            return character == '_' || Poco::Ascii::isAlphaNumeric(character);
                        });
    if (!isName) {
        throw ValueError("name: not letters, digits and \"_\"", name);
    }
    return name;
}

void setBound(const MoScalarT& bound, std::int64_t& ofSigned, std::uint64_t& ofUnsigned)
{
    if (const auto* number = std::get_if<std::int64_t>(&bound)) {
        ofSigned = *number;
    } else {
        ofUnsigned = std::get<std::uint64_t>(bound);
    }
}

void narrow(const XmlElement& element, AttributeDescription& attribute)
{
    const std::string* low = element.findAttribute("min");
    const std::string* high = element.findAttribute("max");
    const bool isNumber = isSignedNumber(attribute.type) || isUnsignedNumber(attribute.type);
    if ((low != nullptr || high != nullptr) && !isNumber) {
        throw ValueError("min and max are for numbers, type", attribute.typeName);
    }
    NumberRange range = attribute.range;
    if (low != nullptr) {
        setBound(parseScalar(attribute, *low), range.signedMin, range.unsignedMin);
    }
    if (high != nullptr) {
        setBound(parseScalar(attribute, *high), range.signedMax, range.unsignedMax);
    }
    if (range.signedMin > range.signedMax || range.unsignedMin > range.unsignedMax) {
        throw ValueError("min is above max, attribute", attribute.name);
    }
    attribute.range = range;
}

}  // namespace

void ClassReader::read(const XmlElement& element)
{
    at(file, element, [&] {
        expectNoText(element);
        if (element.name == "enum") {
            readEnum(element);
        } else if (element.name == "struct") {
            readStruct(element);
        } else if (element.name == "class") {
            readClass(element);
        } else {
            throw ValueError("unknown element", element.name);
        }
    });
}

void ClassReader::readEnum(const XmlElement& element)
{
    expectAttributes(element, {"name"});
    auto enumeration = std::make_shared<EnumDescription>();
    enumeration->name = newTypeName(element);
    for (const XmlElement& member : element.children) {
        at(file, member, [&] { readMember(member, *enumeration); });
    }
    if (enumeration->members.empty()) {
        throw ValueError("enumeration has no members", enumeration->name);
    }
    enums[enumeration->name] = enumeration;
}

void ClassReader::readMember(const XmlElement& element, EnumDescription& enumeration)
{
    expectName(element, "member");
    expectAttributes(element, {"name", "value"});
    const std::string& name = nameAttribute(element);
    const std::string& text = requiredAttribute(element, "value");
    int value = 0;
    if (!Poco::NumberParser::tryParse(text, value)) {
        throw ValueError("value: not a 32-bit number", text);
    }
    std::int32_t known = 0;
    if (enumeration.findValue(name, known)) {
        throw ValueError("member exists already", name);
    }
    if (enumeration.findName(value) != nullptr) {
        throw ValueError("value is taken by another member", text);
    }
    enumeration.members.emplace_back(name, value);
}

void ClassReader::readStruct(const XmlElement& element)
{
    expectAttributes(element, {"name"});
    auto structure = std::make_shared<StructDescription>();
    structure->name = newTypeName(element);
    structure->members = readAttributes(element, false);
    if (structure->members.empty()) {
        throw ValueError("structure has no members", structure->name);
    }
    structs[structure->name] = structure;
}

void ClassReader::readClass(const XmlElement& element)
{
    expectAttributes(element, {"name", "parent", "implementer"});
    ClassDescription description;
    description.name = nameAttribute(element);
    if (model.findClass(description.name) != nullptr) {
        throw ValueError("class exists already", description.name);
    }
    if (const std::string* implementer = element.findAttribute("implementer")) {
        description.implementer = *implementer;
    }
    readParents(element, description);
    description.attributes = readAttributes(element, true);
    model.add(std::move(description));
}

void ClassReader::readParents(const XmlElement& element, ClassDescription& description) const
{
    const std::string* parents = element.findAttribute("parent");
    if (parents == nullptr) {
        description.parents.emplace_back();
        return;
    }
    const Poco::StringTokenizer names(*parents, " ",
                                      Poco::StringTokenizer::TOK_IGNORE_EMPTY | Poco::StringTokenizer::TOK_TRIM);
    for (const std::string& name : names) {
        const bool itself = name == description.name;
        if (!itself && model.findClass(name) == nullptr) {
            throw ValueError("parent: unknown class", name);
        }
        description.parents.push_back(name);
    }
    if (description.parents.empty()) {
        throw ValueError("parent: no class", *parents);
    }
}

std::vector<AttributeDescription> ClassReader::readAttributes(const XmlElement& element, bool ofClass) const
{
    std::vector<AttributeDescription> attributes;
    for (const XmlElement& child : element.children) {
        AttributeDescription attribute = at(file, child, [&] { return readAttribute(child, ofClass); });
        const bool exists = std::any_of(attributes.begin(), attributes.end(),
                                        [&attribute](const auto& other) { return other.name == attribute.name; });
        if (exists) {
            throw InputError(file, child.line, ValueError("attribute exists already", attribute.name));
        }
        attributes.push_back(std::move(attribute));
    }
    return attributes;
}

AttributeDescription ClassReader::readAttribute(const XmlElement& element, bool ofClass) const
{
    expectName(element, "attribute");
    expectNoText(element);
    AttributeDescription attribute;
    attribute.name = nameAttribute(element);
    if (attribute.name == "object") {
        throw ValueError("name: not allowed for an attribute", attribute.name);
    }
    readType(element, attribute);
    attribute.isSequence = flagAttribute(element, "sequence", false);
    narrow(element, attribute);
    if (ofClass) {
        readClassFacets(element, attribute);
    } else {
        expectAttributes(element, {"name", "type", "sequence", "min", "max"});
    }
    return attribute;
}

void ClassReader::readType(const XmlElement& element, AttributeDescription& attribute) const
{
    attribute.typeName = requiredAttribute(element, "type");
    const auto enumeration = enums.find(attribute.typeName);
    const auto structure = structs.find(attribute.typeName);
    if (findBuiltInType(attribute.typeName, attribute.type)) {
        attribute.range = rangeOf(attribute.type);
    } else if (enumeration != enums.end()) {
        attribute.type = YALT_MO_ATTRIBUTE_ENUM;
        attribute.enumeration = enumeration->second;
    } else if (structure != structs.end()) {
        attribute.type = YALT_MO_ATTRIBUTE_STRUCT;
        attribute.structure = structure->second;
    } else {
        throw ValueError("unknown type", attribute.typeName);
    }
}

void ClassReader::readClassFacets(const XmlElement& element, AttributeDescription& attribute) const
{
    expectAttributes(element, {"name", "type", "sequence", "min", "max", "mandatory", "default", "readOnly", "notify"});
    attribute.isReadOnly = flagAttribute(element, "readOnly", false);
    attribute.notifies = flagAttribute(element, "notify", !attribute.isReadOnly);
    attribute.isMandatory = flagAttribute(element, "mandatory", false);
    const std::string* fallback = element.findAttribute("default");
    if (fallback == nullptr) {
        return;
    }
    if (attribute.isSequence || attribute.type == YALT_MO_ATTRIBUTE_STRUCT) {
        throw ValueError("default is not for sequences and structures, attribute", attribute.name);
    }
    attribute.defaultValue = MoValue{attribute.type, {parseScalar(attribute, *fallback)}};
}

std::string ClassReader::newTypeName(const XmlElement& element) const
{
    const std::string& name = nameAttribute(element);
    std::int32_t builtIn = 0;
    if (findBuiltInType(name, builtIn) || enums.count(name) > 0 || structs.count(name) > 0) {
        throw ValueError("type exists already", name);
    }
    return name;
}

}  // namespace ZorvInput
