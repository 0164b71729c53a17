#include "Sender.hpp"

#include "HttpPost.hpp"

#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <new>
#include <utility>

namespace ZorvClient {

namespace {

/// A thread inherits the mask of the one that starts it.
class AllSignalsBlocked {
public:
    AllSignalsBlocked()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~AllSignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before, nullptr); }

    AllSignalsBlocked(const AllSignalsBlocked&) = delete;
    AllSignalsBlocked& operator=(const AllSignalsBlocked&) = delete;

private:
    sigset_t before;
};

thread_local const Sender* runningSender = nullptr;

}  // namespace

Sender::Sender(const Settings& chosen)
    : settings(chosen),
      outbox(chosen.queueCapacity),
      backoff(chosen.shortestWait, chosen.longestWait),
      batchLimit(chosen.batchLimit)
{
}

bool Sender::post(Entry&& entry)
{
    start();
    return outbox.push(std::move(entry));
}

void Sender::start()
{
    if (started.load(std::memory_order_acquire)) {
        return;
    }
    const std::lock_guard<std::mutex> lock(startMutex);
    if (!thread.joinable()) {
        const AllSignalsBlocked blocked;
        thread = std::thread(&Sender::run, this);
        started.store(true, std::memory_order_release);
    }
}

bool Sender::isSenderThread() const
{
    return runningSender == this;
}

std::size_t Sender::stop()
{
    outbox.stop();
    socket.interrupt();
    if (thread.joinable()) {
        thread.join();
    }
    return abandoned;
}

void Sender::run()
{
    runningSender = this;
    ::pthread_setname_np(::pthread_self(), "zorv-client");
    while (outbox.awaitEntry()) {
        if (!deliver()) {
            socket.close();
            outbox.awaitRetry(backoff.next(), settings.shortestWait);
        } else if (outbox.empty()) {
            // The node's connections are for those who have something to say.
            socket.close();
        }
    }
    abandon();
}

/// False when it is to be tried again later.
bool Sender::deliver()
{
    try {
        // First the connection: what comes until there is one goes in the same request.
        if (!socket.isOpen()) {
            socket.connect(settings.socketPath);
        }
        if (unanswered == 0) {
            name.advance();
        }
        const std::size_t count = outbox.copyBatch(unanswered > 0 ? unanswered : batchLimit, settings.batchBytes, body);
        unanswered = count;
        const Verdict verdict = transmit(count, body);
        follow(verdict, count);
        return verdict.action != Action::retry;
    } catch (const ConnectionLost&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

Verdict Sender::transmit(std::size_t count, const std::string& json)
{
    outbox.markTransmitted(count);
    const DeadlineT deadline = std::chrono::steady_clock::now() + settings.answerTimeout;
    const HttpAnswer answer = ZorvClient::post(socket, "/v1/notifications", name.text(), json, deadline);
    if (answer.isLast) {
        socket.close();
    }
    return judge(answer, count);
}

void Sender::follow(const Verdict& verdict, std::size_t count)
{
    if (verdict.action == Action::retry) {
        return;
    }
    unanswered = 0;
    backoff.reset();
    if (verdict.action == Action::split) {
        batchLimit = count / 2;
        return;
    }
    batchLimit = std::min(batchLimit + 1, settings.batchLimit);
    const auto rejected = std::count_if(verdict.items.begin(), verdict.items.end(),
                                        [](const Rejection& item) { return item.isRejected; });
    const std::vector<Entry> entries = outbox.settle(count, static_cast<std::size_t>(rejected));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Rejection& item = verdict.items[i];
        tell(entries[i], item.isRejected ? ZORV_CLIENT_REJECTED : ZORV_CLIENT_SENT, item);
    }
    outbox.markTold(entries.size());
}

void Sender::tell(const Entry& entry, ZorvClientOutcomeKindT kind, const Rejection& rejection) const
{
    if (settings.outcome != nullptr) {
        const ZorvClientOutcomeT outcome{kind, entry.context, entry.json.c_str(), rejection.field.c_str(),
                                         rejection.reason.c_str()};
        settings.outcome(&outcome, settings.callbackContext);
    }
}

void Sender::abandon()
{
    for (Entry entry; outbox.abandonOne(entry); ++abandoned) {
        tell(entry, ZORV_CLIENT_ABANDONED, Rejection());
    }
}

void Sender::lockForFork()
{
    startMutex.lock();
    outbox.lockForFork();
    socket.lockForFork();
}

void Sender::unlockAfterFork()
{
    socket.unlockAfterFork();
    outbox.unlockAfterFork();
    startMutex.unlock();
}

void Sender::forgetInChild()
{
    outbox.forgetInChild();
    socket.forgetInChild();
}

}  // namespace ZorvClient
