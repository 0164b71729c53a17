/// Raises alarms on one connection, request after request, and says how fast they were acknowledged.
///
/// A server that answers 503 has no room: it is asked again after a moment. That belongs to the measured time, and to the
/// latency of the request.
///
/// Threads:   one.
/// Failure:   std::runtime_error when the server refuses, or when the alarms do not get active.
#pragma once

#include <string>
#include <vector>

#include "AlarmServer.hpp"
#include "Figures.hpp"
#include "HttpConnection.hpp"

namespace ZorvBench {

class RaiseRun {
public:
    /// @param server is not owned.
    RaiseRun(const AlarmServer& server, const Address& address, int alarms, int batch);

    /// Says `raises`, `request p50` and `request p99`, `busy`, and `active` for a server that counts.
    void perform();

private:
    void sendAll();
    void sendOne(const std::string& request);
    void awaitActive(int number);
    int countActive();

    const AlarmServer& server;
    HttpConnection connection;
    const int alarms;
    std::vector<std::string> requests;
    std::vector<SecondsT> latencies;
    int busy = 0;  // answers 503
};

}  // namespace ZorvBench
