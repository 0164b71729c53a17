/// Publishes what was committed as configuration-change events, each consumer's changes chosen by its regular expressions.
///
/// A subscription without an expression is told everything. An invalid expression, or another kind of filter, is refused.
///
/// Threads:   any. Events leave in the order of the commits; the thread that is publishing takes along what others note
///            down meanwhile.
/// Ownership: an event lives until the router has handed it back for every consumer.
#pragma once

#include <deque>
#include <list>
#include <map>
#include <memory>
#include <mutex>

#include "RegularExpression.hpp"
#include "services/eventrouter/EventRouter.hpp"
#include "services/managedobjects/ManagedObjectService.hpp"

namespace ZorvNode {

class CmEventPublisher : public MoChangeListener, public RouterProducer {
public:
    explicit CmEventPublisher(EventRouter& eventRouter);
    ~CmEventPublisher() override;

    CmEventPublisher(const CmEventPublisher&) = delete;
    CmEventPublisher& operator=(const CmEventPublisher&) = delete;

    void onChanged(unsigned long txHandle, std::vector<MoChange> changes) override;
    void onFinished() override;

    ZorvReturnT addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override;
    ZorvReturnT removeFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override;
    ZorvReturnT clearAll() override;
    ZorvReturnT doneWithValue(const char* eventType, void* value) override;

private:
    using ExpressionsT = std::vector<std::unique_ptr<Zorv::RegularExpression>>;

    struct Subscriber {
        unsigned long consumerId;
        YaltNameValuePair** filter;  // the router's
        std::shared_ptr<const ExpressionsT> expressions;
    };

    struct Noted {
        unsigned long txHandle;
        std::vector<MoChange> changes;
    };

    class Event;

    void publish(const Noted& noted);
    void send(const Subscriber& subscriber, unsigned long txHandle, std::vector<MoChange> changes);

    EventRouter& router;
    std::uint32_t handle = 0;

    std::mutex mutex;
    std::list<Subscriber> subscribers;                   // guarded by mutex
    std::deque<Noted> toPublish;                         // guarded by mutex
    bool publishing = false;                             // guarded by mutex
    std::map<void*, std::shared_ptr<Event>> onTheirWay;  // guarded by mutex; by value
};

}  // namespace ZorvNode
