/// The real zorvd, running beside the test, and zorvctl at its socket.
///
/// Failure: the constructor throws when the node does not answer in time, with what it has said.
#pragma once

#include <memory>

#include "NodeFiles.hpp"

namespace ZorvTest {

class RunningNode {
public:
    /// @param environment "NAME=value", beside TZ=UTC.
    explicit RunningNode(const NodeFiles& nodeFiles, const std::vector<std::string>& further = {},
                         std::vector<std::string> environment = {});

    /// Runs zorvctl to its end, in a terminal's stead with plain output and in UTC.
    ProcessResult ctl(const std::vector<std::string>& arguments) const;

    /// What a command prints that has to succeed.
    std::string out(const std::vector<std::string>& arguments) const;

    /// The answer's body of a request that has to succeed.
    std::string request(const std::string& method, const std::string& target, const std::string& body = "") const;

    /// Waits until everything published has been handled and written.
    void settle() const;

    /// Waits until so many streams have been opened since the start.
    void awaitStreams(unsigned number) const;

    /// SIGTERM, and its end.
    ProcessResult stop();
    void kill();

    RunningProcess& process() { return *zorvd; }

private:
    void awaitReadiness();

    const NodeFiles& nodeFiles;
    std::unique_ptr<RunningProcess> zorvd;
};

/// The command line of zorvctl at a socket.
std::vector<std::string> ctlCommand(const std::string& socket, const std::vector<std::string>& arguments);

}  // namespace ZorvTest
