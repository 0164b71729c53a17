/// Attribute values of managed objects from JSON and to JSON.
///
/// Failure: ValueError.
#pragma once

#include "model/Model.hpp"
#include "json/Json.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvInput {

/// null is no value, an array a sequence, an object a structure; an enumeration by member name or number.
MoValue fromJson(const AttributeDescription& attribute, const JsonT& json);

/// The reverse; an enumeration by member name, or by number when it has none for it.
void writeJson(JsonWriter& json, const AttributeDescription& attribute, const MoValue& value);

}  // namespace ZorvInput
