/// Follows the northbound notifications: counts them and, when it has a stream, prints one line each as they are delivered.
///
/// It is one consumer of all six event types, so that the lines stand in the order of publication.
///
/// Threads:   the router calls it from one thread at a time; the counters are readable from any.
/// Ownership: router and stream outlive it.
/// Failure:   a stream that takes no more is told once, through the callback.
#pragma once

#include <atomic>
#include <functional>
#include <ostream>

#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

class FollowPrinter : public RouterConsumer {
public:
    /// @param out null: count only.
    FollowPrinter(EventRouter& eventRouter, std::ostream* out, std::function<void()> onStreamFailed);
    ~FollowPrinter() override;

    FollowPrinter(const FollowPrinter&) = delete;
    FollowPrinter& operator=(const FollowPrinter&) = delete;

    std::uint64_t getNumberOfAlarms() const { return numberOfAlarms; }
    std::uint64_t getNumberOfNotifications() const { return numberOfNotifications; }

    ZorvReturnT onEvent(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                        void* value) override;

private:
    EventRouter& router;
    std::ostream* const stream;  // not owned
    const std::function<void()> streamFailed;
    bool failed = false;  // the router's calling thread only
    unsigned long id = 0;
    std::atomic<std::uint64_t> numberOfAlarms{0};
    std::atomic<std::uint64_t> numberOfNotifications{0};
};

}  // namespace ZorvNode
