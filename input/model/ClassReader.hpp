/// Reads the enumerations, structures and classes of a model file.
///
/// Failure: InputError.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "files/XmlTree.hpp"
#include "model/Model.hpp"

namespace ZorvInput {

class ClassReader {
public:
    ClassReader(const std::string& path, Model& growingModel) : file(path), model(growingModel) {}

    /// An "enum", "struct" or "class" element.
    void read(const XmlElement& element);

private:
    void readEnum(const XmlElement& element);
    void readMember(const XmlElement& element, EnumDescription& enumeration);
    void readStruct(const XmlElement& element);
    void readClass(const XmlElement& element);
    void readParents(const XmlElement& element, ClassDescription& description) const;

    std::vector<AttributeDescription> readAttributes(const XmlElement& element, bool ofClass) const;
    AttributeDescription readAttribute(const XmlElement& element, bool ofClass) const;
    void readType(const XmlElement& element, AttributeDescription& attribute) const;
    void readClassFacets(const XmlElement& element, AttributeDescription& attribute) const;
    std::string newTypeName(const XmlElement& element) const;

    const std::string file;
    Model& model;
    std::map<std::string, std::shared_ptr<const EnumDescription>> enums;
    std::map<std::string, std::shared_ptr<const StructDescription>> structs;
};

}  // namespace ZorvInput
