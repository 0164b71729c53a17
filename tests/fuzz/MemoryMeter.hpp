/// How much memory a piece of code takes at most, over what was allocated before: every allocation of the process counts,
/// also those inside libraries in C.
///
/// Threads: any; one meter at a time.
#pragma once

#include <cstddef>

namespace ZorvFuzz {

class MemoryMeter {
public:
    MemoryMeter();
    ~MemoryMeter();

    MemoryMeter(const MemoryMeter&) = delete;
    MemoryMeter& operator=(const MemoryMeter&) = delete;

    /// Bytes, since the construction. Where blocks do not grow in place, a growing one counts together with its successor.
    std::size_t getPeak() const;

    /// False with a sanitizer.
    static bool doBlocksGrowInPlace();
};

}  // namespace ZorvFuzz
