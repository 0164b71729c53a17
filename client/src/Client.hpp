/// One client of the application: takes its calls, in this process and in those forked from it.
///
/// Threads:   post, flush, counters from any; close is the last call. The functions around a fork: the forking thread.
/// Failure:   codes, and std::bad_alloc and std::system_error.
#pragma once

#include "NotificationJson.hpp"
#include "Sender.hpp"
#include "Settings.hpp"

#include <memory>

namespace ZorvClient {

class Client {
public:
    explicit Client(const Settings& chosen);
    ~Client();

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    ZorvClientResultT post(Kind kind, const ZorvClientNotificationT& notification);
    ZorvClientResultT flush(Outbox::DurationT timeout);
    ZorvClientCountersT counters() const;
    ZorvClientResultT close(Outbox::DurationT timeout);

    void beforeFork() noexcept;
    void afterForkInParent() noexcept;
    void afterForkInChild() noexcept;

    Client* nextOfAll = nullptr;  // for ForkGuard

private:
    const Settings settings;
    std::unique_ptr<Sender> sender;  // null in a child for which there was no memory
    std::unique_ptr<Sender> spare;   // during a fork: the child's
};

}  // namespace ZorvClient
