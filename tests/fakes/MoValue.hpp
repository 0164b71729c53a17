/// Attribute values as tests write them, and their way into and out of the published C form.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "YaltOamSpiManagedObject_3.h"

namespace ZorvFakes {

struct MoMember;

/// One value: a number (booleans and enumerations included), a text, or the members of a structure.
struct MoScalar {
    uint64_t number = 0;  ///< signed values sign-extended
    std::string text;
    std::vector<MoMember> members;
};

/// A typed attribute: no value, one, or a sequence.
struct MoValue {
    int32_t type = YALT_MO_ATTRIBUTE_STRING;
    std::vector<MoScalar> values;

    static MoValue none(int32_t type);
    static MoValue uint32(uint32_t value);
    static MoValue uint64(uint64_t value);
    static MoValue int32(int32_t value);
    static MoValue boolean(bool value);
    static MoValue enumeration(int32_t value);
    static MoValue text(const std::string& value);
    static MoValue texts(const std::vector<std::string>& values);
    static MoValue reference(const std::string& dn);
    static MoValue structure(const std::vector<MoMember>& members);

    /// The value read back from its C form.
    static MoValue fromC(const YaltOamSpiMoAttribute_3T& attribute);

    /// "5", "true", "'text'", "{name='x' value='y'}", "[1, 2]" for a sequence, "none" without a value.
    std::string toString() const;
};

struct MoMember {
    std::string name;
    MoValue value;
};

/// The C form of a value. Owns all that it points to.
class MoCForm {
public:
    explicit MoCForm(MoValue value);
    ~MoCForm();

    MoCForm(MoCForm&&) noexcept;
    MoCForm(const MoCForm&) = delete;
    MoCForm& operator=(const MoCForm&) = delete;
    MoCForm& operator=(MoCForm&&) = delete;

    YaltOamSpiMoAttribute_3T get() const;

private:
    struct Structure;

    YaltOamSpiMoAttributeValue_3T toC(const MoScalar& scalar);

    std::unique_ptr<const MoValue> source;  // where the texts live; its place must not change
    std::vector<YaltOamSpiMoAttributeValue_3T> values;
    std::vector<std::unique_ptr<Structure>> structures;
};

}  // namespace ZorvFakes
