/// The queue between the application's calls and the sender's thread: bounded, in order, with a share for clears.
///
/// An entry stays in the queue while its request is on its way, and leaves when the node has answered.
///
/// Once stopped it takes nothing more: what is in it then can only be abandoned.
///
/// Threads:   push, flush, counters, stop from any; the others from the sender's thread alone.
/// Failure:   std::bad_alloc from push; the queue is as before then.
#pragma once

#include "zorv_client.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace ZorvClient {

struct Entry {
    std::string json;
    void* context = nullptr;
    bool isClear = false;
};

class Outbox {
public:
    using DurationT = std::chrono::milliseconds;

    explicit Outbox(std::size_t places);

    /// False when there is no place for it; counted.
    bool push(Entry&& entry);

    /// Waits until all that is queued now has been told. False when time is up.
    bool flush(DurationT timeout);

    ZorvClientCountersT counters() const;

    /// Ends all waiting of the sender, now and later.
    void stop();

    /// Waits for an entry. False when stopped.
    bool awaitEntry();

    /// Waits before the next try; while somebody flushes, no longer than urgentWait. False when stopped.
    bool awaitRetry(DurationT wait, DurationT urgentWait);

    /// The oldest entries as a JSON array: no more than these limits, but at least one. @return how many.
    std::size_t copyBatch(std::size_t limit, std::size_t bytes, std::string& body);

    /// The copied batch begins its way to the node.
    void markTransmitted(std::size_t count);

    /// Takes the oldest entries out: the node has answered for them.
    std::vector<Entry> settle(std::size_t count, std::size_t rejected);

    /// Takes the oldest out, for which nobody has answered. False when there is none.
    bool abandonOne(Entry& entry);

    /// So many settled ones have been told to the application.
    void markTold(std::size_t count);

    bool empty() const;

    /// Around a fork, in the forking thread.
    void lockForFork() { mutex.lock(); }
    void unlockAfterFork() { mutex.unlock(); }

    /// In a child: frees what the parent sends. The rest of this object is not touched any more.
    void forgetInChild();

private:
    std::vector<Entry> takeOut(std::size_t count);

    const std::size_t capacity;
    const std::size_t reserve;

    mutable std::mutex mutex;  // guards all below
    std::condition_variable work;
    std::condition_variable told;
    std::deque<Entry> entries;
    ZorvClientCountersT numbers{};
    std::uint64_t pushedTotal = 0;
    std::uint64_t toldTotal = 0;
    std::size_t transmitted = 0;  // of the oldest entries, those that have been on their way before
    bool stopped = false;
    bool senderIdle = false;
    unsigned flushers = 0;
};

}  // namespace ZorvClient
