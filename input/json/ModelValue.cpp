#include "json/ModelValue.hpp"

#include "model/ValueText.hpp"
#include "json/JsonFields.hpp"

namespace ZorvInput {

namespace {

MoScalarT scalarFromJson(const AttributeDescription& attribute, const JsonT& json)
{
    if (attribute.type == YALT_MO_ATTRIBUTE_STRUCT) {
        if (!json.IsObject()) {
            throw ValueError("not an object for attribute " + attribute.name, jsonText(json));
        }
        JsonFields fields(json);
        std::vector<MoNamedValue> members;
        for (const AttributeDescription& member : attribute.structure->members) {
            const char* const name = member.name.c_str();
            const MoValue none{member.type, {}};
            members.push_back({member.name, fields.has(name) ? fromJson(member, fields.get(name)) : none});
        }
        fields.expectNoOther();
        return members;
    }
    const bool isText = attribute.type == YALT_MO_ATTRIBUTE_STRING || attribute.type == YALT_MO_ATTRIBUTE_REFERENCE;
    const bool mayBeText = isText || attribute.type == YALT_MO_ATTRIBUTE_ENUM;
    if (json.IsString() ? !mayBeText : isText) {
        throw ValueError((isText ? "not a text" : "a text, not a " + attribute.typeName + ",") +
                             std::string(" for attribute ") + attribute.name,
                         jsonText(json));
    }
    return parseScalar(attribute, jsonText(json));
}

/// Writes a scalar of an attribute; one overload for each kind.
struct ScalarWriter {
    JsonWriter& json;
    const AttributeDescription& attribute;

    void operator()(std::int64_t number) const { json.value(number); }
    void operator()(std::uint64_t number) const { json.value(number); }
    void operator()(bool flag) const { json.value(flag); }
    void operator()(const std::string& text) const { json.value(text); }

    void operator()(std::int32_t member) const
    {
        const std::string* name = attribute.enumeration ? attribute.enumeration->findName(member) : nullptr;
        name != nullptr ? json.value(*name) : json.value(member);
    }

    void operator()(const std::vector<MoNamedValue>& members) const
    {
        json.beginObject();
        for (const MoNamedValue& member : members) {
            for (const AttributeDescription& description : attribute.structure->members) {
                if (description.name == member.name) {
                    json.key(member.name);
                    writeJson(json, description, member.value);
                }
            }
        }
        json.endObject();
    }
};

}  // namespace

MoValue fromJson(const AttributeDescription& attribute, const JsonT& json)
{
    MoValue value{attribute.type, {}};
    if (json.IsNull()) {
        return value;
    }
    if (!json.IsArray()) {
        value.values.push_back(scalarFromJson(attribute, json));
        return value;
    }
    if (!attribute.isSequence) {
        throw ValueError("not a sequence, attribute " + attribute.name, jsonText(json));
    }
    for (const JsonT& entry : json.GetArray()) {
        value.values.push_back(scalarFromJson(attribute, entry));
    }
    return value;
}

void writeJson(JsonWriter& json, const AttributeDescription& attribute, const MoValue& value)
{
    const ScalarWriter writer{json, attribute};
    if (!attribute.isSequence) {
        value.values.empty() ? static_cast<void>(json.null()) : std::visit(writer, value.values.front());
        return;
    }
    json.beginArray();
    for (const MoScalarT& scalar : value.values) {
        std::visit(writer, scalar);
    }
    json.endArray();
}

}  // namespace ZorvInput
