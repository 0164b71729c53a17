/// A connected stream socket, TCP on the loopback interface or Unix-domain.
///
/// Threads:   one at a time.
/// Ownership: owns the descriptor.
/// Failure:   std::system_error; also when nothing can be sent or comes for a minute.
#pragma once

#include <cstddef>
#include <string_view>

#include "Address.hpp"

namespace ZorvBench {

class Socket {
public:
    explicit Socket(const Address& address);
    ~Socket();

    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    void send(std::string_view data);

    /// At least one byte. @return how many; 0 at the end of the connection.
    std::size_t receive(char* buffer, std::size_t size);

private:
    void connectTo(const Address& address);
    void limitWaiting();

    const int descriptor;
};

}  // namespace ZorvBench
