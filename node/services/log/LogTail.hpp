/// The latest lines of a log, for readers that follow it.
///
/// Lines count from 0 over the node's life. A reader that falls behind goes on with the oldest line that is kept.
///
/// Threads: any.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

namespace ZorvNode {

class LogTail {
public:
    static constexpr std::size_t keptLines = 1000;

    void add(const std::string& line);

    /// The position from which so many lines are left.
    std::uint64_t beginOf(std::uint64_t lines) const;

    /// The line at the position, or the oldest behind it, waiting for one if need be; position moves behind it. False:
    /// there was none.
    bool next(std::uint64_t& position, std::chrono::milliseconds patience, std::string& line) const;

private:
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::deque<std::string> lines;  // guarded by mutex
    std::uint64_t first = 0;        // guarded by mutex; number of lines.front()
};

}  // namespace ZorvNode
