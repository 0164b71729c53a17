/// Reads a scenario file and checks it as a whole.
///
/// Failure: InputError at the first thing that is wrong.
#pragma once

#include "scenario/Scenario.hpp"

namespace ZorvCtl {

constexpr std::size_t longestScenarioLine = 65536;
constexpr unsigned deepestScenarioLine = 16;

Scenario readScenario(const std::string& path);

}  // namespace ZorvCtl
