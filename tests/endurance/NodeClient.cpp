#include "NodeClient.hpp"

#include <Poco/Net/HTTPRequest.h>
#include <Poco/Net/HTTPResponse.h>
#include <Poco/StreamCopier.h>

namespace ZorvTest {

void NodeClient::connect()
{
    if (!session) {
        session.emplace(
            Poco::Net::StreamSocket(Poco::Net::SocketAddress(Poco::Net::SocketAddress::UNIX_LOCAL, socket)));
        session->setKeepAlive(true);
    }
}

NodeAnswer NodeClient::ask(const std::string& method, const std::string& target, const std::string& body)
{
    connect();
    Poco::Net::HTTPRequest request(method, target, Poco::Net::HTTPMessage::HTTP_1_1);
    request.setContentType("application/json");
    request.setContentLength(static_cast<std::streamsize>(body.size()));
    session->sendRequest(request) << body;
    Poco::Net::HTTPResponse response;
    NodeAnswer answer;
    Poco::StreamCopier::copyToString(session->receiveResponse(response), answer.body);
    answer.status = response.getStatus();
    if (!response.getKeepAlive()) {
        session.reset();
    }
    return answer;
}

}  // namespace ZorvTest
