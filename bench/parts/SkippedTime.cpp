#include "SkippedTime.hpp"

#include <atomic>
#include <ctime>

namespace ZorvBench {

namespace {

constexpr std::int64_t nanosPerSecond = 1000000000;

std::atomic<std::int64_t> skipped{0};  // ns

}  // namespace

void skipTime(std::chrono::nanoseconds time)
{
    skipped += time.count();
}

}  // namespace ZorvBench

extern "C" {

int __real_clock_gettime(clockid_t clock, timespec* result);
int __wrap_clock_gettime(clockid_t clock, timespec* result);

int __wrap_clock_gettime(clockid_t clock, timespec* result)
{
    const int answer = __real_clock_gettime(clock, result);
    if (clock == CLOCK_MONOTONIC) {
        const std::int64_t nanos = result->tv_nsec + ZorvBench::skipped;
        result->tv_sec += nanos / ZorvBench::nanosPerSecond;
        result->tv_nsec = nanos % ZorvBench::nanosPerSecond;
    }
    return answer;
}

}  // extern "C"
