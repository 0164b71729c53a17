/// One connection's HTTP: request after request, with their bodies read whole.
///
/// Threads:   the connection's.
/// Failure:   readBody throws HttpError; what is left of the request is not to be read then.
#pragma once

#include <Poco/Net/HTTPServerParams.h>
#include <Poco/Net/HTTPServerRequest.h>
#include <Poco/Net/HTTPServerSession.h>

#include <string>

#include "api/http/ApiSettings.hpp"
#include "api/http/BoundedSocket.hpp"
#include "api/http/HttpMessage.hpp"

namespace ZorvNode {

class HttpSession : public Poco::Net::HTTPServerSession {
public:
    HttpSession(BoundedSocket& boundedSocket, Poco::Net::HTTPServerParams::Ptr params);

    BoundedSocket& getBounded() { return bounded; }

    /// The body that the header announces, in one piece or in chunks.
    std::string readBody(const Poco::Net::HTTPServerRequest& from, const ApiSettings& settings);

private:
    std::string readPiece(std::size_t length);
    std::string readChunks(std::size_t bound);
    std::size_t readChunkSize();
    std::string readLine();

    BoundedSocket& bounded;
};

/// Whether a body follows the header; 400 when that can be understood in more than one way.
bool hasBody(const Poco::Net::HTTPServerRequest& from);

}  // namespace ZorvNode
