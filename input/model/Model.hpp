/// The management information model: classes, their attributes and types, and who is contained in whom.
///
/// Threads: unchangeable once it is built; readable from any thread.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/MoValue.hpp"

namespace ZorvInput {

struct EnumDescription {
    std::string name;
    std::vector<std::pair<std::string, std::int32_t>> members;

    const std::string* findName(std::int32_t value) const;
    bool findValue(const std::string& member, std::int32_t& value) const;
};

struct StructDescription;

/// Inclusive bounds of a number; which pair counts is the type's matter.
struct NumberRange {
    std::int64_t signedMin = 0;
    std::int64_t signedMax = 0;
    std::uint64_t unsignedMin = 0;
    std::uint64_t unsignedMax = 0;
};

struct AttributeDescription {
    std::string name;
    std::int32_t type = YALT_MO_ATTRIBUTE_STRING;
    std::string typeName;
    std::shared_ptr<const EnumDescription> enumeration;  ///< of an ENUM
    std::shared_ptr<const StructDescription> structure;  ///< of a STRUCT
    NumberRange range;
    bool isSequence = false;
    bool isReadOnly = false;
    bool isMandatory = false;
    bool notifies = true;  ///< its changes are configuration changes
    std::optional<MoValue> defaultValue;
};

struct StructDescription {
    std::string name;
    std::vector<AttributeDescription> members;
};

struct ClassDescription {
    std::string name;
    std::vector<std::string> parents;  ///< "" is the root
    std::string implementer;           ///< component whose objects these are; "": the node's own
    std::vector<AttributeDescription> attributes;

    const AttributeDescription* findAttribute(const std::string& attribute) const;
    bool canBeIn(const std::string& parentClass) const;
};

class Model {
public:
    void add(ClassDescription description);

    /// Null when there is no such class.
    const ClassDescription* findClass(const std::string& name) const;

    /// In the order of the file.
    const std::vector<ClassDescription>& getClasses() const { return classes; }

    /// Names of the classes contained in a class; "" for the root.
    std::vector<std::string> childClassesOf(const std::string& parentClass) const;

private:
    std::vector<ClassDescription> classes;
    std::map<std::string, std::size_t> positions;
};

bool operator==(const Model& left, const Model& right);

}  // namespace ZorvInput
