#include "services/modelrepository/ModelRepositoryTable.hpp"

namespace ZorvNode {

namespace {

ZorvReturnT getClass(const char* className, const ZorvOamSpiModelClass_1T** description)
{
    return TableBinding<ModelRepository>::call("getClass", [&](ModelRepository& repository) {
        return className != nullptr && description != nullptr ? repository.getClass(className, description)
                                                              : ZORV_RETURN_FAILED;
    });
}

}  // namespace

const ZorvOamSpiModelRepository_1T* ModelRepositoryTable::table()
{
    static const ZorvOamSpiModelRepository_1T functions = {&getClass};
    return &functions;
}

}  // namespace ZorvNode
