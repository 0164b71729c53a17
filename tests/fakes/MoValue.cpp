#include "MoValue.hpp"

#include <utility>

namespace ZorvFakes {

namespace {

bool isText(int32_t type)
{
    return type == YALT_MO_ATTRIBUTE_STRING || type == YALT_MO_ATTRIBUTE_REFERENCE;
}

bool isSigned(int32_t type)
{
    return type <= YALT_MO_ATTRIBUTE_INT64 || type == YALT_MO_ATTRIBUTE_ENUM;
}

MoValue number(int32_t type, uint64_t value)
{
    return {type, {MoScalar{value, {}, {}}}};
}

MoScalar scalarFromC(int32_t type, const YaltOamSpiMoAttributeValue_3T& value)
{
    MoScalar scalar;
    if (isText(type)) {
        scalar.text = value.stringValue;
    } else if (type == YALT_MO_ATTRIBUTE_STRUCT) {
        for (uint32_t i = 0; i < value.structValue->numberOfMembers; ++i) {
            const YaltOamSpiMoNamedAttribute_3T& member = value.structValue->members[i];
            scalar.members.push_back({member.name, MoValue::fromC(member.attribute)});
        }
    } else if (type == YALT_MO_ATTRIBUTE_BOOL) {
        scalar.number = value.boolValue ? 1 : 0;
    } else if (type == YALT_MO_ATTRIBUTE_ENUM) {
        scalar.number = static_cast<uint64_t>(static_cast<int64_t>(value.enumValue));
    } else {
        scalar.number = value.uintValue;
    }
    return scalar;
}

std::string scalarText(int32_t type, const MoScalar& scalar)
{
    if (isText(type)) {
        return "'" + scalar.text + "'";
    }
    if (type == YALT_MO_ATTRIBUTE_STRUCT) {
        std::string text;
        for (const MoMember& member : scalar.members) {
            text += (text.empty() ? "" : " ") + member.name + "=" + member.value.toString();
        }
        return "{" + text + "}";
    }
    if (type == YALT_MO_ATTRIBUTE_BOOL) {
        return scalar.number != 0 ? "true" : "false";
    }
    return isSigned(type) ? std::to_string(static_cast<int64_t>(scalar.number)) : std::to_string(scalar.number);
}

}  // namespace

MoValue MoValue::none(int32_t type)
{
    return {type, {}};
}

MoValue MoValue::uint32(uint32_t value)
{
    return number(YALT_MO_ATTRIBUTE_UINT32, value);
}

MoValue MoValue::uint64(uint64_t value)
{
    return number(YALT_MO_ATTRIBUTE_UINT64, value);
}

MoValue MoValue::int32(int32_t value)
{
    return number(YALT_MO_ATTRIBUTE_INT32, static_cast<uint64_t>(static_cast<int64_t>(value)));
}

MoValue MoValue::boolean(bool value)
{
    return number(YALT_MO_ATTRIBUTE_BOOL, value ? 1 : 0);
}

MoValue MoValue::enumeration(int32_t value)
{
    return number(YALT_MO_ATTRIBUTE_ENUM, static_cast<uint64_t>(static_cast<int64_t>(value)));
}

MoValue MoValue::text(const std::string& value)
{
    return texts({value});
}

MoValue MoValue::texts(const std::vector<std::string>& values)
{
    MoValue result = none(YALT_MO_ATTRIBUTE_STRING);
    for (const std::string& value : values) {
        result.values.push_back({0, value, {}});
    }
    return result;
}

MoValue MoValue::reference(const std::string& dn)
{
    return {YALT_MO_ATTRIBUTE_REFERENCE, {MoScalar{0, dn, {}}}};
}

MoValue MoValue::structure(const std::vector<MoMember>& members)
{
    return {YALT_MO_ATTRIBUTE_STRUCT, {MoScalar{0, {}, members}}};
}

MoValue MoValue::fromC(const YaltOamSpiMoAttribute_3T& attribute)
{
    MoValue result = none(attribute.type);
    for (uint32_t i = 0; i < attribute.numberOfValues; ++i) {
        result.values.push_back(scalarFromC(attribute.type, attribute.values[i]));
    }
    return result;
}

std::string MoValue::toString() const
{
    if (values.empty()) {
        return "none";
    }
    std::string text;
    for (const MoScalar& scalar : values) {
        text += (text.empty() ? "" : ", ") + scalarText(type, scalar);
    }
    return values.size() == 1 ? text : "[" + text + "]";
}

// --- C form

struct MoCForm::Structure {
    std::vector<MoCForm> owned;
    std::vector<YaltOamSpiMoNamedAttribute_3T> members;
    YaltOamSpiMoStruct_3T form{};
};

MoCForm::MoCForm(MoValue value) : source(std::make_unique<const MoValue>(std::move(value)))
{
    for (const MoScalar& scalar : source->values) {
        values.push_back(toC(scalar));
    }
}

MoCForm::~MoCForm() = default;
MoCForm::MoCForm(MoCForm&&) noexcept = default;

YaltOamSpiMoAttribute_3T MoCForm::get() const
{
    return {source->type, static_cast<uint32_t>(values.size()), values.empty() ? nullptr : values.data()};
}

YaltOamSpiMoAttributeValue_3T MoCForm::toC(const MoScalar& scalar)
{
    YaltOamSpiMoAttributeValue_3T form{};
    if (isText(source->type)) {
        form.stringValue = scalar.text.c_str();
    } else if (source->type == YALT_MO_ATTRIBUTE_STRUCT) {
        auto structure = std::make_unique<Structure>();
        for (const MoMember& member : scalar.members) {
            structure->owned.emplace_back(member.value);
            structure->members.push_back({member.name.c_str(), structure->owned.back().get()});
        }
        structure->form = {static_cast<uint32_t>(structure->members.size()), structure->members.data()};
        form.structValue = &structure->form;
        structures.push_back(std::move(structure));
    } else if (source->type == YALT_MO_ATTRIBUTE_BOOL) {
        form.boolValue = scalar.number != 0;
    } else if (source->type == YALT_MO_ATTRIBUTE_ENUM) {
        form.enumValue = static_cast<int32_t>(scalar.number);
    } else {
        form.uintValue = scalar.number;
    }
    return form;
}

}  // namespace ZorvFakes
