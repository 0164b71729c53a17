#include "NodeConnection.hpp"

#include <Poco/Net/HTTPClientSession.h>
#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/Net/NetException.h>
#include <Poco/Net/SocketAddress.h>
#include <Poco/StreamCopier.h>
#include <sys/un.h>

#include <system_error>

#include "Failure.hpp"
#include "JsonAccess.hpp"
#include "files/InputError.hpp"
#include "files/LineText.hpp"

namespace ZorvCtl {

using namespace ZorvInput;
using namespace Poco::Net;

namespace {

constexpr unsigned deepestAnswer = 100;

/// Runs what talks to the node and tells its failures apart.
template <class OperationT>
auto talking(const std::string& socketPath, const Interruption& interruption, OperationT operation)
    -> decltype(operation())
{
    try {
        return operation();
    } catch (const Poco::TimeoutException&) {
        throw Failure(refused, "the node on " + socketPath + " does not answer in time");
    } catch (const Poco::Exception& e) {
        if (interruption.happened()) {
            throw Interrupted();
        }
        const bool isSystem = e.code() > 0;
        throw NoNode(socketPath,
                     isSystem ? std::generic_category().message(e.code()) : "the connection ended before the answer");
    }
}

void sendRequest(HTTPClientSession& session, HTTPRequest& request, const std::string& body)
{
    request.setHost("localhost");
    if (request.getMethod() != HTTPRequest::HTTP_GET) {
        request.setContentType("application/json");
        request.setContentLength(static_cast<std::streamsize>(body.size()));
    }
    session.sendRequest(request) << body << std::flush;
}

Answer readAnswer(const HTTPResponse& response, std::istream& stream)
{
    Answer answer;
    answer.status = response.getStatus();
    std::string body;
    Poco::StreamCopier::copyToString(stream, body);
    try {
        parseJson(body, deepestAnswer, answer.body);
    } catch (const ValueError& e) {
        throw Failure(refused, "the node answered " + std::to_string(answer.status) + " " +
                                   toLineText(response.getReason()) + ", " + e.what());
    }
    return answer;
}

}  // namespace

std::string reasonOf(const JsonT& error)
{
    const std::string reason = toLineText(textOr(error, "reason", "refused"));
    const std::string field = toLineText(textOr(error, "field", ""));
    const bool isNamed = field.empty() || reason.compare(0, field.size() + 1, field + ":") == 0;
    return isNamed ? reason : field + ": " + reason;
}

void expectGood(const Answer& answer)
{
    if (answer.status >= HTTPResponse::HTTP_BAD_REQUEST) {
        const JsonT* error = find(answer.body, "error");
        throw Failure(refused,
                      error != nullptr ? reasonOf(*error) : "the node answered " + std::to_string(answer.status));
    }
}

NodeConnection::NodeConnection(std::string path, Interruption& theInterruption)
    : socketPath(std::move(path)),
      interruption(theInterruption)
{
    if (socketPath.empty() || socketPath.size() >= sizeof(sockaddr_un::sun_path)) {
        throw Failure(badInput, "not a path for a socket, 1 to " + std::to_string(sizeof(sockaddr_un::sun_path) - 1) +
                                    " bytes: \"" + toLineText(socketPath) + "\"");
    }
}

JsonDocumentT NodeConnection::get(const Target& target)
{
    return goodBody(exchange(HTTPRequest::HTTP_GET, target, ""));
}

JsonDocumentT NodeConnection::post(const Target& target, const std::string& body, std::chrono::seconds timeout)
{
    return goodBody(exchange(HTTPRequest::HTTP_POST, target, body, timeout));
}

JsonDocumentT NodeConnection::put(const Target& target, const std::string& body)
{
    return goodBody(exchange(HTTPRequest::HTTP_PUT, target, body));
}

Answer NodeConnection::exchange(const std::string& method, const Target& target, const std::string& body,
                                std::chrono::seconds timeout)
{
    return talking(socketPath, interruption, [&] {
        const StreamSocket socket = connect(timeout);
        const Interruption::Watch watch(interruption, socket);
        HTTPClientSession session(socket);
        HTTPRequest request(method, target.str(), HTTPMessage::HTTP_1_1);
        request.setKeepAlive(false);
        sendRequest(session, request, body);
        HTTPResponse response;
        return readAnswer(response, session.receiveResponse(response));
    });
}

std::unique_ptr<EventStream> NodeConnection::follow(const Target& target, const std::string& lastEventId)
{
    return talking(socketPath, interruption, [&] {
        const StreamSocket socket = connect(usualTimeout);
        auto session = std::make_unique<HTTPClientSession>(socket);
        const Interruption::Watch watch(interruption, socket);
        HTTPRequest request(HTTPRequest::HTTP_GET, target.str(), HTTPMessage::HTTP_1_1);
        request.set("Accept", "text/event-stream");
        if (!lastEventId.empty()) {
            request.set("Last-Event-ID", lastEventId);
        }
        sendRequest(*session, request, "");
        HTTPResponse response;
        std::istream& stream = session->receiveResponse(response);
        if (response.getStatus() != HTTPResponse::HTTP_OK) {
            expectGood(readAnswer(response, stream));
        }
        return std::make_unique<EventStream>(std::move(session), stream, interruption);
    });
}

StreamSocket NodeConnection::connect(std::chrono::seconds timeout) const
{
    StreamSocket socket(SocketAddress(SocketAddress::UNIX_LOCAL, socketPath));
    const Poco::Timespan limit(static_cast<long>(timeout.count()), 0);
    socket.setReceiveTimeout(limit);
    socket.setSendTimeout(limit);
    return socket;
}

JsonDocumentT NodeConnection::goodBody(Answer answer) const
{
    expectGood(answer);
    return std::move(answer.body);
}

}  // namespace ZorvCtl
