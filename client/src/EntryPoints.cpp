/// The functions of zorv_client.h. Nothing is thrown out of them.
///
/// Only what the system, memory or threads, refuses can end up here as an exception; all others are let through, because
/// the end of a cancelled thread is one of them.

// What the header declares is what the library shows.
#pragma GCC visibility push(default)
#include "zorv_client.h"
#pragma GCC visibility pop

#include "Client.hpp"
#include "Options.hpp"

#include <memory>
#include <new>
#include <system_error>

struct ZorvClientT : ZorvClient::Client {
    using Client::Client;
};

namespace {

using ZorvClient::Kind;
using MillisecondsT = std::chrono::milliseconds;

template <class OperationT>
ZorvClientResultT guarded(OperationT operation)
{
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return ZORV_CLIENT_NO_RESOURCES;
    } catch (const std::system_error&) {
        return ZORV_CLIENT_NO_RESOURCES;
    }
}

ZorvClientResultT post(ZorvClientT* client, Kind kind, const ZorvClientNotificationT* notification)
{
    if (client == nullptr || notification == nullptr) {
        return ZORV_CLIENT_BAD_ARGUMENT;
    }
    return guarded([&] { return client->post(kind, *notification); });
}

}  // namespace

extern "C" {

ZorvClientResultT zorvClientOpen(const ZorvClientOptionsT* options, ZorvClientT** client)
{
    if (client == nullptr) {
        return ZORV_CLIENT_BAD_ARGUMENT;
    }
    *client = nullptr;
    return guarded([&] {
        ZorvClient::Settings settings;
        const ZorvClientResultT result = ZorvClient::readOptions(options, settings);
        if (result == ZORV_CLIENT_OK) {
            *client = new ZorvClientT(settings);
        }
        return result;
    });
}

ZorvClientResultT zorvClientRaise(ZorvClientT* client, const ZorvClientNotificationT* notification)
{
    return post(client, Kind::raise, notification);
}

ZorvClientResultT zorvClientClear(ZorvClientT* client, const ZorvClientNotificationT* notification)
{
    return post(client, Kind::clear, notification);
}

ZorvClientResultT zorvClientAlert(ZorvClientT* client, const ZorvClientNotificationT* notification)
{
    return post(client, Kind::alert, notification);
}

ZorvClientResultT zorvClientFlush(ZorvClientT* client, uint32_t timeoutMs)
{
    if (client == nullptr) {
        return ZORV_CLIENT_BAD_ARGUMENT;
    }
    return guarded([&] { return client->flush(MillisecondsT(timeoutMs)); });
}

ZorvClientResultT zorvClientCounters(ZorvClientT* client, ZorvClientCountersT* counters)
{
    if (client == nullptr || counters == nullptr) {
        return ZORV_CLIENT_BAD_ARGUMENT;
    }
    return guarded([&] {
        *counters = client->counters();
        return ZORV_CLIENT_OK;
    });
}

ZorvClientResultT zorvClientClose(ZorvClientT* client, uint32_t timeoutMs)
{
    if (client == nullptr) {
        return ZORV_CLIENT_OK;
    }
    return guarded([&] {
        const ZorvClientResultT result = client->close(MillisecondsT(timeoutMs));
        if (result != ZORV_CLIENT_WRONG_THREAD) {
            delete client;
        }
        return result;
    });
}

const char* zorvClientResultText(ZorvClientResultT result)
{
    switch (result) {
    case ZORV_CLIENT_OK:
        return "done";
    case ZORV_CLIENT_BAD_ARGUMENT:
        return "null pointer, or number out of its range";
    case ZORV_CLIENT_BAD_TEXT:
        return "text missing or not UTF-8";
    case ZORV_CLIENT_TOO_LONG:
        return "text or additional information too long";
    case ZORV_CLIENT_BAD_SEVERITY:
        return "severity not INDETERMINATE to CRITICAL";
    case ZORV_CLIENT_QUEUE_FULL:
        return "queue full, notification dropped";
    case ZORV_CLIENT_TIMEOUT:
        return "not all answered in time";
    case ZORV_CLIENT_NO_RESOURCES:
        return "no memory or no thread";
    case ZORV_CLIENT_WRONG_THREAD:
        return "not from the outcome callback";
    }
    return "unknown result";
}

}  // extern "C"
