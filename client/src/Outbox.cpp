#include "Outbox.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ZorvClient {

using LockT = std::unique_lock<std::mutex>;

Outbox::Outbox(std::size_t places) : capacity(places), reserve(std::max<std::size_t>(1, places / 10))
{
}

bool Outbox::push(Entry&& entry)
{
    const LockT lock(mutex);
    if (stopped || entries.size() >= (entry.isClear ? capacity : capacity - reserve)) {
        ++numbers.dropped;
        numbers.droppedClears += entry.isClear ? 1 : 0;
        return false;
    }
    entries.push_back(std::move(entry));
    ++pushedTotal;
    // A sender that is not idle finds the entry by itself: under load a call wakes nobody.
    if (senderIdle) {
        senderIdle = false;
        work.notify_one();
    }
    return true;
}

bool Outbox::flush(DurationT timeout)
{
    LockT lock(mutex);
    const std::uint64_t target = pushedTotal;
    ++flushers;
    work.notify_one();
    const bool done = told.wait_for(lock, timeout, [&] { return toldTotal >= target; });
    --flushers;
    return done;
}

ZorvClientCountersT Outbox::counters() const
{
    const LockT lock(mutex);
    ZorvClientCountersT current = numbers;
    current.queued = entries.size();
    return current;
}

void Outbox::stop()
{
    const LockT lock(mutex);
    stopped = true;
    work.notify_one();
}

bool Outbox::awaitEntry()
{
    LockT lock(mutex);
    while (entries.empty() && !stopped) {
        senderIdle = true;
        work.wait(lock);
    }
    senderIdle = false;
    return !stopped;
}

bool Outbox::awaitRetry(DurationT wait, DurationT urgentWait)
{
    using ClockT = std::chrono::steady_clock;
    LockT lock(mutex);
    const ClockT::time_point begin = ClockT::now();
    while (!stopped) {
        const ClockT::time_point end = begin + (flushers > 0 ? std::min(wait, urgentWait) : wait);
        if (ClockT::now() >= end) {
            break;
        }
        work.wait_until(lock, end);
    }
    return !stopped;
}

std::size_t Outbox::copyBatch(std::size_t limit, std::size_t bytes, std::string& body)
{
    const LockT lock(mutex);
    std::size_t count = 0;
    body = "[";
    for (const Entry& entry : entries) {
        if (count == limit || (count > 0 && body.size() + entry.json.size() + 2 > bytes)) {
            break;
        }
        body += count == 0 ? "" : ",";
        body += entry.json;
        ++count;
    }
    body += "]";
    return count;
}

void Outbox::markTransmitted(std::size_t count)
{
    const LockT lock(mutex);
    numbers.resent += std::min(transmitted, count);
    transmitted = std::max(transmitted, count);
}

std::vector<Entry> Outbox::settle(std::size_t count, std::size_t rejected)
{
    const LockT lock(mutex);
    std::vector<Entry> taken = takeOut(count);
    numbers.rejected += rejected;
    numbers.sent += count - rejected;
    transmitted -= std::min(transmitted, count);
    return taken;
}

bool Outbox::abandonOne(Entry& entry)
{
    const LockT lock(mutex);
    if (entries.empty()) {
        return false;
    }
    entry = std::move(entries.front());
    entries.pop_front();
    return true;
}

std::vector<Entry> Outbox::takeOut(std::size_t count)
{
    const auto end = entries.begin() + static_cast<std::ptrdiff_t>(count);
    std::vector<Entry> taken(std::make_move_iterator(entries.begin()), std::make_move_iterator(end));
    entries.erase(entries.begin(), end);
    return taken;
}

void Outbox::markTold(std::size_t count)
{
    const LockT lock(mutex);
    toldTotal += count;
    told.notify_all();
}

bool Outbox::empty() const
{
    const LockT lock(mutex);
    return entries.empty();
}

void Outbox::forgetInChild()
{
    std::deque<Entry>().swap(entries);
}

}  // namespace ZorvClient
