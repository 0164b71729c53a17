/// Values of managed-object attributes, owned.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "YaltOamSpiManagedObject_3.h"

namespace ZorvInput {

struct MoNamedValue;

/// INT8 to INT64, UINT8 to UINT64, BOOL, ENUM, STRING and REFERENCE, STRUCT.
using MoScalarT = std::variant<std::int64_t, std::uint64_t, bool, std::int32_t, std::string, std::vector<MoNamedValue>>;

/// None, one, or a sequence.
struct MoValue {
    std::int32_t type = YALT_MO_ATTRIBUTE_STRING;
    std::vector<MoScalarT> values;
};

/// A member of a structure, or an attribute of an object.
struct MoNamedValue {
    std::string name;
    MoValue value;
};

inline bool operator==(const MoNamedValue& left, const MoNamedValue& right);

inline bool operator==(const MoValue& left, const MoValue& right)
{
    return left.type == right.type && left.values == right.values;
}

inline bool operator==(const MoNamedValue& left, const MoNamedValue& right)
{
    return left.name == right.name && left.value == right.value;
}

}  // namespace ZorvInput
