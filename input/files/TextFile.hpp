/// Files from outside, read as a whole, with a bound.
#pragma once

#include <string>

namespace ZorvInput {

constexpr std::size_t longestFile = 64U << 20U;

/// Throws InputError when it cannot be read, or is larger than longestFile.
std::string readFile(const std::string& path);

}  // namespace ZorvInput
