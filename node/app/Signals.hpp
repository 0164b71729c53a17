/// The signals that steer zorvd, taken one by one by its main thread.
#pragma once

#include <pthread.h>
#include <signal.h>

namespace ZorvNode {

class Signals {
public:
    /// Blocks them for this thread and all that it starts: before any thread is started, on the main thread.
    Signals();

    /// The next one: SIGTERM, SIGINT, SIGHUP, or SIGUSR1 after wake.
    int wait();

    /// Makes wait return SIGUSR1; from any thread.
    void wake();

private:
    sigset_t set{};
    const pthread_t mainThread;
};

}  // namespace ZorvNode
