/// The logs of the node: "SystemLog", one line per text with time and level, and "FmAlarmLog", records as they are given.
///
/// Threads:   any.
/// Failure:   return codes of ZorvMwSpiLog_1T.
#pragma once

#include "ZorvMwSpiLog_1.h"
#include "services/LevelCell.hpp"
#include "services/log/RotatingFile.hpp"

namespace ZorvNode {

class LogService {
public:
    /// @param directory where "SystemLog.log" and "FmAlarmLog.log" lie; it has to exist.
    LogService(const std::string& directory, std::int32_t level, const Rotation& rotation);

    /// 0 and the place of the level; -2 no such log.
    ZorvReturnT getLevel(const std::string& logName, const std::int32_t** level) const;

    /// 0 taken or not wanted, -1 lost, -2 no such log.
    ZorvReturnT write(const std::string& logName, std::int32_t level, const std::string& text);

    std::uint64_t getNumberOfRecords() const { return numberOfRecords; }
    std::uint64_t getNumberOfTexts() const { return numberOfTexts; }
    std::uint64_t getNumberLost() const { return systemLog.getNumberOfFailures() + alarmLog.getNumberOfFailures(); }

private:
    LevelCell systemLevel;
    LevelCell alarmLevel;
    RotatingFile systemLog;
    RotatingFile alarmLog;
    std::atomic<std::uint64_t> numberOfRecords{0};
    std::atomic<std::uint64_t> numberOfTexts{0};
};

}  // namespace ZorvNode
