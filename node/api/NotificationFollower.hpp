/// The northbound consumer behind the streams: fills a history for each version.
///
/// It is one consumer of all six event types, so that each history is in the order of publication.
///
/// Threads:   the router calls it from one thread at a time; the histories are for any.
/// Ownership: the router outlives it.
#pragma once

#include "api/NotificationHistory.hpp"
#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

class NotificationFollower : public RouterConsumer {
public:
    NotificationFollower(EventRouter& eventRouter, std::size_t historyBound);
    ~NotificationFollower() override;

    NotificationFollower(const NotificationFollower&) = delete;
    NotificationFollower& operator=(const NotificationFollower&) = delete;

    /// @param version 2 or 3.
    const NotificationHistory& getHistory(int version) const { return version == 2 ? version2 : version3; }

    ZorvReturnT onEvent(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                        void* value) override;

    /// For readers outside of the process half a millisecond is nothing.
    std::chrono::microseconds nap() const override { return std::chrono::microseconds(500); }

private:
    EventRouter& router;
    unsigned long id = 0;
    NotificationHistory version2;
    NotificationHistory version3;
};

}  // namespace ZorvNode
