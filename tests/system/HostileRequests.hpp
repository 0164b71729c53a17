/// Requests that are wrong, each in one of many ways: none may be answered with success, none may do anything.
#pragma once

#include <random>
#include <string>

namespace ZorvTest {

/// What the node takes at most, in bytes; some requests are larger.
constexpr int hostileHeaderBound = 16384;
constexpr int hostileBodyBound = 65536;

/// All kinds come in turn with growing numbers.
std::string hostileRequest(std::size_t number, std::mt19937& random);

}  // namespace ZorvTest
