/// A connection to an HTTP/1.1 server that is kept: sends whole requests as they are prepared, reads the answers.
///
/// It understands of an answer no more than is needed to find its end, so that its own share of a measured time stays small.
///
/// Threads:   one at a time.
/// Failure:   std::runtime_error when the server hangs up or answers what is not understood.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Socket.hpp"

namespace ZorvBench {

class HttpConnection {
public:
    explicit HttpConnection(const Address& address);

    /// @param request head and body.
    /// @return the status.
    int exchange(std::string_view request);

    /// What the last answer contained.
    const std::string& body() const { return content; }

private:
    struct Head {
        int status = 0;
        std::size_t length = 0;
        bool chunked = false;
    };

    Head readHead();
    void readChunks();
    void readBytes(std::size_t count);
    std::string_view readLine();
    void refill();

    Socket socket;
    std::vector<char> buffer;
    std::size_t begin = 0;  // of what is not read yet in buffer
    std::size_t end = 0;
    std::string content;
};

}  // namespace ZorvBench
