/// Where notifications enter the node: producer of the FM event types of both frameworks and of the suppression event.
///
/// The latest notifications are retained; a subscriber with a time filter is sent the retained ones that are younger, in the
/// order of their publication, and then the new ones that are younger, each once. A notification without an event time is as
/// old as its publication.
///
/// Threads:   any; publication and subscription exclude each other, so that nothing is sent twice or not at all.
/// Ownership: a notification lives while it is retained or on its way.
/// Failure:   what a consumer's full queue does not take is lost to it, and counted by the router.
#pragma once

#include <deque>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "ingress/FmNotification.hpp"
#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

class FmNotificationSource : public RouterProducer {
public:
    FmNotificationSource(EventRouter& eventRouter, std::size_t retainedBound);
    ~FmNotificationSource() override;

    FmNotificationSource(const FmNotificationSource&) = delete;
    FmNotificationSource& operator=(const FmNotificationSource&) = delete;

    void publish(FmNotification notification);
    void suppress(bool on);

    ZorvReturnT addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override;
    ZorvReturnT removeFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override;
    ZorvReturnT clearAll() override;
    ZorvReturnT doneWithValue(const char* eventType, void* value) override;

private:
    struct Subscriber {
        unsigned long consumerId;
        std::string eventType;
        YaltNameValuePair** filter;  // the router's
    };

    struct Retained {
        std::shared_ptr<PublishedNotification> notification;
        std::uint64_t time;
    };

    struct OnItsWay {
        std::shared_ptr<void> keeper;
        unsigned deliveries = 0;
    };

    void send(const Subscriber& subscriber, const Retained& retained);
    void notify(const Subscriber& subscriber, std::shared_ptr<void> keeper, void* value);

    EventRouter& router;
    const std::size_t bound;
    std::uint32_t handle = 0;

    std::mutex mutex;
    std::list<Subscriber> subscribers;  // guarded by mutex
    std::deque<Retained> retained;      // guarded by mutex

    std::mutex wayMutex;                   // taken after mutex
    std::map<void*, OnItsWay> onTheirWay;  // guarded by wayMutex; by value
};

}  // namespace ZorvNode
