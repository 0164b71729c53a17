/// Reads a scenario file and checks it as a whole.
///
/// Failure: InputError at the first thing that is wrong.
#pragma once

#include "scenario/Scenario.hpp"

namespace ZorvNode {

constexpr std::size_t longestScenarioLine = 65536;
constexpr std::size_t deepestScenarioLine = 16;

Scenario readScenario(const std::string& path);

}  // namespace ZorvNode
