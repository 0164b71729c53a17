/// What all connections share: routes, bounds, counters, and the knowledge of who is connected.
///
/// Threads: any.
#pragma once

#include <Poco/Net/StreamSocket.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>

#include "api/http/ApiSettings.hpp"
#include "api/http/HttpRoutes.hpp"
#include "api/http/Tokens.hpp"

namespace ZorvNode {

struct ConnectionCounters {
    std::atomic<std::uint64_t> accepted{0};
    std::atomic<std::uint64_t> refused{0};
    std::atomic<std::uint64_t> requests{0};
    std::atomic<std::uint64_t> refusedRequests{0};
    std::atomic<std::uint64_t> streams{0};
    std::atomic<std::uint64_t> refusedStreams{0};
    std::atomic<std::uint64_t> stalledStreams{0};  ///< ended, as their readers had stopped reading
};

/// The connections that stand, so that the server can end them.
class OpenConnections {
public:
    explicit OpenConnections(std::size_t connectionBound) : bound(connectionBound) {}

    /// False when there are too many, or the server stops.
    bool add(Poco::Net::StreamSocketImpl* socket);
    void remove(Poco::Net::StreamSocketImpl* socket);

    /// Lets nobody in any more and stops receiving from those who are there; waits until they are gone, at most so long,
    /// then cuts off the rest.
    void end(std::chrono::milliseconds patience);

    bool areEnding() const { return ending; }

private:
    const std::size_t bound;
    std::atomic<bool> ending{false};
    std::mutex mutex;
    std::condition_variable changed;
    std::set<Poco::Net::StreamSocketImpl*> sockets;  // guarded by mutex
};

struct HttpServices {
    HttpServices(const ApiSettings& apiSettings, const HttpRoutes& httpRoutes)
        : settings(apiSettings),
          routes(httpRoutes),
          connections(apiSettings.connectionBound)
    {
    }

    const ApiSettings& settings;
    const HttpRoutes& routes;
    std::unique_ptr<const Tokens> tokens;  ///< with TLS only
    OpenConnections connections;
    ConnectionCounters counters;
    std::atomic<std::size_t> openStreams{0};
};

}  // namespace ZorvNode
