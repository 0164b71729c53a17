/// The model repository as the C table ZorvOamSpiModelRepository_1T.
#pragma once

#include "services/TableBinding.hpp"
#include "services/modelrepository/ModelRepository.hpp"

namespace ZorvNode {

class ModelRepositoryTable : TableBinding<ModelRepository> {
public:
    explicit ModelRepositoryTable(ModelRepository& repository) : TableBinding(repository) {}

    static const ZorvOamSpiModelRepository_1T* table();
};

}  // namespace ZorvNode
