#include "services/log/LogService.hpp"

#include "LocalTime.hpp"
#include "files/LineText.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

std::string levelName(std::int32_t level)
{
    switch (level) {
    case ZORV_LOG_ERROR:
        return "ERROR";
    case ZORV_LOG_WARNING:
        return "WARNING";
    case ZORV_LOG_NOTICE:
        return "NOTICE";
    case ZORV_LOG_INFORMATION:
        return "INFORMATION";
    default:
        return "LEVEL " + std::to_string(level);
    }
}

}  // namespace

LogService::LogService(const std::string& directory, std::int32_t level, const Rotation& rotation)
    : systemLevel(level),
      alarmLevel(ZORV_LOG_INFORMATION),
      systemLog(directory + "/SystemLog.log", rotation),
      alarmLog(directory + "/FmAlarmLog.log", rotation),
      publications(directory + "/Publications.log", rotation)
{
}

ZorvReturnT LogService::getLevel(const std::string& logName, const std::int32_t** level) const
{
    if (logName == ZORV_LOG_SYSTEM) {
        *level = systemLevel.place();
    } else if (logName == ZORV_LOG_ALARM) {
        *level = alarmLevel.place();
    } else {
        return ZORV_RETURN_NOT_FOUND;
    }
    return ZORV_RETURN_OK;
}

ZorvReturnT LogService::write(const std::string& logName, std::int32_t level, const std::string& text)
{
    const std::int32_t* wanted = nullptr;
    if (getLevel(logName, &wanted) != ZORV_RETURN_OK) {
        return ZORV_RETURN_NOT_FOUND;
    }
    if (level > (logName == ZORV_LOG_SYSTEM ? systemLevel : alarmLevel).get()) {
        return ZORV_RETURN_OK;
    }
    bool written = false;
    if (logName == ZORV_LOG_SYSTEM) {
        ++numberOfTexts;
        written = write(systemLog, Zorv::localTimeText() + " " + levelName(level) + " " + toLineText(text));
    } else {
        ++numberOfRecords;
        written = write(alarmLog, text);
    }
    return written ? ZORV_RETURN_OK : ZORV_RETURN_FAILED;
}

void LogService::writePublication(const std::string& text)
{
    write(publications, Zorv::localTimeText() + " " + toLineText(text));
}

const LogTail* LogService::findTail(const std::string& name) const
{
    return name == "system"         ? &systemLog.tail
           : name == "alarms"       ? &alarmLog.tail
           : name == "publications" ? &publications.tail
                                    : nullptr;
}

bool LogService::write(Log& log, const std::string& text)
{
    log.tail.add(text);
    if (log.file.write(text)) {
        return true;
    }
    const std::lock_guard<std::mutex> lock(mutex);
    if (notice) {
        notice();
    }
    return false;
}

void LogService::whenLosing(std::function<void()> call)
{
    const std::lock_guard<std::mutex> lock(mutex);
    notice = std::move(call);
}

bool LogService::tryAgain()
{
    bool works = true;
    for (Log* const log : {&systemLog, &alarmLog, &publications}) {
        works = log->file.tryAgain() && works;
    }
    const std::uint64_t lost = getNumberLost();
    if (works && lost > lostBefore) {
        write(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE,
              "writing the logs works again, lost: " + std::to_string(lost - lostBefore));
        lostBefore = lost;
    }
    return works;
}

}  // namespace ZorvNode
