/// Attribute values as texts, and their limits.
///
/// Failure: ValueError, which names attribute and value.
#pragma once

#include "model/Model.hpp"

namespace ZorvInput {

/// The scalar that a text stands for; not for structures.
MoScalarT parseScalar(const AttributeDescription& attribute, const std::string& text);

/// The name of a built-in type's code; false when there is none of that name.
bool findBuiltInType(const std::string& name, std::int32_t& type);

bool isSignedNumber(std::int32_t type);
bool isUnsignedNumber(std::int32_t type);

/// The bounds of a built-in number type.
NumberRange rangeOf(std::int32_t type);

/// Throws when a number is outside its attribute's range, or a number is no member of its enumeration.
void checkLimits(const AttributeDescription& attribute, const MoScalarT& scalar);

/// For people: enumerations by member name, sequences in brackets, structures as "{name=value, ...}".
std::string toText(const AttributeDescription& attribute, const MoValue& value);

}  // namespace ZorvInput
