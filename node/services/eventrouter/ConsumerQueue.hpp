/// One registered consumer: its bounded queue and the thread that calls it.
///
/// Threads:   any may push, take out and close; the callbacks come one at a time on the queue's own thread, with no lock
///            held. A push wakes the thread only when it sleeps, which it does a moment after the last event.
/// Ownership: a delivery that was taken in is handed back to its producer once: after the callback, or by whoever takes it
///            out of the queue.
/// Failure:   a full or closed queue takes nothing in; a consumer that throws is counted.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "services/eventrouter/ProducerRecord.hpp"

namespace ZorvNode {

/// One event on its way.
struct Delivery {
    std::shared_ptr<ProducerRecord> producer;
    std::shared_ptr<Subscription> subscription;
    void* value;
};

class ConsumerQueue {
public:
    enum class Push { taken, full, fullFirst, closed };

    /// @param onHandedBack called after each delivery has been handed back to its producer.
    ConsumerQueue(unsigned long id, std::shared_ptr<RouterConsumer> consumerPort, std::size_t queueBound,
                  RouterStatistics& routerStatistics, std::function<void()> onHandedBack);
    ~ConsumerQueue();

    ConsumerQueue(const ConsumerQueue&) = delete;
    ConsumerQueue& operator=(const ConsumerQueue&) = delete;

    /// fullFirst: the first refusal of a burst; the burst ends when the queue is half empty.
    Push push(Delivery delivery);

    /// Takes out the first waiting delivery that fits. It counts as a call of its producer until the caller has handed it
    /// back and left the call.
    std::optional<Delivery> takeOut(const std::function<bool(const Delivery&)>& fits);

    /// Takes nothing in any more and lets the thread end after the callback that runs.
    void close();

    /// True when the thread has ended.
    bool hasEnded();

    const unsigned long consumerId;

    /// Guarded by the router.
    std::vector<std::shared_ptr<Subscription>> subscriptions;

private:
    void run();
    void deliver(const Delivery& delivery);
    bool next(Delivery& delivery);
    void awaitNext(std::unique_lock<std::mutex>& lock);

    const std::shared_ptr<RouterConsumer> port;
    const std::size_t bound;
    RouterStatistics& statistics;
    const std::function<void()> handedBack;

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Delivery> waiting;  // guarded by mutex
    bool sleeping = false;         // guarded by mutex
    bool overflowing = false;      // guarded by mutex
    bool closed = false;           // guarded by mutex
    bool ended = false;            // guarded by mutex
    std::thread thread;            // last: it uses all of the above
};

}  // namespace ZorvNode
