#include "FakeTrace.hpp"

#include "Levels.hpp"

namespace ZorvFakes {

namespace {

const YaltMwSpiTrace_1T theTable = {forward<&FakeTrace::getLevel>, forward<&FakeTrace::write>};

/// Never destroyed: threads and static objects may still read a level at exit.
Levels& levels()
{
    static auto* const theLevels = new Levels;
    return *theLevels;
}

std::string orEmpty(const char* text)
{
    return text ? text : "";
}

}  // namespace

FakeTrace::FakeTrace(Journal& theJournal) : Fake(theJournal, Topic::Trace)
{
    setLevels(YALT_TRACE_DETAILED);
}

const YaltMwSpiTrace_1T* FakeTrace::table()
{
    return &theTable;
}

void FakeTrace::setLevel(const std::string& group, int32_t level)
{
    levels().set(group, level);
}

void FakeTrace::setLevels(int32_t level)
{
    levels().setAll(level);
}

TraceLine FakeTrace::last() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return latest;
}

int32_t FakeTrace::getLevel(const char* group, const int32_t** level)
{
    const auto failure = planned(std::string("getLevel ") + group);
    if (failure) {
        return *failure;
    }
    *level = levels().place(group);
    return ZORV_RETURN_OK;
}

int32_t FakeTrace::write(const char* group, int32_t level, const char* file, uint32_t line, const char* function,
                         const char* text)
{
    const auto failure = planned(std::string("write ") + group);
    if (failure) {
        return *failure;
    }
    {
        const std::lock_guard<std::mutex> lock(mutex);
        latest = {group, level, orEmpty(file), line, orEmpty(function), text};
    }
    journal.record(Topic::Trace, "trace " + std::to_string(level) + " " + group + " " + text);
    return ZORV_RETURN_OK;
}

}  // namespace ZorvFakes
