#include "model/ValueText.hpp"

#include <charconv>
#include <limits>

#include "files/InputError.hpp"

namespace ZorvInput {

namespace {

const std::pair<const char*, std::int32_t> builtInTypes[] = {
    {"int8", YALT_MO_ATTRIBUTE_INT8},           {"int16", YALT_MO_ATTRIBUTE_INT16},
    {"int32", YALT_MO_ATTRIBUTE_INT32},         {"int64", YALT_MO_ATTRIBUTE_INT64},
    {"uint8", YALT_MO_ATTRIBUTE_UINT8},         {"uint16", YALT_MO_ATTRIBUTE_UINT16},
    {"uint32", YALT_MO_ATTRIBUTE_UINT32},       {"uint64", YALT_MO_ATTRIBUTE_UINT64},
    {"bool", YALT_MO_ATTRIBUTE_BOOL},           {"string", YALT_MO_ATTRIBUTE_STRING},
    {"reference", YALT_MO_ATTRIBUTE_REFERENCE},
};

template <class NumberT>
NumberRange signedRange()
{
    return {std::numeric_limits<NumberT>::min(), std::numeric_limits<NumberT>::max(), 0, 0};
}

template <class NumberT>
NumberRange unsignedRange()
{
    return {0, 0, std::numeric_limits<NumberT>::min(), std::numeric_limits<NumberT>::max()};
}

template <class NumberT>
NumberT parseNumber(const AttributeDescription& attribute, const std::string& text)
{
    NumberT number{};
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || rest != end || (error != std::errc() && error != std::errc::result_out_of_range)) {
        throw ValueError("not a " + attribute.typeName + " for attribute " + attribute.name, text);
    }
    if (error == std::errc::result_out_of_range) {
        throw ValueError("value out of range for attribute " + attribute.name, text);
    }
    return number;
}

MoScalarT parseEnum(const AttributeDescription& attribute, const std::string& text)
{
    std::int32_t value = 0;
    if (attribute.enumeration->findValue(text, value)) {
        return value;
    }
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value);
    if (text.empty() || parsed.ptr != end || parsed.ec != std::errc() ||
        attribute.enumeration->findName(value) == nullptr) {
        throw ValueError("not a member of " + attribute.enumeration->name + " for attribute " + attribute.name, text);
    }
    return value;
}

bool parseBool(const AttributeDescription& attribute, const std::string& text)
{
    if (text != "true" && text != "false") {
        throw ValueError("not true or false for attribute " + attribute.name, text);
    }
    return text == "true";
}

template <class NumberT>
void checkBounds(const AttributeDescription& attribute, NumberT number, NumberT low, NumberT high)
{
    if (number < low || number > high) {
        throw ValueError("value out of range " + std::to_string(low) + " to " + std::to_string(high) +
                             " for attribute " + attribute.name,
                         std::to_string(number));
    }
}

std::string scalarText(const AttributeDescription& attribute, const MoScalarT& scalar);

std::string structText(const StructDescription& structure, const std::vector<MoNamedValue>& members)
{
    std::string text;
    for (std::size_t index = 0; index < members.size() && index < structure.members.size(); ++index) {
        text += (index > 0 ? ", " : "") + members[index].name + "=" +
                toText(structure.members[index], members[index].value);
    }
    return "{" + text + "}";
}

std::string scalarText(const AttributeDescription& attribute, const MoScalarT& scalar)
{
    if (const auto* number = std::get_if<std::int64_t>(&scalar)) {
        return std::to_string(*number);
    }
    if (const auto* number = std::get_if<std::uint64_t>(&scalar)) {
        return std::to_string(*number);
    }
    if (const auto* flag = std::get_if<bool>(&scalar)) {
        return *flag ? "true" : "false";
    }
    if (const auto* member = std::get_if<std::int32_t>(&scalar)) {
        const std::string* name = attribute.enumeration ? attribute.enumeration->findName(*member) : nullptr;
        return name != nullptr ? *name : std::to_string(*member);
    }
    if (const auto* text = std::get_if<std::string>(&scalar)) {
        return *text;
    }
    return attribute.structure ? structText(*attribute.structure, std::get<std::vector<MoNamedValue>>(scalar)) : "{}";
}

}  // namespace

bool findBuiltInType(const std::string& name, std::int32_t& type)
{
    for (const auto& [typeName, code] : builtInTypes) {
        if (name == typeName) {
            type = code;
            return true;
        }
    }
    return false;
}

bool isSignedNumber(std::int32_t type)
{
    return type >= YALT_MO_ATTRIBUTE_INT8 && type <= YALT_MO_ATTRIBUTE_INT64;
}

bool isUnsignedNumber(std::int32_t type)
{
    return type >= YALT_MO_ATTRIBUTE_UINT64 && type <= YALT_MO_ATTRIBUTE_UINT32;
}

NumberRange rangeOf(std::int32_t type)
{
    switch (type) {
    case YALT_MO_ATTRIBUTE_INT8:
        return signedRange<std::int8_t>();
    case YALT_MO_ATTRIBUTE_INT16:
        return signedRange<std::int16_t>();
    case YALT_MO_ATTRIBUTE_INT32:
        return signedRange<std::int32_t>();
    case YALT_MO_ATTRIBUTE_INT64:
        return signedRange<std::int64_t>();
    case YALT_MO_ATTRIBUTE_UINT8:
        return unsignedRange<std::uint8_t>();
    case YALT_MO_ATTRIBUTE_UINT16:
        return unsignedRange<std::uint16_t>();
    case YALT_MO_ATTRIBUTE_UINT32:
        return unsignedRange<std::uint32_t>();
    case YALT_MO_ATTRIBUTE_UINT64:
        return unsignedRange<std::uint64_t>();
    default:
        return {};
    }
}

MoScalarT parseScalar(const AttributeDescription& attribute, const std::string& text)
{
    MoScalarT scalar;
    if (isSignedNumber(attribute.type)) {
        scalar = parseNumber<std::int64_t>(attribute, text);
    } else if (isUnsignedNumber(attribute.type)) {
        scalar = parseNumber<std::uint64_t>(attribute, text);
    } else if (attribute.type == YALT_MO_ATTRIBUTE_BOOL) {
        scalar = parseBool(attribute, text);
    } else if (attribute.type == YALT_MO_ATTRIBUTE_ENUM) {
        scalar = parseEnum(attribute, text);
    } else {
        scalar = text;
    }
    checkLimits(attribute, scalar);
    return scalar;
}

void checkLimits(const AttributeDescription& attribute, const MoScalarT& scalar)
{
    const NumberRange& range = attribute.range;
    if (isSignedNumber(attribute.type)) {
        checkBounds(attribute, std::get<std::int64_t>(scalar), range.signedMin, range.signedMax);
    } else if (isUnsignedNumber(attribute.type)) {
        checkBounds(attribute, std::get<std::uint64_t>(scalar), range.unsignedMin, range.unsignedMax);
    } else if (attribute.type == YALT_MO_ATTRIBUTE_ENUM &&
               attribute.enumeration->findName(std::get<std::int32_t>(scalar)) == nullptr) {
        throw ValueError("not a member of " + attribute.enumeration->name + " for attribute " + attribute.name,
                         std::to_string(std::get<std::int32_t>(scalar)));
    }
}

std::string toText(const AttributeDescription& attribute, const MoValue& value)
{
    std::string text;
    for (const MoScalarT& scalar : value.values) {
        text += (text.empty() ? "" : ", ") + scalarText(attribute, scalar);
    }
    return attribute.isSequence && !value.values.empty() ? "[" + text + "]" : text;
}

}  // namespace ZorvInput
