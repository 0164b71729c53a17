/// The logs of the node: "SystemLog", one line per text with time and level, "FmAlarmLog", records as they are given, and
/// the publications: who published how much, and when.
///
/// Threads:   any.
/// Failure:   return codes of ZorvMwSpiLog_1T.
#pragma once

#include <functional>
#include <mutex>

#include "ZorvMwSpiLog_1.h"
#include "services/LevelCell.hpp"
#include "services/log/LogTail.hpp"
#include "services/log/RotatingFile.hpp"

namespace ZorvNode {

class LogService {
public:
    /// @param directory where "SystemLog.log", "FmAlarmLog.log" and "Publications.log" lie; it has to exist.
    LogService(const std::string& directory, std::int32_t level, const Rotation& rotation);

    /// 0 and the place of the level; -2 no such log.
    ZorvReturnT getLevel(const std::string& logName, const std::int32_t** level) const;

    /// 0 taken or not wanted, -1 lost, -2 no such log.
    ZorvReturnT write(const std::string& logName, std::int32_t level, const std::string& text);

    void writePublication(const std::string& text);

    /// Called whenever a text or record is lost, on the thread that wrote it: it must not wait for anything.
    void whenLosing(std::function<void()> call);

    /// While texts are lost: writes the latest of each log, and tells how many were lost when that works. Whether it does.
    /// One thread.
    bool tryAgain();

    std::int32_t getSystemLevel() const { return systemLevel.get(); }
    void setSystemLevel(std::int32_t level) { systemLevel.set(level); }

    /// "system", "alarms" or "publications"; null for any other name.
    const LogTail* findTail(const std::string& name) const;

    std::uint64_t getNumberOfRecords() const { return numberOfRecords; }
    std::uint64_t getNumberOfTexts() const { return numberOfTexts; }
    std::uint64_t getNumberLost() const
    {
        return systemLog.file.getNumberOfFailures() + alarmLog.file.getNumberOfFailures() +
               publications.file.getNumberOfFailures();
    }

private:
    /// A file and its latest lines.
    struct Log {
        Log(const std::string& path, const Rotation& rotation) : file(path, rotation) {}

        RotatingFile file;
        LogTail tail;
    };

    bool write(Log& log, const std::string& text);

    LevelCell systemLevel;
    LevelCell alarmLevel;
    Log systemLog;
    Log alarmLog;
    Log publications;
    std::atomic<std::uint64_t> numberOfRecords{0};
    std::atomic<std::uint64_t> numberOfTexts{0};

    std::mutex mutex;
    std::function<void()> notice;  // guarded by mutex
    std::uint64_t lostBefore = 0;  // of whoever tries again; it was told that these are lost
};

}  // namespace ZorvNode
