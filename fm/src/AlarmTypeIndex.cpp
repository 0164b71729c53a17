#include "AlarmTypeIndex.hpp"

#include "Logging.hpp"
#include "MoAccessor.hpp"

namespace ZorvFm {

void AlarmTypeIndex::clear()
{
    modelDns.clear();
    types.clear();
    complete = false;
}

void AlarmTypeIndex::read(Zorv::MoAccessor& accessor, std::list<std::string> models, bool areAllModels)
{
    clear();
    complete = areAllModels;
    modelDns = std::move(models);
    std::size_t model = 0;
    for (const std::string& modelDn : modelDns) {
        readModel(accessor, model++, modelDn);
    }
}

void AlarmTypeIndex::readModel(Zorv::MoAccessor& accessor, std::size_t model, const std::string& modelDn)
{
    try {
        std::list<std::string> typeDns;
        accessor.getChildren(modelDn, "FmAlarmType", typeDns);
        for (const std::string& typeDn : typeDns) {
            readType(accessor, model, typeDn);
        }
    } catch (const std::exception& e) {
        reportFailure(e.what());
    }
}

void AlarmTypeIndex::readType(Zorv::MoAccessor& accessor, std::size_t model, const std::string& typeDn)
{
    try {
        const auto majorType = accessor.getAttr<std::uint32_t>(typeDn, "majorType");
        const auto minorType = accessor.getAttr<std::uint32_t>(typeDn, "minorType");
        types.try_emplace({majorType, minorType}, Place{model, typeDn});
    } catch (const std::exception& e) {
        reportFailure(e.what());
    }
}

void AlarmTypeIndex::reportFailure(const char* reason)
{
    ZORV_ERROR("Could not access MO, reason %s", reason);
    complete = false;
}

std::string AlarmTypeIndex::find(std::uint32_t majorType, std::uint32_t minorType) const
{
    const auto type = types.find({majorType, minorType});
    std::size_t model = 0;
    for (const std::string& modelDn : modelDns) {
        ZORV_TRACE("Checking '%s' for alarms", modelDn.c_str());
        if (type != types.end() && type->second.model == model++) {
            return type->second.typeDn;
        }
    }
    return {};
}

}  // namespace ZorvFm
