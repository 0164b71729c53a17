/// Finds out which notifications are handled, and has them leave the inbox.
///
/// Alarm handling does not tell when it has handled a notification that its consumers have taken. But while it works, it
/// works with the node's services: when these have been quiet for a moment after a notification was taken, it is handled.
/// A second's grace is for a service that was only slow.
///
/// Threads:   one of its own, which looks ten times a second while there is something in the inbox, else once.
/// Ownership: the source outlives it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "ingress/FmNotificationSource.hpp"

namespace ZorvNode {

struct KeeperSettings {
    std::chrono::milliseconds look{100};
    std::chrono::milliseconds idleLook{1000};
    std::chrono::milliseconds grace{1000};
};

class InboxKeeper {
public:
    /// @param activity a number that grows with everything that the services do.
    InboxKeeper(FmNotificationSource& notificationSource, std::function<std::uint64_t()> activity,
                const KeeperSettings& keeperSettings = {});
    ~InboxKeeper();

    InboxKeeper(const InboxKeeper&) = delete;
    InboxKeeper& operator=(const InboxKeeper&) = delete;

private:
    using ClockT = std::chrono::steady_clock;

    struct Mark {
        std::uint64_t number;
        ClockT::time_point time;
    };

    void run();
    void noteHandled();
    bool pause(std::chrono::milliseconds time);

    FmNotificationSource& source;
    const std::function<std::uint64_t()> getActivity;
    const KeeperSettings settings;
    std::deque<Mark> marks;  // the thread's

    std::mutex mutex;
    std::condition_variable wake;
    bool stopping = false;  // guarded by mutex
    std::thread thread;     // last: it uses all of the above
};

}  // namespace ZorvNode
