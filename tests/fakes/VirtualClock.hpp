/// Time in the hands of the test, for code that is linked with this library.
///
/// The linker sends clock_gettime, nanosleep, clock_nanosleep, time, select and POCO's sleep here. While no virtual
/// clock is on, they do what they always do. While one is on, monotonic and real time stand still until the test moves
/// them, a sleep moves them at once and writes "sleep 100000000" (nanoseconds) into the journal, and select does what
/// the test has set. Calls made inside shared libraries (std::chrono clocks, timed waits, Poco::Timestamp) stay real.
///
/// Threads: any; one clock lives at a time.
#pragma once

#include <sys/select.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <mutex>
#include <set>

#include "Journal.hpp"

namespace ZorvFakes {

class VirtualClock {
public:
    using Select = std::function<int(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout)>;

    explicit VirtualClock(Journal& journal);
    ~VirtualClock();

    VirtualClock(const VirtualClock&) = delete;
    VirtualClock& operator=(const VirtualClock&) = delete;

    /// From now on time stands still; both clocks begin with these values, in nanoseconds.
    void turnOn(uint64_t monotonic = 1000000000000, uint64_t realTime = 1700000000000000000);
    void turnOff();
    bool isOn() const;

    /// Moves both clocks.
    void advance(std::chrono::nanoseconds time);

    void setMonotonic(uint64_t nanoseconds);
    void setRealTime(uint64_t nanoseconds);

    uint64_t monotonic() const;
    uint64_t realTime() const;

    /// Makes clock_gettime answer -1 (EINVAL) for CLOCK_MONOTONIC or CLOCK_REALTIME.
    void fail(clockid_t clock, bool fails = true);

    /// What select does from now on, virtual time or not. Empty: the real one.
    void onSelect(Select select);

    /// For onSelect: what is ready is reported; otherwise the clock advances by the timeout and nothing is ready.
    int selectByClock(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout);

    static int realSelect(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout);

    /// The living clock that is on, or null.
    static VirtualClock* current();

    // What the wrapped functions do while the clock is on.
    int getTime(clockid_t clock, timespec* result) const;
    void sleep(std::chrono::nanoseconds time);
    int select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout);

    /// The living clock, on or off.
    static VirtualClock* live();

private:
    Journal& journal;

    mutable std::mutex mutex;
    bool on = false;  // guarded by mutex, as all below
    uint64_t monotonicNow = 0;
    uint64_t realNow = 0;
    std::set<clockid_t> failing;
    Select selectFunction;
};

}  // namespace ZorvFakes
