/// Reads the objects of a model file into a tree.
///
/// Failure: InputError.
#pragma once

#include <string>

#include "files/XmlTree.hpp"
#include "model/MoTree.hpp"
#include "model/Model.hpp"

namespace ZorvInput {

class ObjectReader {
public:
    ObjectReader(const std::string& path, const Model& finishedModel, MoTree& growingTree)
        : file(path),
          model(finishedModel),
          tree(growingTree)
    {
    }

    /// An "object" element with everything in it; enclosingDn is "" at the top.
    void read(const XmlElement& element, const std::string& enclosingDn);

private:
    const ClassDescription& checkPlace(const std::string& dn) const;
    void readAttribute(const XmlElement& element, const ClassDescription& description, MoInstance& instance);
    MoScalarT readScalar(const XmlElement& element, const AttributeDescription& attribute) const;
    MoScalarT readStruct(const XmlElement& element, const StructDescription& structure) const;

    const std::string file;
    const Model& model;
    MoTree& tree;
};

/// Gives attributes without a value their defaults. Throws ValueError when a mandatory one is left without.
void completeAttributes(const ClassDescription& description, MoInstance& instance);

}  // namespace ZorvInput
