/// Reads one HTTP/1.1 answer.
///
/// This and HttpPost are all of HTTP that is needed here. A library brings locks of its own, which a fork in another
/// thread can leave taken for ever in the child, and its weight into every application.
///
/// Threads:   the sender's.
/// Failure:   ConnectionLost, also for what is not HTTP or is longer than an answer of the node can be.
#pragma once

#include "Socket.hpp"

#include <cstddef>
#include <string>

namespace ZorvClient {

struct HttpAnswer {
    int status = 0;
    std::string statusText;
    std::string body;
    bool isLast = false;  ///< nothing more can be asked on this connection
};

class HttpReader {
public:
    /// @param connection is not owned.
    HttpReader(Socket& connection, DeadlineT until) : socket(connection), deadline(until) {}

    /// Interim answers are skipped.
    HttpAnswer read();

private:
    enum class Length { known, chunked, untilEnd };

    struct Frame {
        Length length = Length::untilEnd;
        std::size_t bytes = 0;  // when known
    };

    Frame readHead(HttpAnswer& answer);
    void readStatus(HttpAnswer& answer);
    static void readField(const std::string& line, HttpAnswer& answer, Frame& frame);
    static Frame onlyFrame(const Frame& before, const Frame& frame);
    void readBody(const Frame& frame, std::string& body);
    void readChunks(std::string& body);
    std::string readLine();
    void readBytes(std::size_t count, std::string& body);
    bool refill();

    Socket& socket;
    const DeadlineT deadline;
    std::string buffer;
    std::size_t position = 0;  // of what is not read yet in buffer
    std::size_t headBytes = 0;
};

}  // namespace ZorvClient
