/// Posts one JSON body to the node and reads the answer.
///
/// Threads:   the sender's.
/// Failure:   ConnectionLost.
#pragma once

#include "HttpReader.hpp"
#include "Socket.hpp"

#include <string>

namespace ZorvClient {

/// @param socket is connected. It is left open; see HttpAnswer::isLast. @param name of the publication.
HttpAnswer post(Socket& socket, const std::string& target, const std::string& name, const std::string& body,
                DeadlineT deadline);

}  // namespace ZorvClient
