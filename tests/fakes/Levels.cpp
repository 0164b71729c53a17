#include "Levels.hpp"

namespace ZorvFakes {

void Levels::set(const std::string& name, int32_t level)
{
    const std::lock_guard<std::mutex> lock(mutex);
    __atomic_store_n(&levels[name], level, __ATOMIC_RELAXED);
}

void Levels::setAll(int32_t level)
{
    const std::lock_guard<std::mutex> lock(mutex);
    initial = level;
    for (auto& [name, place] : levels) {
        __atomic_store_n(&place, level, __ATOMIC_RELAXED);
    }
}

const int32_t* Levels::place(const std::string& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    return &levels.emplace(name, initial).first->second;
}

bool Levels::exists(const std::string& name) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return levels.count(name) != 0;
}

}  // namespace ZorvFakes
