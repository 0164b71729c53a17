#include "FmModel.hpp"

namespace ZorvFakes {

FmModel::FmModel(FakeManagedObjects& theObjects) : objects(theObjects)
{
}

void FmModel::plant(uint32_t heartbeatInterval)
{
    objects.plant(elementDn, {{"externalId", MoValue::none(YALT_MO_ATTRIBUTE_STRING)}});
    objects.plant(std::string(elementDn) + ",SystemFunctions=1");
    objects.plant(fmDn, {{"heartbeatInterval", MoValue::uint32(heartbeatInterval)},
                         {"lastSequenceNo", MoValue::uint64(0)},
                         {"lastChanged", MoValue::text("")},
                         {"totalActive", MoValue::uint32(0)},
                         {"sumCritical", MoValue::uint32(0)},
                         {"sumMajor", MoValue::uint32(0)},
                         {"sumMinor", MoValue::uint32(0)},
                         {"sumWarning", MoValue::uint32(0)}});
}

void FmModel::setExternalId(const std::optional<std::string>& externalId)
{
    objects.plant(elementDn,
                  {{"externalId", externalId ? MoValue::text(*externalId) : MoValue::none(YALT_MO_ATTRIBUTE_STRING)}});
}

void FmModel::setHeartbeatInterval(const std::optional<uint32_t>& seconds)
{
    objects.plant(
        fmDn, {{"heartbeatInterval", seconds ? MoValue::uint32(*seconds) : MoValue::none(YALT_MO_ATTRIBUTE_UINT32)}});
}

std::string FmModel::plantModel(const std::string& name)
{
    std::string dn = std::string(fmDn) + ",FmAlarmModel=" + name;
    objects.plant(dn);
    return dn;
}

std::string FmModel::plantType(const std::string& model, const std::string& name, const FmAlarmTypeSpec& type)
{
    std::string dn = plantModel(model) + ",FmAlarmType=" + name;
    objects.plant(dn, {{"majorType", MoValue::uint32(type.majorType)},
                       {"minorType", MoValue::uint32(type.minorType)},
                       {"isStateful", MoValue::boolean(type.isStateful)},
                       {"eventType", MoValue::enumeration(type.eventType)},
                       {"specificProblem", MoValue::text(type.specificProblem)},
                       {"probableCause", MoValue::uint32(type.probableCause)},
                       {"additionalText", MoValue::text(type.additionalText)},
                       {"configuredSeverity", type.configuredSeverity ? MoValue::enumeration(*type.configuredSeverity)
                                                                      : MoValue::none(YALT_MO_ATTRIBUTE_ENUM)}});
    return dn;
}

std::string FmModel::summary() const
{
    std::string text;
    for (const char* name :
         {"lastSequenceNo", "lastChanged", "totalActive", "sumCritical", "sumMajor", "sumMinor", "sumWarning"}) {
        const auto value = objects.value(fmDn, name);
        text += (text.empty() ? "" : " ") + std::string(name) + "=" + (value ? value->toString() : "missing");
    }
    return text;
}

}  // namespace ZorvFakes
