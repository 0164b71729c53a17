/// A program on a terminal of its own: what it shows, and what is typed.
///
/// The terminal leaves line ends as they are and echoes nothing.
///
/// Threads: one.
/// Failure: the constructor throws std::runtime_error when there is no terminal.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Process.hpp"

namespace ZorvTest {

class TerminalProcess {
public:
    explicit TerminalProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment = {});

    /// Kills it if it still runs.
    ~TerminalProcess();

    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    void type(const std::string& keys) const;

    /// Waits until all that it has shown is as wanted; false at its end, or after 30 seconds.
    bool awaitShown(const std::function<bool(const std::string& shown)>& isAsWanted);

    /// All that it has shown, out and err in one, once it has ended; after 30 seconds it is killed.
    ProcessResult awaitEnd();

private:
    bool readMore();

    int terminal = -1;
    int pid = -1;
    std::string shown;
};

}  // namespace ZorvTest
