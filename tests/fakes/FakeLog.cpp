#include "FakeLog.hpp"

#include "Levels.hpp"

namespace ZorvFakes {

namespace {

const ZorvMwSpiLog_1T theTable = {forward<&FakeLog::getLevel>, forward<&FakeLog::write>};

/// Never destroyed: threads and static objects may still read a level at exit.
Levels& levels()
{
    static auto* const theLevels = new Levels;
    return *theLevels;
}

std::string label(const std::string& logName)
{
    if (logName == ZORV_LOG_SYSTEM) {
        return "log";
    }
    return logName == ZORV_LOG_ALARM ? "record" : logName;
}

}  // namespace

FakeLog::FakeLog(Journal& theJournal) : Fake(theJournal, Topic::Log)
{
    setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_INFORMATION);
    setLevel(ZORV_LOG_ALARM, ZORV_LOG_INFORMATION);
}

const ZorvMwSpiLog_1T* FakeLog::table()
{
    return &theTable;
}

void FakeLog::setLevel(const std::string& logName, int32_t level)
{
    levels().set(logName, level);
}

int32_t FakeLog::getLevel(const char* logName, const int32_t** level)
{
    const auto failure = planned(std::string("getLevel ") + logName);
    if (failure) {
        return *failure;
    }
    if (!levels().exists(logName)) {
        return ZORV_RETURN_NOT_FOUND;
    }
    *level = levels().place(logName);
    return ZORV_RETURN_OK;
}

int32_t FakeLog::write(const char* logName, int32_t level, const char* text)
{
    const std::string name = logName;
    const auto failure = planned("write " + name);
    if (failure) {
        return *failure;
    }
    if (!levels().exists(name)) {
        return ZORV_RETURN_NOT_FOUND;
    }
    journal.record(name == ZORV_LOG_ALARM ? Topic::Record : Topic::Log,
                   label(name) + " " + std::to_string(level) + " " + text);
    return ZORV_RETURN_OK;
}

}  // namespace ZorvFakes
