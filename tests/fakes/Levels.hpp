/// Named levels that are read through pointers and live as long as the process.
///
/// Threads: any; the places are read and written atomically.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace ZorvFakes {

class Levels {
public:
    /// Gives the level to a name; a new name comes into being.
    void set(const std::string& name, int32_t level);

    /// Gives the level to all names that exist and to those that come.
    void setAll(int32_t level);

    /// The place of a name's level; a new name comes into being.
    const int32_t* place(const std::string& name);

    bool exists(const std::string& name) const;

private:
    mutable std::mutex mutex;
    int32_t initial = 0;                    // guarded by mutex
    std::map<std::string, int32_t> levels;  // guarded by mutex; nodes never move or go
};

}  // namespace ZorvFakes
