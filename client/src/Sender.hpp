/// Brings what is queued to the node: one thread, one request at a time.
///
/// Belongs to one process. A child has a sender of its own and leaves this one as it is: its thread is not there, and
/// what that thread was waiting for will never come.
///
/// Threads:   post, flush, counters, isSenderThread from any; stop once, when no other call runs.
/// Failure:   std::bad_alloc and std::system_error from post; nothing has been queued then.
#pragma once

#include "Backoff.hpp"
#include "Outbox.hpp"
#include "PublicationName.hpp"
#include "Settings.hpp"
#include "Socket.hpp"
#include "Verdict.hpp"

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ZorvClient {

class Sender {
public:
    explicit Sender(const Settings& chosen);

    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;

    /// False when the queue has no place for it.
    bool post(Entry&& entry);

    bool flush(Outbox::DurationT timeout) { return outbox.flush(timeout); }
    ZorvClientCountersT counters() const { return outbox.counters(); }

    /// Whether the caller runs inside an outcome callback of this sender.
    bool isSenderThread() const;

    /// Cuts the connection and ends the thread. @return how many notifications have been given up.
    std::size_t stop();

    /// Around a fork, in the forking thread.
    void lockForFork();
    void unlockAfterFork();

    /// In a child, instead of the destructor.
    void forgetInChild();
    Sender* nextForgotten = nullptr;

private:
    void start();
    void run();
    bool deliver();
    Verdict transmit(std::size_t count, const std::string& body);
    void follow(const Verdict& verdict, std::size_t count);
    void tell(const Entry& entry, ZorvClientOutcomeKindT kind, const Rejection& rejection) const;
    void abandon();

    const Settings settings;
    Outbox outbox;
    Socket socket;

    std::mutex startMutex;  // guards thread
    std::thread thread;
    std::atomic<bool> started{false};

    // The thread's own.
    Backoff backoff;
    std::size_t batchLimit;
    std::size_t unanswered = 0;  // entries of a request that goes again as it was
    PublicationName name;
    std::string body;
    std::size_t abandoned = 0;
};

}  // namespace ZorvClient
