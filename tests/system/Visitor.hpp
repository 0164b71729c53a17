/// Somebody else at the node's socket: a client that runs as another user, in a process of its own.
///
/// Where the tests' own user may not become anybody else, the visitor is that user: isStranger() tells.
#pragma once

#include <sys/types.h>

#include <string>

namespace ZorvTest {

class Visitor {
public:
    Visitor(uid_t wantedUser, gid_t wantedGroup);

    bool isStranger() const { return stranger; }

    /// The answer's status, or why there is no connection.
    std::string ask(const std::string& socket, const std::string& method, const std::string& target,
                    const std::string& body = "");

    /// As the node calls who has asked last: "user 65533 group 1 process 4711".
    std::string name() const;

private:
    [[noreturn]] void visit(const std::string& socket, const std::string& request, int answer) const;
    bool becomeStranger() const;

    const bool stranger;
    const uid_t user;
    const gid_t group;
    pid_t process = 0;
};

}  // namespace ZorvTest
