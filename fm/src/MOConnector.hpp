/// Connects the component to the management information model: completes alarms from the alarm models, reads the
/// heartbeat interval, writes the summary attributes of the FM managed object.
///
/// Threads:   the worker's.
/// Ownership: cached alarm types are the connector's, until clearCache.
/// Failure:   no exception leaves it: what cannot be read or written is logged, and the alarm keeps the values that it has.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>
#include <utility>

#include "AlarmData.hpp"
#include "AlarmTypeIndex.hpp"
#include "ZorvReturn.h"

namespace Zorv {
class MoAccessor;
}

namespace ZorvFm {

class FmConfig;

class MOConnector {
public:
    /// How the connector opens the model for each of its operations.
    static constexpr std::int32_t lockPolicy = 1;       // ZORV_LOCK_POLICY_OPTIMISTIC
    static constexpr std::uint32_t accessTimeout = 60;  // s

    /// The DN of the FM managed object: found once per process, the default one until then.
    static std::string getFmDn(Zorv::MoAccessor& accessor);

    /// False, with an error line, when they cannot be read.
    static bool getAlarmModels(Zorv::MoAccessor& accessor, std::list<std::string>& models);

    /// The model's severities are 3 (critical) to 6 (warning). Any other throws Zorv::ZorvException.
    static std::uint32_t convertSeverityVESKToSpi(int value);

    /// Sets the alarm's severity from its type, if the model configures one. A clear stays a clear.
    static void applyConfiguredSeverity(Zorv::MoAccessor& accessor, const std::string& alarmTypeDn, AlarmData* alarm);

    /// The cached values of the alarm's type; null when it is not cached.
    const AlarmData* findAlarmType(const AlarmData& alarm) const;

    /// The model has changed.
    void clearCache();

    /// Both: true when the alarm's type was found.
    bool findAttrsInDbUpdateAlarm(Zorv::MoAccessor& accessor, AlarmData* alarm);
    bool findAttrsUpdateAlarm(Zorv::MoAccessor& accessor, AlarmData* alarm);

    /// Completes the alarm; one of a type that no model knows becomes an alert.
    void updateAlarm(AlarmData& alarm);

    /// Writes both values, and those counters that have changed since they were last written. 0 when all took effect.
    ZorvReturnT updateVeskAttributes(std::uint64_t lastSequenceNo, const std::string& lastChanged, unsigned total,
                                     unsigned critical, unsigned major, unsigned minor, unsigned warning);

    /// Reads the heartbeat interval.
    void updateConfiguration(FmConfig& config);

private:
    using TypeT = std::uint64_t;  // major type, then minor type

    static TypeT typeOf(const AlarmData& alarm) { return std::uint64_t{alarm.majorType} << 32U | alarm.minorType; }

    static void readType(Zorv::MoAccessor& accessor, const std::string& typeDn, AlarmData& alarm);
    void remember(const AlarmData& alarm);

    std::unordered_map<TypeT, AlarmData> typeCache;
    AlarmTypeIndex typeIndex;
};

}  // namespace ZorvFm
