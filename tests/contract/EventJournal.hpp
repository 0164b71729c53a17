/// What happened, in order, from any thread.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace ZorvTest {

class EventJournal {
public:
    using LinesT = std::vector<std::string>;

    void write(const std::string& line);

    LinesT lines() const;

    /// Everything so far, which is then forgotten.
    LinesT take();

    /// Waits until there are at least so many lines; fails the test when they do not come.
    LinesT await(std::size_t number) const;

    /// Waits for one line.
    void awaitLine(const std::string& line) const;

    std::size_t count(const std::string& line) const;

private:
    mutable std::mutex mutex;
    mutable std::condition_variable grown;
    LinesT written;  // guarded by mutex
};

}  // namespace ZorvTest
