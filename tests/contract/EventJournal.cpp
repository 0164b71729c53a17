#include "EventJournal.hpp"

#include <algorithm>
#include <utility>

#include "Gate.hpp"

namespace ZorvTest {

namespace {

using LockT = std::unique_lock<std::mutex>;

std::size_t countIn(const EventJournal::LinesT& lines, const std::string& line)
{
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
}

}  // namespace

void EventJournal::write(const std::string& line)
{
    const LockT lock(mutex);
    written.push_back(line);
    grown.notify_all();
}

EventJournal::LinesT EventJournal::lines() const
{
    const LockT lock(mutex);
    return written;
}

EventJournal::LinesT EventJournal::take()
{
    const LockT lock(mutex);
    return std::exchange(written, {});
}

EventJournal::LinesT EventJournal::await(std::size_t number) const
{
    LockT lock(mutex);
    EXPECT_TRUE(grown.wait_for(lock, patience, [&] { return written.size() >= number; })) << "lines missing";
    return written;
}

void EventJournal::awaitLine(const std::string& line) const
{
    LockT lock(mutex);
    EXPECT_TRUE(grown.wait_for(lock, patience, [&] { return countIn(written, line) > 0; })) << "missing: " << line;
}

std::size_t EventJournal::count(const std::string& line) const
{
    const LockT lock(mutex);
    return countIn(written, line);
}

}  // namespace ZorvTest
