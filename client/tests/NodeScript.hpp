/// A node that does as it is told: an HTTP server on a Unix socket in a folder of its own.
///
/// Each request takes the next step of the script; without one it is taken whole. Starts with start().
///
/// Threads:   any.
#pragma once

#include "TemporaryDirectory.hpp"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ZorvClientTest {

/// Everything the server writes to a request; nothing more is read from a connection when hangUp is set.
struct Step {
    std::string bytes;
    bool hangUp = false;
    bool hang = false;  ///< answers when release() is called
};

/// With Content-Length.
Step answer(int status, const std::string& body);
/// Rejects these items of a batch of so many.
Step rejectItems(std::size_t batch, const std::vector<std::size_t>& items);
/// Reads the request, then closes the connection.
Step loseConnection();
/// Reads the request and is silent until release().
Step hang();
/// Any bytes, then the end of the connection.
Step raw(const std::string& bytes);

class NodeScript {
public:
    NodeScript();
    ~NodeScript();

    NodeScript(const NodeScript&) = delete;
    NodeScript& operator=(const NodeScript&) = delete;

    const std::string& path() const { return socketPath; }

    void start();
    /// All connections end. The socket's file stays, as after a crash.
    void stop();

    void next(const Step& step);
    /// The next connection is answered at its first bytes and closed with the rest unread; not recorded.
    void answerEarly(const Step& step);
    /// Lets all that hang go on, now and later.
    void release();

    /// False after ten seconds.
    bool awaitRequests(std::size_t count);

    /// Waits until no client is connected. False after ten seconds.
    bool awaitNoConnection();

    /// Bodies in the order in which they came.
    std::vector<std::string> bodies();
    /// Heads, from the request line to the empty line.
    std::vector<std::string> heads();
    /// The minor types of each request.
    std::vector<std::vector<std::uint32_t>> batches();
    std::size_t connectionCount();

private:
    void acceptAll(int listener);
    void serve(int connection);
    bool serveEarly(int connection);
    void serveRequests(int connection);
    bool readRequest(int connection, std::string& buffer);
    Step takeStep(const std::string& body);

    const ZorvTest::TemporaryDirectory folder;
    const std::string socketPath;
    std::thread acceptor;
    std::mutex mutex;  // guards all below
    std::condition_variable changed;
    std::vector<std::thread> workers;
    std::vector<int> openConnections;
    std::deque<Step> steps;
    std::deque<Step> earlySteps;
    std::vector<std::string> receivedBodies;
    std::vector<std::string> receivedHeads;
    std::size_t connections = 0;
    int listening = -1;
    bool stopping = false;
    bool released = false;
};

}  // namespace ZorvClientTest
