/// A level that a C client reads in place, atomically, while the service changes it.
#pragma once

#include <cstdint>

namespace ZorvNode {

class LevelCell {
public:
    explicit LevelCell(std::int32_t initial) : level(initial) {}

    LevelCell(const LevelCell&) = delete;
    LevelCell& operator=(const LevelCell&) = delete;

    const std::int32_t* place() const { return &level; }

    std::int32_t get() const { return __atomic_load_n(&level, __ATOMIC_RELAXED); }
    void set(std::int32_t value) { __atomic_store_n(&level, value, __ATOMIC_RELAXED); }

private:
    std::int32_t level;
};

}  // namespace ZorvNode
