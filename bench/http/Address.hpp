/// Where a server is: a port of this machine, or a Unix-domain socket.
#pragma once

#include <cstdint>
#include <string>

namespace ZorvBench {

struct Address {
    std::string socket;      ///< path; empty for TCP
    std::uint16_t port = 0;  ///< on the loopback interface
};

}  // namespace ZorvBench
