/// One connection: takes request after request, asks who may, calls the handler, answers.
///
/// Threads: its own, one of the server's.
/// Failure: answers with an Error object; what is wrong with HTTP itself ends the connection too.
#pragma once

#include <Poco/Net/HTTPServerRequestImpl.h>
#include <Poco/Net/HTTPServerResponseImpl.h>
#include <Poco/Net/TCPServerConnection.h>

#include "LogSink.hpp"
#include "api/http/HttpServices.hpp"
#include "api/http/HttpSession.hpp"

namespace ZorvNode {

class HttpConnection : public Poco::Net::TCPServerConnection {
public:
    /// @param isLocal a Unix-domain socket: the peer's user decides, no token.
    HttpConnection(const Poco::Net::StreamSocket& connected, HttpServices& httpServices, bool isLocal,
                   const LogSinkT& logSink);

    void run() override;

private:
    using RequestT = Poco::Net::HTTPServerRequestImpl;
    using ResponseT = Poco::Net::HTTPServerResponseImpl;

    void serve(BoundedSocket& bounded);
    bool serveOne(HttpSession& session);
    void answer(RequestT& from, ResponseT& to, HttpSession& session);
    HttpResponse handle(RequestT& from, ResponseT& to, HttpSession& session);
    HttpResponse run(const FoundRoute& found, const HttpRequest& request) const;
    std::string readBody(const RequestT& from, ResponseT& to, HttpSession& session) const;
    Caller identify(const RequestT& from);
    void sendStream(const std::function<void(EventSink&)>& stream, const RequestT& from, ResponseT& to);

    HttpServices& services;
    const bool local;
    const LogSinkT& log;
    Poco::Net::HTTPServerParams::Ptr params;
    std::optional<Caller> peer;  // of a local connection; it stays the same
};

}  // namespace ZorvNode
