/// HTTP/1.1 on a Unix-domain socket and, when asked for, over TLS: a thread for each connection, bounded in everything.
///
/// Threads:   handlers run on the connections' threads, any number at a time. start and stop on one thread.
/// Ownership: routes outlive it. The socket file is its own from start to stop.
/// Failure:   start throws std::runtime_error, one line that names the socket. A handler that throws is answered with 500.
#pragma once

#include <Poco/Net/ServerSocket.h>
#include <Poco/Net/TCPServer.h>
#include <Poco/ThreadPool.h>

#include <memory>
#include <vector>

#include "LogSink.hpp"
#include "api/http/ApiSettings.hpp"
#include "api/http/HttpServices.hpp"
#include "api/http/PatientServerSocket.hpp"

namespace ZorvNode {

class HttpListener {
public:
    HttpListener(const ApiSettings& apiSettings, const HttpRoutes& httpRoutes, LogSinkT logSink);
    ~HttpListener();

    HttpListener(const HttpListener&) = delete;
    HttpListener& operator=(const HttpListener&) = delete;

    void start();

    /// Accepts nobody any more, ends the streams, and lets requests that run finish.
    void stop();

    const ConnectionCounters& getCounters() const { return services.counters; }

private:
    void serve(const Poco::Net::ServerSocket& socket, bool isLocal);

    const ApiSettings& settings;
    const LogSinkT log;
    HttpServices services;
    Poco::ThreadPool threads;
    std::vector<PatientServerSocket> sockets;  // of the servers
    std::vector<std::unique_ptr<Poco::Net::TCPServer>> servers;
    bool hasSocket = false;
};

}  // namespace ZorvNode
