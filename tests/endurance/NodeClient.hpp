/// A client of a node's interface: one connection, as long as the node keeps it, and one request at a time.
///
/// Threads: one.
/// Failure: Poco::Exception when the node is gone.
#pragma once

#include <Poco/Net/HTTPClientSession.h>

#include <optional>
#include <string>
#include <utility>

namespace ZorvTest {

struct NodeAnswer {
    int status = 0;
    std::string body;
};

class NodeClient {
public:
    explicit NodeClient(std::string socketPath) : socket(std::move(socketPath)) {}

    NodeAnswer ask(const std::string& method, const std::string& target, const std::string& body = "");

private:
    void connect();

    const std::string socket;
    std::optional<Poco::Net::HTTPClientSession> session;
};

}  // namespace ZorvTest
