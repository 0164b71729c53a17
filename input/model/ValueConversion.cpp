#include "model/ValueConversion.hpp"

#include "files/InputError.hpp"
#include "model/ValueText.hpp"

namespace ZorvInput {

namespace {

std::string textOf(const char* text)
{
    return text != nullptr ? text : "";
}

MoScalarT copyScalar(std::int32_t type, const YaltOamSpiMoAttributeValue_3T& value)
{
    if (isSignedNumber(type)) {
        return value.intValue;
    }
    if (isUnsignedNumber(type)) {
        return value.uintValue;
    }
    switch (type) {
    case YALT_MO_ATTRIBUTE_BOOL:
        return value.boolValue;
    case YALT_MO_ATTRIBUTE_ENUM:
        return value.enumValue;
    case YALT_MO_ATTRIBUTE_STRING:
    case YALT_MO_ATTRIBUTE_REFERENCE:
        return textOf(value.stringValue);
    case YALT_MO_ATTRIBUTE_STRUCT:
        break;
    default:
        throw ValueError("unknown type of value", std::to_string(type));
    }
    std::vector<MoNamedValue> members;
    for (std::uint32_t index = 0; value.structValue != nullptr && index < value.structValue->numberOfMembers; ++index) {
        const YaltOamSpiMoNamedAttribute_3T& member = value.structValue->members[index];
        members.push_back({textOf(member.name), copyOf(member.attribute)});
    }
    return members;
}

void checkStruct(const StructDescription& structure, const std::vector<MoNamedValue>& members)
{
    if (members.size() != structure.members.size()) {
        throw ValueError("wrong number of members of structure " + structure.name, std::to_string(members.size()));
    }
    for (std::size_t index = 0; index < members.size(); ++index) {
        if (members[index].name != structure.members[index].name) {
            throw ValueError("structure " + structure.name + " has no member here", members[index].name);
        }
        checkValue(structure.members[index], members[index].value);
    }
}

}  // namespace

MoValue copyOf(const YaltOamSpiMoAttribute_3T& given)
{
    MoValue value{given.type, {}};
    for (std::uint32_t index = 0; given.values != nullptr && index < given.numberOfValues; ++index) {
        value.values.push_back(copyScalar(given.type, given.values[index]));
    }
    return value;
}

MoValue fromC(const AttributeDescription& attribute, const YaltOamSpiMoAttribute_3T& given)
{
    if (given.type != attribute.type) {
        throw ValueError("wrong type of value for attribute " + attribute.name, std::to_string(given.type));
    }
    MoValue value = copyOf(given);
    checkValue(attribute, value);
    return value;
}

void checkValue(const AttributeDescription& attribute, const MoValue& value)
{
    if (value.type != attribute.type) {
        throw ValueError("wrong type of value for attribute " + attribute.name, std::to_string(value.type));
    }
    if (value.values.size() > 1 && !attribute.isSequence) {
        throw ValueError("more than one value for attribute " + attribute.name, std::to_string(value.values.size()));
    }
    for (const MoScalarT& scalar : value.values) {
        if (attribute.type == YALT_MO_ATTRIBUTE_STRUCT) {
            checkStruct(*attribute.structure, std::get<std::vector<MoNamedValue>>(scalar));
        } else {
            checkLimits(attribute, scalar);
        }
    }
}

void CValues::add(std::shared_ptr<const MoValue> value)
{
    attributes.push_back(toC(*value));
    kept.push_back(std::move(value));
}

YaltOamSpiMoAttribute_3T CValues::toC(const MoValue& value)
{
    if (value.values.empty()) {
        return {value.type, 0, nullptr};
    }
    std::vector<YaltOamSpiMoAttributeValue_3T> values;
    for (const MoScalarT& scalar : value.values) {
        values.push_back(toC(scalar));
    }
    valueArrays.push_back(std::move(values));
    return {value.type, static_cast<std::uint32_t>(value.values.size()), valueArrays.back().data()};
}

YaltOamSpiMoAttributeValue_3T CValues::toC(const MoScalarT& scalar)
{
    YaltOamSpiMoAttributeValue_3T value{};
    if (const auto* number = std::get_if<std::int64_t>(&scalar)) {
        value.intValue = *number;
    } else if (const auto* unsignedNumber = std::get_if<std::uint64_t>(&scalar)) {
        value.uintValue = *unsignedNumber;
    } else if (const auto* flag = std::get_if<bool>(&scalar)) {
        value.boolValue = *flag;
    } else if (const auto* member = std::get_if<std::int32_t>(&scalar)) {
        value.enumValue = *member;
    } else if (const auto* text = std::get_if<std::string>(&scalar)) {
        value.stringValue = text->c_str();
    } else {
        std::vector<YaltOamSpiMoNamedAttribute_3T> members;
        for (const MoNamedValue& named : std::get<std::vector<MoNamedValue>>(scalar)) {
            members.push_back({named.name.c_str(), toC(named.value)});
        }
        memberArrays.push_back(std::move(members));
        structs.push_back({static_cast<std::uint32_t>(memberArrays.back().size()), memberArrays.back().data()});
        value.structValue = &structs.back();
    }
    return value;
}

}  // namespace ZorvInput
