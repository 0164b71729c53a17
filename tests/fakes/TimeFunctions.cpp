// What the linker puts in the place of the C library's time functions, and of POCO's sleep.
#include <algorithm>

#include "VirtualClock.hpp"

namespace {

std::chrono::nanoseconds toDuration(const timespec& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

extern "C" {

int __real_clock_gettime(clockid_t clock, timespec* result);
int __real_nanosleep(const timespec* time, timespec* rest);
int __real_clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* rest);
time_t __real_time(time_t* result);
int __real_select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout);
void __real__ZN4Poco10ThreadImpl9sleepImplEl(long milliseconds);

int __wrap_clock_gettime(clockid_t clock, timespec* result);
int __wrap_nanosleep(const timespec* time, timespec* rest);
int __wrap_clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* rest);
time_t __wrap_time(time_t* result);
int __wrap_select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout);
void __wrap__ZN4Poco10ThreadImpl9sleepImplEl(long milliseconds);

int __wrap_clock_gettime(clockid_t clock, timespec* result)
{
    const auto* virtualClock = ZorvFakes::VirtualClock::current();
    return virtualClock ? virtualClock->getTime(clock, result) : __real_clock_gettime(clock, result);
}

int __wrap_nanosleep(const timespec* time, timespec* rest)
{
    auto* virtualClock = ZorvFakes::VirtualClock::current();
    if (!virtualClock) {
        return __real_nanosleep(time, rest);
    }
    virtualClock->sleep(toDuration(*time));
    return 0;
}

int __wrap_clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* rest)
{
    auto* virtualClock = ZorvFakes::VirtualClock::current();
    if (!virtualClock) {
        return __real_clock_nanosleep(clock, flags, time, rest);
    }
    std::chrono::nanoseconds duration = toDuration(*time);
    if (flags & TIMER_ABSTIME) {
        timespec now{};
        virtualClock->getTime(clock, &now);
        duration -= toDuration(now);
    }
    virtualClock->sleep(std::max(duration, std::chrono::nanoseconds::zero()));
    return 0;
}

time_t __wrap_time(time_t* result)
{
    const auto* virtualClock = ZorvFakes::VirtualClock::current();
    if (!virtualClock) {
        return __real_time(result);
    }
    const auto now = static_cast<time_t>(virtualClock->realTime() / 1000000000);
    if (result) {
        *result = now;
    }
    return now;
}

int __wrap_select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout)
{
    auto* virtualClock = ZorvFakes::VirtualClock::live();
    return virtualClock ? virtualClock->select(count, readable, writable, failed, timeout)
                        : __real_select(count, readable, writable, failed, timeout);
}

void __wrap__ZN4Poco10ThreadImpl9sleepImplEl(long milliseconds)
{
    auto* virtualClock = ZorvFakes::VirtualClock::current();
    if (virtualClock) {
        virtualClock->sleep(std::chrono::milliseconds(milliseconds));
    } else {
        __real__ZN4Poco10ThreadImpl9sleepImplEl(milliseconds);
    }
}

}  // extern "C"

int ZorvFakes::VirtualClock::realSelect(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout)
{
    return __real_select(count, readable, writable, failed, timeout);
}
