/// One connection to the node at a time, with deadlines, that another thread can cut.
///
/// Threads:   the sender's; interrupt and the functions around a fork from any.
/// Ownership: owns the descriptor, which is not passed on to other programs.
/// Failure:   ConnectionLost.
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <stdexcept>
#include <string>

namespace ZorvClient {

/// There is no connection, or none any more, or nothing comes in time, or what comes makes no sense.
struct ConnectionLost : std::runtime_error {
    using std::runtime_error::runtime_error;
};

using DeadlineT = std::chrono::steady_clock::time_point;

class Socket {
public:
    Socket() = default;
    ~Socket() { close(); }

    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// Never waits: a node that is not ready to take a connection at once counts as absent.
    void connect(const std::string& path);
    bool isOpen() const { return descriptor >= 0; }
    void close();

    /// False when the peer answers or hangs up before it has everything.
    bool send(const std::string& data, DeadlineT deadline);

    /// At least one byte. @return 0 at the end of the connection.
    std::size_t receive(char* buffer, std::size_t size, DeadlineT deadline);

    /// Cuts the connection, and every later one.
    void interrupt();

    /// Around a fork, in the forking thread.
    void lockForFork() { mutex.lock(); }
    void unlockAfterFork() { mutex.unlock(); }

    /// In a child: the connection is the parent's.
    void forgetInChild();

private:
    /// @return the poll events that have come.
    short await(short events, DeadlineT deadline) const;

    std::mutex mutex;     // guards changes of the descriptor, and interrupted
    int descriptor = -1;  // read by the sender's thread without the mutex: it alone changes it
    bool interrupted = false;
};

}  // namespace ZorvClient
