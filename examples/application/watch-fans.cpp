// An application in C++: two fans slow down, each watched by a thread. An alarm is an object; it ends with its scope.
//
//     watch-fans [SOCKET]
//
// Ends with 0 when the node has taken everything.
#include "zorv_client.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <functional>
#include <future>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

// Alarm types have two numbers: whose type it is, and which. 32473 is reserved for examples; take your company's.
constexpr std::uint32_t majorType = 32473;
constexpr std::uint32_t fanFailure = 301;

void check(ZorvClientResultT result)
{
    if (result != ZORV_CLIENT_OK) {
        throw std::runtime_error(zorvClientResultText(result));
    }
}

/// The way to the node. One is enough for all threads.
class Client {
public:
    /// @param socketPath null: from the environment.
    explicit Client(const char* socketPath)
    {
        ZorvClientOptionsT options{};
        options.socketPath = socketPath;
        check(zorvClientOpen(&options, &handle));
    }
    ~Client() { zorvClientClose(handle, 0); }

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    ZorvClientT* get() const { return handle; }

    void flush(std::chrono::milliseconds longest) const
    {
        check(zorvClientFlush(handle, static_cast<std::uint32_t>(longest.count())));
    }

    ZorvClientCountersT counters() const
    {
        ZorvClientCountersT numbers{};
        check(zorvClientCounters(handle, &numbers));
        return numbers;
    }

private:
    ZorvClientT* handle = nullptr;
};

/// An alarm that is active as long as the object lives.
class FanAlarm {
public:
    FanAlarm(const Client& way, std::string fan) : client(way), dn(std::move(fan)) {}
    ~FanAlarm()
    {
        const ZorvClientNotificationT notification = make(ZORV_CLIENT_CLEARED);
        zorvClientClear(client.get(), &notification);
    }

    FanAlarm(const FanAlarm&) = delete;
    FanAlarm& operator=(const FanAlarm&) = delete;

    /// Raising it again with another severity changes the alarm.
    void raise(ZorvClientSeverityT severity, int turnsPerMinute)
    {
        const std::string turns = std::to_string(turnsPerMinute);
        const ZorvClientInfoT info{"turnsPerMinute", turns.c_str()};
        ZorvClientNotificationT notification = make(severity);
        notification.info = &info;
        notification.infoCount = 1;
        check(zorvClientRaise(client.get(), &notification));  // copies what it is given
    }

private:
    ZorvClientNotificationT make(ZorvClientSeverityT severity) const
    {
        ZorvClientNotificationT notification{};
        notification.dn = dn.c_str();
        notification.majorType = majorType;
        notification.minorType = fanFailure;
        notification.severity = severity;
        return notification;
    }

    const Client& client;
    const std::string dn;
};

void watchFan(const Client& client, const std::string& dn)
{
    FanAlarm alarm(client, dn);
    alarm.raise(ZORV_CLIENT_MINOR, 2400);
    alarm.raise(ZORV_CLIENT_MAJOR, 900);
    alarm.raise(ZORV_CLIENT_CRITICAL, 0);
}

}  // namespace

int main(int argumentCount, char** arguments)
try {
    const Client client(argumentCount > 1 ? arguments[1] : nullptr);
    auto first = std::async(std::launch::async, watchFan, std::cref(client), "ManagedElement=1,Fan=1");
    auto second = std::async(std::launch::async, watchFan, std::cref(client), "ManagedElement=1,Fan=2");
    first.get();
    second.get();

    // What the threads have queued is on its way; this program ends soon and waits for the answers.
    client.flush(std::chrono::seconds(5));
    const ZorvClientCountersT counters = client.counters();
    std::cout << "sent " << counters.sent << ", rejected " << counters.rejected << '\n';
    return counters.rejected == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& e) {
    std::cerr << "watch-fans: " << e.what() << '\n';
    return EXIT_FAILURE;
}
