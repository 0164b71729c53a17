/// Attribute values across the C border.
///
/// Failure: ValueError from fromC.
#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "model/Model.hpp"

namespace ZorvInput {

/// The owned copy of a value that came through a C table, checked against its attribute.
MoValue fromC(const AttributeDescription& attribute, const YaltOamSpiMoAttribute_3T& given);

/// Any value, unchecked: what a component answered.
MoValue copyOf(const YaltOamSpiMoAttribute_3T& given);

/// Checks an owned value against its attribute: type, number of values, limits; an empty one is always right.
void checkValue(const AttributeDescription& attribute, const MoValue& value);

/// Values in their C form. They stay valid as long as this object.
class CValues {
public:
    /// A place of its own from the beginning, so that empty ones are told apart too.
    CValues() { attributes.reserve(1); }

    /// Attributes keep the order in which they are added.
    void add(std::shared_ptr<const MoValue> value);

    const YaltOamSpiMoAttribute_3T* data() const { return attributes.data(); }
    std::uint32_t size() const { return static_cast<std::uint32_t>(attributes.size()); }

private:
    YaltOamSpiMoAttribute_3T toC(const MoValue& value);
    YaltOamSpiMoAttributeValue_3T toC(const MoScalarT& scalar);

    std::vector<std::shared_ptr<const MoValue>> kept;  // the texts are theirs
    std::vector<YaltOamSpiMoAttribute_3T> attributes;
    std::deque<std::vector<YaltOamSpiMoAttributeValue_3T>> valueArrays;
    std::deque<std::vector<YaltOamSpiMoNamedAttribute_3T>> memberArrays;
    std::deque<YaltOamSpiMoStruct_3T> structs;
};

}  // namespace ZorvInput
