/// Where notifications enter the node: producer of the FM event types of both frameworks and of the suppression event.
///
/// What was accepted stays in an inbox until it is known to be handled. A subscriber with a time filter is sent what is in
/// it of its event type, in the order of acceptance, and then the new ones, each once. It begins with the first one that
/// has exactly the filter's time, the last one that the subscriber has noted as handled, maybe just before it was killed;
/// if there is none, with the oldest. So nothing is missed, and some may come a second time. A clear of one alarm is not
/// sent again when it is the first one: alarm handling stores a clear before it notes it, and to clear what is not active
/// any more would clear all alarms whose DN contains this one. For the same reason a clear of one alarm that was sent
/// before comes again as the pattern of that one DN. A subscriber without a time is sent new ones only.
///
/// What alarm handling has not handled yet is bounded too, and is sent in portions: the next one when it is through with an
/// earlier one. So its batches stay small, and a burst does not keep it from its heartbeats.
///
/// An inbox that is full takes nothing more, until what is in it is handled.
///
/// Threads:   any; publication and subscription exclude each other.
/// Ownership: a notification lives while it is in the inbox or on its way.
/// Failure:   publish throws SourceBusy, and nothing was accepted. What a store that fails does not take stays in memory.
#pragma once

#include <algorithm>
#include <atomic>
#include <functional>
#include <list>
#include <map>
#include <stdexcept>
#include <unordered_map>

#include "ingress/NotificationInbox.hpp"
#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

/// The node takes no more notifications for the moment.
class SourceBusy : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct SourceStatistics {
    std::atomic<std::uint64_t> accepted{0};
    std::atomic<std::uint64_t> sentAgain{0};  ///< to a subscriber that came later
    std::atomic<std::uint64_t> busy{0};       ///< publications refused
    std::atomic<std::uint64_t> repeated{0};   ///< publications that were accepted before
};

struct InboxBounds {
    std::size_t kept;          ///< entries
    std::size_t sent = 10000;  ///< of them sent and not known to be handled; at most what a consumer's queue takes

    std::size_t portion() const { return std::max<std::size_t>(1, sent / 4); }
};

class FmNotificationSource : public RouterProducer {
public:
    FmNotificationSource(EventRouter& eventRouter, const InboxBounds& inboxBounds, Database* database,
                         const LogSinkT& logSink);
    ~FmNotificationSource() override;

    FmNotificationSource(const FmNotificationSource&) = delete;
    FmNotificationSource& operator=(const FmNotificationSource&) = delete;

    /// Accepts all of them, in their order, or none. What comes with the id of an accepted publication was accepted
    /// already, and is not sent again. Answers whether what was accepted survives the end of the process.
    bool publish(std::vector<FmNotification> notifications, const std::optional<PublicationId>& id = std::nullopt);

    /// Turns northbound suppression on or off. False, and nothing has changed, when nobody takes it.
    bool suppress(bool on);
    bool isSuppressed() const { return suppressed; }

    /// While it is held nothing new is sent: a component that is about to stop finds nothing on its way.
    void hold();
    void release();

    /// Entries that consumers have taken, and which consumers: those of one life of the alarm handling.
    struct Taken {
        std::uint64_t number = 0;  ///< of the last one; all before it are taken too
        std::uint64_t life = 0;
    };

    Taken getLastTaken();

    /// What these consumers have taken up to this entry is handled, and leaves the inbox. After they have left it stays.
    void noteHandled(const Taken& handled);

    /// Alarm handling has come further: a portion more is sent.
    void sendPortion();

    /// Nothing was seen to be handled for a while. When all that was sent is taken, as many more may be sent.
    void allowMore();

    /// The alarm handling has ended in order: what its consumers had taken up to this entry is handled. When they left
    /// without that, all of it waits for the next ones.
    void noteOrderlyEnd(const Taken& handled);

    /// Called whenever something comes into the empty inbox, on the thread that brings it: it must not wait for anything.
    void whenFilled(std::function<void()> call);

    /// Records what could not be recorded when it was accepted, if there is anything.
    void catchUp();

    std::size_t getNumberInInbox();

    /// Those that nobody takes.
    std::size_t getNumberWaiting();

    /// Whether there are some that are sent only when others are handled.
    bool hasMoreToSend();
    const SourceStatistics& getStatistics() const { return statistics; }

    ZorvReturnT addFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override;
    ZorvReturnT removeFilter(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter) override;
    ZorvReturnT clearAll() override;
    ZorvReturnT doneWithValue(const char* eventType, void* value) override;

private:
    using EntriesT = NotificationInbox::EntriesT;

    struct Subscriber {
        unsigned long consumerId;
        std::string eventType;
        YaltNameValuePair** filter;  // the router's
        std::uint64_t from;          // the first entry that is meant for it
    };

    struct OnItsWay {
        std::shared_ptr<void> keeper;
        std::uint64_t number;  // 0: not of the inbox
        unsigned deliveries = 0;
    };

    void requireRoom(std::size_t coming);
    void sendWaiting();
    bool sendPiece(std::size_t& left);
    void send(std::uint64_t number, NotificationInbox::Entry& entry);
    std::size_t numberWaiting() const;
    bool maySend() const;
    bool isWindowFull() const;
    void sendInbox(const Subscriber& subscriber, std::uint64_t lastHandled);
    void notify(const Subscriber& subscriber, std::shared_ptr<void> keeper, void* value, std::uint64_t number);
    std::uint64_t lastTaken();
    bool hasNotificationSubscriber() const;
    void noteLeft();

    EventRouter& router;
    const InboxBounds bounds;
    std::uint32_t handle = 0;
    SourceStatistics statistics;
    std::atomic<bool> suppressed{false};

    std::mutex mutex;
    NotificationInbox inbox;            // guarded by mutex
    std::list<Subscriber> subscribers;  // guarded by mutex
    bool held = false;                  // guarded by mutex
    std::size_t allowed;                // guarded by mutex; entries that may be sent and not handled
    std::size_t budget;                 // guarded by mutex; entries that may be sent now
    std::uint64_t life = 0;             // guarded by mutex; grows when the last consumer leaves
    std::function<void()> filled;       // guarded by mutex

    std::mutex wayMutex;                                  // taken after mutex
    std::unordered_map<void*, OnItsWay> onTheirWay;       // guarded by wayMutex; by value
    std::map<std::uint64_t, unsigned> numbersOnTheirWay;  // guarded by wayMutex; entries, each with its deliveries
};

}  // namespace ZorvNode
