/// What fuzz targets are made of: their entry point, and properties that end the program when they do not hold.
///
/// A target takes any bytes as one input and checks what has to be true of each. In the preset "fuzz" the fuzzer invents
/// the inputs; in all others Replay.cpp reads them from the target's corpus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace ZorvFuzz {

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
    return std::string(data, data + size);
}

/// @param property what has to hold, as a sentence.
inline void require(bool holds, const char* property)
{
    if (!holds) {
        std::fprintf(stderr, "Broken: %s\n", property);
        std::abort();
    }
}

inline void requireEqual(const std::string& expected, const std::string& actual, const char* property)
{
    if (expected != actual) {
        std::fprintf(stderr, "Expected:\n%s\nActual:\n%s\n", expected.c_str(), actual.c_str());
        require(false, property);
    }
}

}  // namespace ZorvFuzz
