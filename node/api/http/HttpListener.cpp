#include "api/http/HttpListener.hpp"

#include <Poco/Net/Context.h>
#include <Poco/Net/NetException.h>
#include <Poco/Net/SecureServerSocket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ZorvMwSpiLog_1.h"
#include "api/http/HttpConnection.hpp"

namespace ZorvNode {

using Poco::Net::ServerSocket;

namespace {

constexpr std::chrono::milliseconds patience(1000);
constexpr int backlog = 128;
constexpr int idleThreadSeconds = 60;
constexpr std::size_t refusalThreads = 8;  // those who tell the others that there is no room

class ConnectionFactory : public Poco::Net::TCPServerConnectionFactory {
public:
    ConnectionFactory(HttpServices& httpServices, bool isLocal, const LogSinkT& logSink)
        : services(httpServices),
          local(isLocal),
          log(logSink)
    {
    }

    Poco::Net::TCPServerConnection* createConnection(const Poco::Net::StreamSocket& socket) override
    {
        return new HttpConnection(socket, services, local, log);
    }

private:
    HttpServices& services;
    const bool local;
    const LogSinkT& log;
};

Poco::Net::SocketAddress localAddress(const std::string& path)
{
    return {Poco::Net::SocketAddress::UNIX_LOCAL, path};
}

/// A socket file that nobody listens on any more is in the way.
void removeLeftover(const std::string& path)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return;
    }
    if (!S_ISSOCK(status.st_mode)) {
        throw std::runtime_error("is there already and is no socket");
    }
    try {
        Poco::Net::StreamSocket probe(localAddress(path));
    } catch (const Poco::Exception&) {
        unlink(path.c_str());
        return;
    }
    throw std::runtime_error("another node answers on it");
}

ServerSocket listenLocally(const ApiSettings& settings)
{
    removeLeftover(settings.socket);
    const mode_t old = umask(S_IRWXG | S_IRWXO);  // nobody gets in before the permissions stand
    ServerSocket socket;
    try {
        socket.bind(localAddress(settings.socket), false);
    } catch (...) {
        umask(old);
        throw;
    }
    umask(old);
    if ((settings.socketGroup && chown(settings.socket.c_str(), static_cast<uid_t>(-1), *settings.socketGroup) != 0) ||
        chmod(settings.socket.c_str(), settings.socketMode) != 0) {
        throw std::runtime_error("its group or mode cannot be set");
    }
    socket.listen(backlog);
    return socket;
}

ServerSocket listenWithTls(const TlsSettings& settings)
{
    Poco::Net::Context::Params params;
    params.privateKeyFile = settings.key;
    params.certificateFile = settings.certificate;
    params.verificationMode = Poco::Net::Context::VERIFY_NONE;
    params.cipherList = "HIGH:!aNULL:!MD5";
    Poco::Net::Context::Ptr context(new Poco::Net::Context(Poco::Net::Context::TLS_SERVER_USE, params));
    context->requireMinimumProtocol(Poco::Net::Context::PROTO_TLSV1_2);
    // The part that is secure is shared, not cut off. NOLINTNEXTLINE(cppcoreguidelines-slicing)
    return Poco::Net::SecureServerSocket(Poco::Net::SocketAddress(settings.address, settings.port), backlog, context);
}

}  // namespace

HttpListener::HttpListener(const ApiSettings& apiSettings, const HttpRoutes& httpRoutes, LogSinkT logSink)
    : settings(apiSettings),
      log(std::move(logSink)),
      services(apiSettings, httpRoutes),
      threads("api", 2, static_cast<int>(settings.connectionBound + refusalThreads), idleThreadSeconds)
{
}

HttpListener::~HttpListener()
{
    stop();
}

void HttpListener::start()
{
    std::string where = settings.socket;
    try {
        serve(listenLocally(settings), true);
        hasSocket = true;
        if (settings.tls) {
            where = settings.tls->address + ":" + std::to_string(settings.tls->port);
            services.tokens = std::make_unique<const Tokens>(settings.tls->tokens);
            serve(listenWithTls(*settings.tls), false);
            log(ZORV_LOG_NOTICE, "listening with TLS on " + where);
        }
    } catch (const Poco::Exception& e) {
        stop();
        throw std::runtime_error("cannot listen on " + where + ": " + e.displayText());
    } catch (const std::exception& e) {
        stop();
        throw std::runtime_error("cannot listen on " + where + ": " + e.what());
    }
}

void HttpListener::serve(const ServerSocket& socket, bool isLocal)
{
    Poco::Net::TCPServerParams::Ptr params(new Poco::Net::TCPServerParams);
    params->setMaxThreads(static_cast<int>(settings.connectionBound + refusalThreads));
    params->setMaxQueued(backlog);
    sockets.emplace_back(socket);
    servers.push_back(std::make_unique<Poco::Net::TCPServer>(new ConnectionFactory(services, isLocal, log), threads,
                                                             sockets.back(), params));
    servers.back()->start();
}

void HttpListener::stop()
{
    for (PatientServerSocket& socket : sockets) {
        socket.tellStop();
    }
    for (const auto& server : servers) {
        server->stop();
    }
    if (hasSocket) {
        unlink(settings.socket.c_str());
        hasSocket = false;
    }
    if (!servers.empty()) {
        services.connections.end(patience);
        threads.joinAll();
        servers.clear();
        sockets.clear();
    }
}

}  // namespace ZorvNode
