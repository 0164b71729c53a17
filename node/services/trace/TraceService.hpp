/// The trace of the node: one file, one line per trace, by group and level. All groups are off until they are turned on.
///
/// Threads:   any.
/// Failure:   return codes of YaltMwSpiTrace_1T.
#pragma once

#include <map>
#include <mutex>
#include <string>

#include "YaltMwSpiTrace_1.h"
#include "services/LevelCell.hpp"
#include "services/log/RotatingFile.hpp"

namespace ZorvNode {

/// Where a trace was written.
struct TraceLocation {
    std::string file;
    std::uint32_t line = 0;
    std::string function;
};

class TraceService {
public:
    static constexpr std::size_t groupBound = 256;

    /// @param levels level by group name; others are off.
    TraceService(const std::string& filePath, const Rotation& rotation, std::map<std::string, std::int32_t> levels);

    /// 0 and the place of the group's level; -10 too many groups.
    ZorvReturnT getLevel(const std::string& group, const std::int32_t** level);

    ZorvReturnT setLevel(const std::string& group, std::int32_t level);

    /// Of all groups that are known: configured, set or in use.
    std::map<std::string, std::int32_t> getLevels();

    /// 0 taken or not wanted, -1 lost, -10 too many groups.
    ZorvReturnT write(const std::string& group, std::int32_t level, const TraceLocation& location,
                      const std::string& text);

private:
    LevelCell* find(const std::string& group);

    const std::map<std::string, std::int32_t> configured;
    std::mutex mutex;
    std::map<std::string, LevelCell> groups;  // guarded by mutex; entries stay
    RotatingFile file;
};

}  // namespace ZorvNode
