/// The attributes of the managed object class "FmAlarm", made from an alarm.
///
/// Threads:   any; no state.
/// Ownership: what is not part of the alarm is made in the memory given; texts may be the alarm's own.
/// Failure:   std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>

#include "AlarmData.hpp"
#include "AutoMemory.hpp"
#include "YaltOamSpiManagedObject_3.h"

namespace ZorvFm {
namespace FmAlarmAttributes {

/// False when the class has no such attribute.
/// @param alarm outlives the attribute.
/// @param next where the attribute's name is looked for first, and then that of the next one; 0 at first.
bool read(const AlarmData& alarm, const char* attributeName, std::size_t& next, Zorv::AutoMemory& memory,
          YaltOamSpiMoAttribute_3T& attribute);

/// The severity as the class's enumeration knows it.
std::int32_t convertSeverity(std::int32_t severity);

}  // namespace FmAlarmAttributes
}  // namespace ZorvFm
