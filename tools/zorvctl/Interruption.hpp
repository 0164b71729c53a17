/// Ctrl-C as something that commands can wait for and that wakes them where they wait for the node.
///
/// Threads: any.
#pragma once

#include <Poco/Net/StreamSocket.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

namespace ZorvCtl {

class Interruption {
public:
    using ClockT = std::chrono::steady_clock;

    /// From now on every wait ends at once, and every watched socket is shut down.
    void interrupt();

    bool happened() const;

    /// Throws Interrupted when it happens before this time.
    void waitUntil(ClockT::time_point time);
    void waitFor(ClockT::duration duration) { waitUntil(ClockT::now() + duration); }

    /// Watches a socket for the length of a scope: a read from it ends at the interruption.
    class Watch {
    public:
        Watch(Interruption& theInterruption, const Poco::Net::StreamSocket& socket);
        ~Watch();

        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

    private:
        Interruption& interruption;
        const int file;
    };

private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    bool isInterrupted = false;  // guarded by mutex
    std::multiset<int> files;    // guarded by mutex
};

/// Turns SIGINT into an interruption; the second one ends the process on the spot.
///
/// Threads: made on the main thread before any other thread is started.
class CtrlC {
public:
    explicit CtrlC(Interruption& theInterruption);
    ~CtrlC();

    CtrlC(const CtrlC&) = delete;
    CtrlC& operator=(const CtrlC&) = delete;

private:
    std::thread thread;
};

}  // namespace ZorvCtl
