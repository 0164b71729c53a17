#include "services/eventrouter/ConsumerQueue.hpp"

#include <sys/prctl.h>

#include <algorithm>
#include <utility>

namespace ZorvNode {

namespace {

constexpr unsigned long napSlack = 1000;  // ns; the usual 50 us would be longer than the nap

}  // namespace

ConsumerQueue::ConsumerQueue(unsigned long id, std::shared_ptr<RouterConsumer> consumerPort, std::size_t queueBound,
                             RouterStatistics& routerStatistics, std::function<void()> onHandedBack)
    : consumerId(id),
      port(std::move(consumerPort)),
      bound(queueBound),
      statistics(routerStatistics),
      handedBack(std::move(onHandedBack)),
      thread([this] { run(); })
{
}

ConsumerQueue::~ConsumerQueue()
{
    close();
    thread.join();
}

ConsumerQueue::Push ConsumerQueue::push(Delivery delivery)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (closed) {
        return Push::closed;
    }
    if (waiting.size() >= bound) {
        return std::exchange(overflowing, true) ? Push::full : Push::fullFirst;
    }
    waiting.push_back(std::move(delivery));
    if (std::exchange(sleeping, false)) {
        changed.notify_all();
    }
    return Push::taken;
}

std::optional<Delivery> ConsumerQueue::takeOut(const std::function<bool(const Delivery&)>& fits)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = std::find_if(waiting.begin(), waiting.end(), fits);
    if (found == waiting.end()) {
        return std::nullopt;
    }
    std::optional<Delivery> taken(std::move(*found));
    waiting.erase(found);
    taken->producer->calls.enter();
    return taken;
}

void ConsumerQueue::close()
{
    const std::lock_guard<std::mutex> lock(mutex);
    closed = true;
    changed.notify_all();
}

bool ConsumerQueue::hasEnded()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return ended;
}

void ConsumerQueue::run()
{
    prctl(PR_SET_TIMERSLACK, napSlack);
    Delivery delivery;
    while (next(delivery)) {
        deliver(delivery);
        delivery.producer->calls.leave();
        delivery = {};
        handedBack();
    }
    const std::lock_guard<std::mutex> lock(mutex);
    ended = true;
}

/// Counts the delivery as a call of its producer while the queue is locked: so a producer that leaves finds it either in
/// the queue or among its calls.
bool ConsumerQueue::next(Delivery& delivery)
{
    std::unique_lock<std::mutex> lock(mutex);
    awaitNext(lock);
    if (closed) {
        return false;
    }
    delivery = std::move(waiting.front());
    waiting.pop_front();
    overflowing = overflowing && waiting.size() > bound / 2;
    delivery.producer->calls.enter();
    return true;
}

/// Behind one event there is often another: a nap before the sleep spares whoever pushes it the waking.
void ConsumerQueue::awaitNext(std::unique_lock<std::mutex>& lock)
{
    if (waiting.empty() && !closed) {
        lock.unlock();
        std::this_thread::sleep_for(port->nap());
        lock.lock();
    }
    while (waiting.empty() && !closed) {
        sleeping = true;
        changed.wait(lock);
    }
}

void ConsumerQueue::deliver(const Delivery& delivery)
{
    Subscription& subscription = *delivery.subscription;
    ++statistics.delivered;
    try {
        if (port->onEvent(consumerId, subscription.eventType.c_str(), subscription.filter.array(), delivery.value) !=
            ZORV_RETURN_OK) {
            ++statistics.refused;
        }
    } catch (...) {
        ++statistics.threw;
    }
    delivery.producer->doneWithValue(subscription.eventType, delivery.value);
}

}  // namespace ZorvNode
