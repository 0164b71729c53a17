/// Timer on the monotonic clock, in nanoseconds.
///
/// Threads:   a timer belongs to one thread at a time; getTimeNowNano from any thread.
/// Failure:   without a monotonic clock the time of day in whole seconds takes its place.
#pragma once

#include <cstdint>

namespace ZorvFm {

class Timer {
public:
    Timer() = default;
    virtual ~Timer() = default;
    Timer(const Timer&) = default;
    Timer& operator=(const Timer&) = default;

    /// Monotonic time now, in ns.
    static std::uint64_t getTimeNowNano();

    /// @param newTimeout duration from now, in ns; 0 has expired at once.
    void start(std::uint64_t newTimeout);

    /// @param now monotonic time in ns.
    bool isTimeOut(std::uint64_t now) const;

private:
    std::uint64_t startTime = 0;
    std::uint64_t timeout = 0;
};

}  // namespace ZorvFm
