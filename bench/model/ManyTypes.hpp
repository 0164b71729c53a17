/// The example's model with a thousand alarm types more, all alike: stateful, without a severity of their own.
#pragma once

#include <cstdint>
#include <string>

#include "model/ModelReader.hpp"

namespace ZorvBench {

constexpr std::uint32_t majorTypeOfMany = 32473;
constexpr std::uint32_t firstOfManyTypes = 10000;
constexpr std::uint32_t numberOfManyTypes = 1000;
constexpr std::uint64_t alarmsOfType = 100;

/// A hundred alarms in a row have one type.
constexpr std::uint32_t typeOfMany(std::uint64_t alarm)
{
    return firstOfManyTypes + static_cast<std::uint32_t>(alarm / alarmsOfType % numberOfManyTypes);
}

/// Failure: std::exception.
ZorvInput::ModelFile modelWithManyTypes(const std::string& path);

}  // namespace ZorvBench
