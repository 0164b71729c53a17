/// A real node with the real fault management library for the applications of a test, which may be killed and come back.
///
/// Alarm filters are off: what is raised is active at once.
///
/// Threads:   one.
/// Failure:   std::runtime_error when the list of alarms cannot be read.
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>

#include "NodeFiles.hpp"

namespace ZorvTest {

class ClientNode {
public:
    /// Does not start it.
    ClientNode();

    /// It may take a moment until it listens.
    void start();
    void kill();

    std::string socketPath() const { return files.path("run/zorvd.sock"); }

    /// The alarming resources of all active alarms, as soon as there are so many; as they are when nothing has
    /// changed for ten seconds.
    std::multiset<std::string> awaitAlarms(std::size_t count) const;

private:
    std::multiset<std::string> readAlarms() const;

    NodeFiles files;
    std::unique_ptr<RunningProcess> process;
};

}  // namespace ZorvTest
