#include "MOConnector.hpp"

#include "FmConfig.hpp"
#include "Logging.hpp"
#include "MoAccessor.hpp"
#include "ZorvException.hpp"

namespace ZorvFm {
namespace {

const std::string fmClassPath = "ManagedElement,SystemFunctions,Fm";
const std::string defaultFmDn = "ManagedElement=1,SystemFunctions=1,Fm=1";

std::string knownFmDn;  // empty until the first successful look-up

/// The additional text of a type is read with the rest, though nothing uses it; a type without one is as good.
void readTypeText(Zorv::MoAccessor& accessor, const std::string& typeDn)
{
    try {
        accessor.getOptionalAttr<std::string>(typeDn, "additionalText");
    } catch (const std::exception& e) {
        ZORV_TRACE("No additional text in '%s', reason %s", typeDn.c_str(), e.what());
    }
}

}  // namespace

std::string MOConnector::getFmDn(Zorv::MoAccessor& accessor)
{
    if (knownFmDn.empty()) {
        std::string dn;
        ZorvReturnT result = ZORV_RETURN_FAILED;
        try {
            result = accessor.getFirstMoInstance(fmClassPath, dn);
        } catch (const std::exception& e) {
            ZORV_TRACE("Could not look for the FM base MO, reason %s", e.what());
        }
        if (result != ZORV_RETURN_OK) {
            ZORV_ERROR("Failed to get FM base MO");
            return defaultFmDn;
        }
        knownFmDn = dn;
    }
    return knownFmDn;
}

bool MOConnector::getAlarmModels(Zorv::MoAccessor& accessor, std::list<std::string>& models)
{
    try {
        accessor.getChildren(getFmDn(accessor), "FmAlarmModel", models);
        return true;
    } catch (const std::exception& e) {
        ZORV_ERROR("Could not get alarm models, reason %s", e.what());
        return false;
    }
}

std::uint32_t MOConnector::convertSeverityVESKToSpi(int value)
{
    switch (value) {
    case 3:
        return YALT_FM_SEVERITY_CRITICAL;
    case 4:
        return YALT_FM_SEVERITY_MAJOR;
    case 5:
        return YALT_FM_SEVERITY_MINOR;
    case 6:
        return YALT_FM_SEVERITY_WARNING;
    default:
        throw Zorv::ZorvException("Wrong VESK severity value %u cannot be converted to SPI severity value",
                                  static_cast<unsigned>(value));
    }
}

void MOConnector::applyConfiguredSeverity(Zorv::MoAccessor& accessor, const std::string& alarmTypeDn, AlarmData* alarm)
{
    const auto configured = accessor.getOptionalAttr<Zorv::Enumeration>(alarmTypeDn, "configuredSeverity");
    if (!configured) {
        alarm->hasConfiguredSeverity = false;
        return;
    }
    try {
        alarm->configuredSeverity = convertSeverityVESKToSpi(configured->value);
        alarm->hasConfiguredSeverity = true;
        if (alarm->severity != YALT_FM_SEVERITY_CLEARED) {
            alarm->severity = static_cast<std::int32_t>(alarm->configuredSeverity);
        }
    } catch (const Zorv::ZorvException& e) {
        ZORV_WARNING("%s", e.what());
    }
}

const AlarmData* MOConnector::findAlarmType(const AlarmData& alarm) const
{
    const auto cached = typeCache.find(typeOf(alarm));
    return cached == typeCache.end() ? nullptr : &cached->second;
}

void MOConnector::clearCache()
{
    typeCache.clear();
    typeIndex.clear();
}

bool MOConnector::findAttrsInDbUpdateAlarm(Zorv::MoAccessor& accessor, AlarmData* alarm)
{
    if (!typeIndex.isComplete()) {
        std::list<std::string> models;
        const bool modelsRead = getAlarmModels(accessor, models);
        typeIndex.read(accessor, std::move(models), modelsRead);
    }
    const std::string typeDn = typeIndex.find(alarm->majorType, alarm->minorType);
    if (typeDn.empty()) {
        return false;
    }
    ZORV_TRACE("Found correct alarm '%s'.", typeDn.c_str());
    try {
        readType(accessor, typeDn, *alarm);
        remember(*alarm);
    } catch (const std::exception& e) {
        ZORV_ERROR("Error updating alarm with information from the model (%s)", e.what());
    }
    return true;
}

void MOConnector::readType(Zorv::MoAccessor& accessor, const std::string& typeDn, AlarmData& alarm)
{
    alarm.stateful = accessor.getAttr<bool>(typeDn, "isStateful");
    alarm.eventType = accessor.getAttr<Zorv::Enumeration>(typeDn, "eventType").value;
    alarm.specificProblem = accessor.getAttr<std::string>(typeDn, "specificProblem");
    alarm.probableCause = accessor.getAttr<std::uint32_t>(typeDn, "probableCause");
    readTypeText(accessor, typeDn);
    applyConfiguredSeverity(accessor, typeDn, &alarm);
}

/// The values of the type alone, without the texts of the alarm that asked first.
void MOConnector::remember(const AlarmData& alarm)
{
    AlarmData type;
    type.majorType = alarm.majorType;
    type.minorType = alarm.minorType;
    type.stateful = alarm.stateful;
    type.eventType = alarm.eventType;
    type.specificProblem = alarm.specificProblem;
    type.probableCause = alarm.probableCause;
    type.hasConfiguredSeverity = alarm.hasConfiguredSeverity;
    type.configuredSeverity = alarm.configuredSeverity;
    typeCache[typeOf(alarm)] = type;
}

bool MOConnector::findAttrsUpdateAlarm(Zorv::MoAccessor& accessor, AlarmData* alarm)
{
    ZORV_TRACE(" >> ");
    const AlarmData* type = findAlarmType(*alarm);
    if (type == nullptr) {
        ZORV_TRACE("AlarmType cache miss for type %u %u", alarm->majorType, alarm->minorType);
        return findAttrsInDbUpdateAlarm(accessor, alarm);
    }
    alarm->stateful = type->stateful;
    alarm->eventType = type->eventType;
    alarm->specificProblem = type->specificProblem;
    alarm->probableCause = type->probableCause;
    if (alarm->severity != YALT_FM_SEVERITY_CLEARED && type->hasConfiguredSeverity) {
        alarm->severity = static_cast<std::int32_t>(type->configuredSeverity);
    }
    ZORV_TRACE(" << ");
    return true;
}

void MOConnector::updateAlarm(AlarmData& alarm)
{
    ZORV_TRACE(" >> ");
    Zorv::MoAccessor accessor(lockPolicy, accessTimeout);
    if (findAttrsUpdateAlarm(accessor, &alarm)) {
        ZORV_TRACE("Alarm (%s) found", alarm.toString().c_str());
    } else {
        ZORV_WARNING("Could not find alarm (%s)", alarm.toString().c_str());
        alarm.specificProblem = "FM Unknown Alarm";
        alarm.stateful = false;
        if (alarm.severity == YALT_FM_SEVERITY_CLEARED) {
            alarm.severity = YALT_FM_SEVERITY_WARNING;
            alarm.originalSeverity = YALT_FM_SEVERITY_WARNING;
            ZORV_WARNING("Severity cleared for this unknown alarm is changed to warning: %s", alarm.toString().c_str());
        }
    }
    accessor.close();
    ZORV_TRACE(" << ");
}

void MOConnector::updateConfiguration(FmConfig& config)
{
    ZORV_TRACE(" >> ");
    Zorv::MoAccessor accessor(lockPolicy, accessTimeout);
    try {
        const std::string fmDn = getFmDn(accessor);
        const auto interval = accessor.getOptionalAttr<std::uint32_t>(fmDn, "heartbeatInterval");
        if (interval && *interval != 0) {
            config.setHeartbeatInterval(*interval);
        }
    } catch (const std::exception& e) {
        ZORV_ERROR("Failed to retrieve values from MO! reason %s", e.what());
    }
    accessor.close();
    ZORV_TRACE(" << ");
}

}  // namespace ZorvFm
