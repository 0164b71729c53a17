#include "api/http/HttpConnection.hpp"

#include <Poco/Net/NetException.h>
#include <Poco/String.h>
#include <Poco/URI.h>

#include "ZorvMwSpiLog_1.h"
#include "api/http/EventWriter.hpp"
#include "api/http/HttpErrorText.hpp"

namespace ZorvNode {

namespace {

constexpr std::chrono::milliseconds longestDrain(500);
constexpr std::size_t largestDrain = 1U << 20U;

Poco::Timespan timespan(std::chrono::milliseconds time)
{
    return {std::chrono::duration_cast<std::chrono::microseconds>(time).count()};
}

HttpError refusalOf(const BoundedSocket& bounded, const std::string& otherwise)
{
    switch (bounded.getRefusal()) {
    case Refusal::tooSlow:
        return HttpError(408, "the request did not arrive in time");
    case Refusal::tooLarge:
        return HttpError(431, "the request's header is larger than the node takes");
    default:
        return HttpError(otherwise.find("too long") != std::string::npos ? 431 : 400, "not HTTP: " + otherwise);
    }
}

HttpRequest readTarget(const Poco::Net::HTTPRequest& from)
{
    HttpRequest request;
    request.method = from.getMethod();
    try {
        const Poco::URI uri(from.getURI());
        request.path = uri.getPath();
        for (const auto& [name, value] : uri.getQueryParameters()) {
            request.query[name] = value;
        }
    } catch (const Poco::Exception& e) {
        throw HttpError(400, "not a request target: " + from.getURI());
    }
    request.lastEventId = from.get("Last-Event-ID", "");
    request.publicationId = from.get("Publication-ID", "");
    return request;
}

void require(Permission permission, const Caller& caller, bool local)
{
    if (!local && !caller.mayRead) {
        throw HttpError(401, "a known bearer token is needed");
    }
    const bool may = permission == Permission::read      ? caller.mayRead
                     : permission == Permission::publish ? caller.mayPublish
                                                         : caller.mayManage;
    if (!may) {
        throw HttpError(403, permission == Permission::publish ? "this caller may not publish"
                                                               : "this caller may not manage the node");
    }
}

/// With or without parameters, such as charset.
bool isJson(const std::string& contentType)
{
    return Poco::icompare(Poco::trim(contentType.substr(0, contentType.find(';'))), "application/json") == 0;
}

void send(const HttpResponse& response, Poco::Net::HTTPServerResponse& to)
{
    to.setStatusAndReason(static_cast<Poco::Net::HTTPResponse::HTTPStatus>(response.status));
    to.setContentType("application/json");
    to.sendBuffer(response.body.data(), response.body.size());
}

void refuse(const HttpError& error, BoundedSocket& bounded)
{
    const std::string text = lastAnswer(error);
    bounded.sendBytes(text.data(), static_cast<int>(text.size()), 0);
}

/// Counts as long as it lives.
struct Counted {
    explicit Counted(std::atomic<std::size_t>& itsCounter) : counter(itsCounter), number(++itsCounter) {}
    ~Counted() { --counter; }

    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    std::atomic<std::size_t>& counter;
    const std::size_t number;
};

/// Lets the peer read the last answer before the connection goes: unread bytes would reset it.
void endGently(BoundedSocket& bounded)
{
    char ignored[4096];
    try {
        bounded.shutdownSend();
        bounded.allow(largestDrain, longestDrain);
        while (bounded.receiveBytes(ignored, sizeof(ignored), 0) > 0) {}
    } catch (const Poco::Exception&) {
        // it has gone, or has more to say than anybody will read
    }
}

}  // namespace

HttpConnection::HttpConnection(const Poco::Net::StreamSocket& connected, HttpServices& httpServices, bool isLocal,
                               const LogSinkT& logSink)
    : TCPServerConnection(connected),
      services(httpServices),
      local(isLocal),
      log(logSink),
      params(new Poco::Net::HTTPServerParams)
{
    params->setKeepAlive(true);
    params->setMaxKeepAliveRequests(0);
    params->setTimeout(timespan(services.settings.requestTime));
    params->setKeepAliveTimeout(timespan(services.settings.idleTime));
}

void HttpConnection::run()
{
    auto* bounded = new BoundedSocket(socket());  // the stream socket owns it
    Poco::Net::StreamSocket stream(bounded);
    auto* const key = static_cast<Poco::Net::StreamSocketImpl*>(bounded);
    try {
        bounded->setSendTimeout(timespan(services.settings.requestTime));
        if (services.connections.add(key)) {
            ++services.counters.accepted;
            serve(*bounded);
        } else {
            ++services.counters.refused;
            refuse(HttpError(503, "too many connections; try again later"), *bounded);
            endGently(*bounded);
        }
    } catch (const Poco::Exception&) {
        // the peer went away
    } catch (const std::exception& e) {
        log(ZORV_LOG_WARNING, std::string("A connection ended: ") + e.what());
    }
    services.connections.remove(key);
}

void HttpConnection::serve(BoundedSocket& bounded)
{
    HttpSession session(bounded, params);
    while (!services.connections.areEnding() && session.hasMoreRequests()) {
        if (!serveOne(session)) {
            endGently(bounded);
            return;
        }
    }
}

/// False when the connection is to be closed.
bool HttpConnection::serveOne(HttpSession& session)
{
    BoundedSocket& bounded = session.getBounded();
    bounded.allow(services.settings.headerBound, services.settings.requestTime);
    ++services.counters.requests;
    ResponseT response(session);
    response.setVersion(Poco::Net::HTTPMessage::HTTP_1_1);
    try {
        RequestT request(response, session, params.get());
        if (bounded.hasEnded()) {
            throw Poco::Net::MessageException("the header ends too early");  // its reader does not mind
        }
        response.setKeepAlive(request.getKeepAlive() && session.canKeepAlive() && !services.connections.areEnding());
        answer(request, response, session);
        return response.getKeepAlive();
    } catch (const Poco::Net::NoMessageException&) {
        if (bounded.getRefusal() == Refusal::none) {
            return false;
        }
        refuse(refusalOf(bounded, ""), bounded);
    } catch (const Poco::Exception& e) {
        if (!response.sent()) {
            refuse(refusalOf(bounded, e.message()), bounded);
        }
    }
    ++services.counters.refusedRequests;
    return false;
}

void HttpConnection::answer(RequestT& from, ResponseT& to, HttpSession& session)
{
    try {
        const HttpResponse response = handle(from, to, session);
        if (response.stream) {
            sendStream(response.stream, from, to);
            services.counters.stalledStreams += session.getBounded().hasStalled() ? 1 : 0;
        } else {
            send(response, to);
        }
        return;
    } catch (const HttpError& e) {
        if (e.status == 405) {
            to.set("Allow", services.routes.methodsOf(Poco::URI(from.getURI()).getPath()));
        } else if (e.status == 401) {
            to.set("WWW-Authenticate", "Bearer");
        } else if (e.status == 503) {
            to.set("Retry-After", "1");
        }
        sendError(e, to);
    }
    ++services.counters.refusedRequests;
}

HttpResponse HttpConnection::handle(RequestT& from, ResponseT& to, HttpSession& session)
{
    const bool keepAlive = to.getKeepAlive();
    to.setKeepAlive(false);  // until it is known where the request ends
    if (from.getVersion() != RequestT::HTTP_1_1 && from.getVersion() != RequestT::HTTP_1_0) {
        throw HttpError(400, "neither HTTP/1.0 nor HTTP/1.1");
    }
    const bool bodyFollows = hasBody(from);
    to.setKeepAlive(keepAlive && !bodyFollows);
    HttpRequest request = readTarget(from);
    request.caller = identify(from);
    const FoundRoute found = services.routes.find(request.method, request.path);
    require(found.route->permission, request.caller, local);
    if (bodyFollows) {
        request.body = readBody(from, to, session);
        to.setKeepAlive(keepAlive);
    }
    return run(found, request);
}

HttpResponse HttpConnection::run(const FoundRoute& found, const HttpRequest& request) const
{
    std::string reason;
    try {
        return found.route->handler(request, found.name);
    } catch (const HttpError&) {
        throw;
    } catch (const Poco::Exception& e) {
        reason = e.displayText();
    } catch (const std::exception& e) {
        reason = e.what();
    }
    log(ZORV_LOG_ERROR, "The request " + request.method + " " + found.route->pattern + " failed: " + reason);
    throw HttpError(500, reason);
}

std::string HttpConnection::readBody(const RequestT& from, ResponseT& to, HttpSession& session) const
{
    const std::size_t bound = services.settings.bodyBound;
    if (!isJson(from.getContentType())) {
        throw HttpError(415, "the body is not application/json");
    }
    if (from.hasContentLength() && from.getContentLength64() > static_cast<Poco::Int64>(bound)) {
        throw HttpError(413, "the body is larger than " + std::to_string(bound) + " bytes");
    }
    if (from.getExpectContinue()) {
        to.sendContinue();
    }
    return session.readBody(from, services.settings);
}

Caller HttpConnection::identify(const RequestT& from)
{
    if (local) {
        if (!peer) {
            peer = callerOf(socket().impl()->sockfd(), services.settings.permissions);
        }
        return *peer;
    }
    return services.tokens->callerOf(from.get("Authorization", ""), from.clientAddress().toString());
}

void HttpConnection::sendStream(const std::function<void(EventSink&)>& stream, const RequestT& from, ResponseT& to)
{
    const Counted counted(services.openStreams);
    if (counted.number > services.settings.streamBound) {
        ++services.counters.refusedStreams;
        throw HttpError(503, "too many streams; try again later");
    }
    ++services.counters.streams;
    to.setKeepAlive(false);
    to.setChunkedTransferEncoding(from.getVersion() != RequestT::HTTP_1_0);
    to.setContentType("text/event-stream");
    to.set("Cache-Control", "no-store");
    EventWriter writer(to.send(), services.connections);
    try {
        stream(writer);
    } catch (const std::exception& e) {
        log(ZORV_LOG_ERROR, "The stream " + from.getURI() + " failed: " + e.what());
        throw Poco::IOException("a stream that failed");  // ends the connection
    }
}

}  // namespace ZorvNode
