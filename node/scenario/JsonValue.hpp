/// Attribute values from JSON.
///
/// Failure: ValueError.
#pragma once

#include <Poco/Dynamic/Var.h>

#include "model/Model.hpp"

namespace ZorvNode {

using namespace ZorvInput;

/// null is no value, an array a sequence, an object a structure.
MoValue fromJson(const AttributeDescription& attribute, const Poco::Dynamic::Var& json);

}  // namespace ZorvNode
