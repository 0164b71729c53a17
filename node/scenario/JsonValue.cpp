#include "scenario/JsonValue.hpp"

#include <Poco/JSON/Array.h>
#include <Poco/JSON/Object.h>

#include "files/InputError.hpp"
#include "model/ValueText.hpp"
#include "scenario/JsonFields.hpp"

namespace ZorvNode {

namespace {

using ArrayT = Poco::JSON::Array::Ptr;
using ObjectT = Poco::JSON::Object::Ptr;

MoScalarT scalarFromJson(const AttributeDescription& attribute, const Poco::Dynamic::Var& json)
{
    if (attribute.type == YALT_MO_ATTRIBUTE_STRUCT) {
        if (json.type() != typeid(ObjectT)) {
            throw ValueError("not an object for attribute " + attribute.name, jsonText(json));
        }
        JsonFields fields(json.extract<ObjectT>(), attribute.name + ".");
        std::vector<MoNamedValue> members;
        for (const AttributeDescription& member : attribute.structure->members) {
            const MoValue none{member.type, {}};
            members.push_back(
                {member.name, fields.has(member.name) ? fromJson(member, fields.get(member.name)) : none});
        }
        fields.expectNoOther();
        return members;
    }
    const bool isText = attribute.type == YALT_MO_ATTRIBUTE_STRING || attribute.type == YALT_MO_ATTRIBUTE_REFERENCE;
    const bool mayBeText = isText || attribute.type == YALT_MO_ATTRIBUTE_ENUM;
    if (isJsonText(json) ? !mayBeText : isText) {
        throw ValueError("wrong kind of value for attribute " + attribute.name, jsonText(json));
    }
    return parseScalar(attribute, jsonText(json));
}

}  // namespace

MoValue fromJson(const AttributeDescription& attribute, const Poco::Dynamic::Var& json)
{
    MoValue value{attribute.type, {}};
    if (json.isEmpty()) {
        return value;
    }
    if (json.type() != typeid(ArrayT)) {
        value.values.push_back(scalarFromJson(attribute, json));
        return value;
    }
    if (!attribute.isSequence) {
        throw ValueError("not a sequence, attribute " + attribute.name, jsonText(json));
    }
    for (const Poco::Dynamic::Var& entry : *json.extract<ArrayT>()) {
        value.values.push_back(scalarFromJson(attribute, entry));
    }
    return value;
}

}  // namespace ZorvNode
