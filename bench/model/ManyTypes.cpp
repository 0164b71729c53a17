#include "ManyTypes.hpp"

#include <memory>
#include <utility>

#include "YaltOamSpiManagedObject_3.h"

namespace ZorvBench {

namespace {

const std::string alarmModel = "ManagedElement=1,SystemFunctions=1,Fm=1,FmAlarmModel=many";

template <class ScalarT>
ZorvInput::MoValue valueOf(std::int32_t type, ScalarT scalar)
{
    return {type, {ZorvInput::MoScalarT(scalar)}};
}

ZorvInput::MoInstanceT alarmType(std::uint32_t minorType)
{
    auto type = std::make_shared<ZorvInput::MoInstance>();
    type->dn = alarmModel + ",FmAlarmType=" + std::to_string(minorType);
    type->attributes = {
        {"majorType", valueOf(YALT_MO_ATTRIBUTE_UINT32, std::uint64_t{majorTypeOfMany})},
        {"minorType", valueOf(YALT_MO_ATTRIBUTE_UINT32, std::uint64_t{minorType})},
        {"isStateful", valueOf(YALT_MO_ATTRIBUTE_BOOL, true)},
        {"eventType", valueOf(YALT_MO_ATTRIBUTE_ENUM, std::int32_t{2})},
        {"probableCause", valueOf(YALT_MO_ATTRIBUTE_UINT32, std::uint64_t{29})},
        {"specificProblem", valueOf(YALT_MO_ATTRIBUTE_STRING, std::string("Loss of Signal"))},
    };
    return type;
}

}  // namespace

ZorvInput::ModelFile modelWithManyTypes(const std::string& path)
{
    ZorvInput::ModelFile file = ZorvInput::readModel(path);
    auto model = std::make_shared<ZorvInput::MoInstance>();
    model->dn = alarmModel;
    file.tree.put(std::move(model));
    for (std::uint32_t i = 0; i < numberOfManyTypes; ++i) {
        file.tree.put(alarmType(firstOfManyTypes + i));
    }
    return file;
}

}  // namespace ZorvBench
