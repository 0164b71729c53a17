/// Finds out which notifications are handled, and has them leave the inbox.
///
/// Alarm handling does not tell when it has handled a notification that its consumers have taken. It takes what has come as
/// one batch, and at the end of a batch in which it reported an alarm it commits the summary. Between two batches there may
/// be one more commit, for what time has brought about. So the third commit after a notification was taken is behind the
/// batch with this notification: it is handled.
///
/// A batch in which no alarm was reported commits nothing. But while alarm handling works, it works with the node's services:
/// when these have been quiet for a moment after a notification was taken, it is handled. A second's grace is for a
/// service that was only slow. And whatever is to be seen, after a second without anything handled more is sent.
///
/// So that there are commits to see, the inbox is sent in portions: the next one when there was a commit, or nothing is to
/// be seen of alarm handling's work.
///
/// Threads:   one of its own, which sleeps while there is nothing in the inbox.
/// Ownership: the source outlives it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "ingress/FmNotificationSource.hpp"

namespace ZorvNode {

/// What is to be seen of alarm handling: numbers that grow.
struct HandlingSigns {
    std::function<std::uint64_t()> activity;  ///< with everything that the services do
    std::function<std::uint64_t()> commits;   ///< with each summary that was committed
};

struct KeeperSettings {
    std::chrono::milliseconds look{20};
    std::chrono::milliseconds quiet{100};
    std::chrono::milliseconds grace{1000};
    unsigned commits = 3;
};

class InboxKeeper {
public:
    InboxKeeper(FmNotificationSource& notificationSource, HandlingSigns handlingSigns,
                const KeeperSettings& keeperSettings = {});
    ~InboxKeeper();

    InboxKeeper(const InboxKeeper&) = delete;
    InboxKeeper& operator=(const InboxKeeper&) = delete;

private:
    using ClockT = std::chrono::steady_clock;

    /// What was taken, and when.
    struct Mark {
        FmNotificationSource::Taken taken;
        ClockT::time_point time;
        std::uint64_t commits = 0;                  // there were before
        std::optional<ClockT::time_point> quietAt;  // the services had been quiet since it was made
    };

    void run();
    bool awaitSomething();
    bool pause();
    void mark();
    void noteActivity();
    void noteHandled();
    bool isHandled(const Mark& mark) const;

    FmNotificationSource& source;
    const HandlingSigns signs;
    const KeeperSettings settings;
    std::deque<Mark> marks;         // the thread's
    std::uint64_t activity = 0;     // the thread's; at its latest look
    std::uint64_t commits = 0;      // the thread's; when it sent the latest portion
    ClockT::time_point quietSince;  // the thread's
    ClockT::time_point trimmedAt;   // the thread's; or more was sent, or the inbox filled

    std::mutex mutex;
    std::condition_variable wake;
    bool isFilled = false;  // guarded by mutex
    bool stopping = false;  // guarded by mutex
    std::thread thread;     // last: it uses all of the above
};

}  // namespace ZorvNode
