/// Tells of a failure and of its end, once each, however often an operation is tried meanwhile.
///
/// Threads: any.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>

#include "LogSink.hpp"

namespace ZorvNode {

class FailureReport {
public:
    /// @param operation what fails, such as "writing the store"
    /// @param calm an operation works again when it has not failed for so long: failures come and go on a disk that is
    ///             almost full.
    FailureReport(LogSinkT logSink, std::string operation, std::chrono::milliseconds calm);

    void failed(const std::string& reason);
    void worked();

    bool isFailing() const;

    /// Called at each failure that is told, on the thread to which it happened: it must not wait for anything.
    void whenFailing(std::function<void()> call);

private:
    using ClockT = std::chrono::steady_clock;

    const LogSinkT log;
    const std::string what;
    const std::chrono::milliseconds calmTime;
    mutable std::mutex mutex;
    bool failing = false;           // guarded by mutex
    ClockT::time_point lastFailed;  // guarded by mutex
    std::function<void()> notice;   // guarded by mutex
};

}  // namespace ZorvNode
