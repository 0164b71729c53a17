/// The run directory belongs to one node at a time: "zorvd.pid" in it is locked while this object lives.
///
/// Failure: the constructor throws std::runtime_error, one line.
#pragma once

#include <string>

namespace ZorvNode {

class RunLock {
public:
    explicit RunLock(const std::string& runDirectory);
    ~RunLock();

    RunLock(const RunLock&) = delete;
    RunLock& operator=(const RunLock&) = delete;

private:
    const std::string path;
    int descriptor;
};

}  // namespace ZorvNode
