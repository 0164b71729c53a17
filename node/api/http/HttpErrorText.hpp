/// Errors as they go out: an Error object.
#pragma once

#include <Poco/Net/HTTPServerResponse.h>

#include "api/http/HttpMessage.hpp"

namespace ZorvNode {

std::string errorText(const HttpError& error);

/// A whole answer, for a connection that is closed behind it.
std::string lastAnswer(const HttpError& error);

void sendError(const HttpError& error, Poco::Net::HTTPServerResponse& to);

}  // namespace ZorvNode
