#include "Client.hpp"

#include "ForkGuard.hpp"

#include <ctime>
#include <new>
#include <utility>

namespace ZorvClient {

namespace {

std::uint64_t now()
{
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1000000000 + static_cast<std::uint64_t>(time.tv_nsec);
}

}  // namespace

Client::Client(const Settings& chosen) : settings(chosen), sender(std::make_unique<Sender>(chosen))
{
    ForkGuard::add(*this);
}

Client::~Client()
{
    close(Outbox::DurationT(0));
    ForkGuard::remove(*this);
}

ZorvClientResultT Client::post(Kind kind, const ZorvClientNotificationT& notification)
{
    if (!sender) {
        return ZORV_CLIENT_NO_RESOURCES;
    }
    Entry entry;
    const ZorvClientResultT result = encode(kind, notification, now(), entry.json);
    if (result != ZORV_CLIENT_OK) {
        return result;
    }
    entry.context = notification.context;
    entry.isClear = kind == Kind::clear;
    return sender->post(std::move(entry)) ? ZORV_CLIENT_OK : ZORV_CLIENT_QUEUE_FULL;
}

ZorvClientResultT Client::flush(Outbox::DurationT timeout)
{
    if (!sender) {
        return ZORV_CLIENT_OK;
    }
    if (sender->isSenderThread()) {
        return ZORV_CLIENT_WRONG_THREAD;
    }
    return sender->flush(timeout) ? ZORV_CLIENT_OK : ZORV_CLIENT_TIMEOUT;
}

ZorvClientCountersT Client::counters() const
{
    return sender ? sender->counters() : ZorvClientCountersT{};
}

ZorvClientResultT Client::close(Outbox::DurationT timeout)
{
    if (flush(timeout) == ZORV_CLIENT_WRONG_THREAD) {
        return ZORV_CLIENT_WRONG_THREAD;
    }
    return sender && sender->stop() > 0 ? ZORV_CLIENT_TIMEOUT : ZORV_CLIENT_OK;
}

void Client::beforeFork() noexcept
{
    // The child's sender is made here: after the fork there is not much that can be done safely.
    try {
        spare = std::make_unique<Sender>(settings);
    } catch (const std::bad_alloc&) {
        spare.reset();
    }
    if (sender) {
        sender->lockForFork();
    }
}

void Client::afterForkInParent() noexcept
{
    if (sender) {
        sender->unlockAfterFork();
    }
    spare.reset();
}

void Client::afterForkInChild() noexcept
{
    if (sender) {
        sender->forgetInChild();
        ForkGuard::keepForgotten(sender.release());
    }
    sender = std::move(spare);
}

}  // namespace ZorvClient
