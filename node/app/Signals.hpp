/// The signals that steer zorvd, taken one by one by its main thread.
#pragma once

#include <signal.h>

#include <chrono>
#include <optional>

namespace ZorvNode {

class Signals {
public:
    /// Blocks them for this thread and all that it starts: before any thread is started, on the main thread.
    Signals();

    /// The next one: SIGTERM, SIGINT or SIGHUP. 0 when none has come in time; without a time it waits for one.
    int wait(const std::optional<std::chrono::microseconds>& patience);

private:
    sigset_t set{};
};

}  // namespace ZorvNode
