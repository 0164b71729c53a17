/// Names each request of one sender, so that the node knows one that it gets again.
///
/// Threads: the sender's.
#pragma once

#include <cstdint>
#include <string>

namespace ZorvClient {

class PublicationName {
public:
    /// A name that no other sender has.
    PublicationName();

    /// The name of the next request.
    void advance() { ++number; }

    /// "CLIENT/NUMBER".
    std::string text() const { return client + "/" + std::to_string(number); }

private:
    std::string client;
    std::uint64_t number = 0;
};

}  // namespace ZorvClient
