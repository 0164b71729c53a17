/// The model repository: the classes of the model in use, in their C form.
///
/// Descriptions once handed out stay valid for the life of the repository, also when the model has changed since.
///
/// Threads: any.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>

#include "ZorvOamSpiModelRepository_1.h"
#include "model/Model.hpp"

namespace ZorvNode {

using namespace ZorvInput;

class ModelRepository {
public:
    explicit ModelRepository(std::shared_ptr<const Model> model) { use(std::move(model)); }

    void use(std::shared_ptr<const Model> model);

    /// -2 no such class.
    ZorvReturnT getClass(const std::string& className, const ZorvOamSpiModelClass_1T** description) const;

private:
    /// One class; the texts are the model's, or its own.
    struct Described {
        std::string name;
        std::vector<std::string> childNames;
        std::vector<const char*> childClasses;
        std::vector<ZorvOamSpiModelAttribute_1T> attributes;
        ZorvOamSpiModelClass_1T description{};
    };

    using ClassesT = std::map<std::string, Described>;

    static void describe(const Model& model, const std::string& className, ClassesT& classes);

    mutable std::mutex mutex;
    std::deque<ClassesT> generations;                 // guarded by mutex; the last one is in use
    std::deque<std::shared_ptr<const Model>> models;  // guarded by mutex
};

}  // namespace ZorvNode
