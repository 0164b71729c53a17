/// Reads one line of a scenario as an action.
///
/// Failure: ValueError; FieldError where a field is to blame.
#pragma once

#include <cstdint>

#include "scenario/Scenario.hpp"
#include "json/JsonFields.hpp"

namespace ZorvCtl {

/// @param startTime ns since 1970-01-01 UTC that `at` 0 stands for; 0: notifications carry no event time of their own.
ScenarioAction readAction(ZorvInput::JsonFields& fields, std::uint64_t startTime);

constexpr double longestScenario = 86400000;  ///< seconds

}  // namespace ZorvCtl
