/// The node's interface to applications, tools and gateways: all resources behind one listener.
///
/// Threads:   start and stop on one thread.
/// Ownership: node and settings outlive it.
/// Failure:   start throws std::runtime_error.
#pragma once

#include "api/NotificationFollower.hpp"
#include "api/http/HttpListener.hpp"
#include "api/resources/StreamCounters.hpp"
#include "runtime/Node.hpp"

namespace ZorvNode {

class Api {
public:
    explicit Api(Node& node);

    void start() { listener.start(); }
    void stop() { listener.stop(); }

    const HttpRoutes& getRoutes() const { return routes; }

private:
    NotificationFollower follower;
    StreamCounters streams;
    HttpRoutes routes;
    HttpListener listener;
};

}  // namespace ZorvNode
