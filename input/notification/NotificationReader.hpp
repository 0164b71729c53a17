/// FM notifications from JSON: what applications publish and scenarios play.
///
///     {"raise": {"dn": "ManagedElement=1,Port=4", "majorType": 32473, "minorType": 9, "severity": "MAJOR"}}
///
/// Failure: FieldError.
#pragma once

#include "notification/FmNotification.hpp"
#include "json/JsonFields.hpp"

namespace ZorvInput {

/// @param object has exactly one member of raise, clear and alert, maybe framework and version.
/// @param eventTime for a notification that names none; ns since 1970-01-01 UTC.
FmNotification readNotification(JsonFields& object, std::uint64_t eventTime);

/// The severity that a JSON name or number stands for. False when there is no such.
bool findSeverity(const std::string& name, std::int32_t& severity);

/// Its name, or the number of one that has none.
std::string severityText(std::int32_t severity);

}  // namespace ZorvInput
