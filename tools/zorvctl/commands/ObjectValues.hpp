/// Attribute values from the command line as JSON.
#pragma once

#include <string>
#include <vector>

#include "json/Json.hpp"

namespace ZorvCtl {

/// NAME=VALUE pairs as a JSON object. A value that begins with [, { or " is JSON; so are numbers, true, false and null,
/// except where the object has a text now. Everything else is a text.
/// @param present the object's attributes as they are; null for a new object. Throws ValueError.
std::string attributesJson(const std::vector<std::string>& pairs, const ZorvInput::JsonT& present);

}  // namespace ZorvCtl
