/// Reads one line of a scenario as an action.
///
/// Failure: ValueError.
#pragma once

#include "scenario/JsonFields.hpp"
#include "scenario/Scenario.hpp"

namespace ZorvNode {

/// @param startTime ns since 1970-01-01 UTC that `at` 0 stands for; 0: notifications carry no event time of their own.
ScenarioAction readAction(JsonFields fields, std::uint64_t startTime);

constexpr double longestScenario = 86400000;  ///< seconds

}  // namespace ZorvNode
