/// Reads a model file (docs/formats/model.md): types, classes and objects, checked as a whole.
///
/// Failure: InputError at the first thing that is wrong.
#pragma once

#include <memory>
#include <string>

#include "model/MoTree.hpp"
#include "model/Model.hpp"

namespace ZorvInput {

struct ModelFile {
    std::shared_ptr<const Model> model;
    MoTree tree;
};

ModelFile readModel(const std::string& path);

}  // namespace ZorvInput
