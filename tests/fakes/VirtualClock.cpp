#include "VirtualClock.hpp"

#include <atomic>
#include <cassert>
#include <cerrno>
#include <utility>

namespace {

constexpr uint64_t nanosecondsPerSecond = 1000000000;

std::atomic<ZorvFakes::VirtualClock*> instance{nullptr};

timespec toTimespec(uint64_t nanoseconds)
{
    return {static_cast<time_t>(nanoseconds / nanosecondsPerSecond),
            static_cast<long>(nanoseconds % nanosecondsPerSecond)};
}

}  // namespace

namespace ZorvFakes {

VirtualClock::VirtualClock(Journal& theJournal) : journal(theJournal)
{
    assert(!instance);
    instance = this;
}

VirtualClock::~VirtualClock()
{
    instance = nullptr;
}

VirtualClock* VirtualClock::live()
{
    return instance;
}

VirtualClock* VirtualClock::current()
{
    VirtualClock* clock = instance;
    return clock && clock->isOn() ? clock : nullptr;
}

void VirtualClock::turnOn(uint64_t monotonic, uint64_t realTime)
{
    const std::lock_guard<std::mutex> lock(mutex);
    on = true;
    monotonicNow = monotonic;
    realNow = realTime;
}

void VirtualClock::turnOff()
{
    const std::lock_guard<std::mutex> lock(mutex);
    on = false;
}

bool VirtualClock::isOn() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return on;
}

void VirtualClock::advance(std::chrono::nanoseconds time)
{
    const std::lock_guard<std::mutex> lock(mutex);
    monotonicNow += static_cast<uint64_t>(time.count());
    realNow += static_cast<uint64_t>(time.count());
}

void VirtualClock::setMonotonic(uint64_t nanoseconds)
{
    const std::lock_guard<std::mutex> lock(mutex);
    monotonicNow = nanoseconds;
}

void VirtualClock::setRealTime(uint64_t nanoseconds)
{
    const std::lock_guard<std::mutex> lock(mutex);
    realNow = nanoseconds;
}

uint64_t VirtualClock::monotonic() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return monotonicNow;
}

uint64_t VirtualClock::realTime() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return realNow;
}

void VirtualClock::fail(clockid_t clock, bool fails)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (fails) {
        failing.insert(clock);
    } else {
        failing.erase(clock);
    }
}

void VirtualClock::onSelect(Select select)
{
    const std::lock_guard<std::mutex> lock(mutex);
    selectFunction = std::move(select);
}

int VirtualClock::selectByClock(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout)
{
    timeval none{};
    const int ready = realSelect(count, readable, writable, failed, &none);
    if (ready == 0 && timeout) {
        advance(std::chrono::seconds(timeout->tv_sec) + std::chrono::microseconds(timeout->tv_usec));
    }
    return ready;
}

int VirtualClock::getTime(clockid_t clock, timespec* result) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (failing.count(clock) != 0) {
        errno = EINVAL;
        return -1;
    }
    const bool isReal = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
    *result = toTimespec(isReal ? realNow : monotonicNow);
    return 0;
}

void VirtualClock::sleep(std::chrono::nanoseconds time)
{
    advance(time);
    journal.record(Topic::Clock, "sleep " + std::to_string(time.count()));
}

int VirtualClock::select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout)
{
    Select function;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        function = selectFunction;
    }
    return function ? function(count, readable, writable, failed, timeout)
                    : realSelect(count, readable, writable, failed, timeout);
}

}  // namespace ZorvFakes
