/// A node that answers what a test tells it to, on a socket of its own, and remembers what it was asked.
///
/// Threads: any.
#pragma once

#include <Poco/Net/HTTPServer.h>

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "TemporaryDirectory.hpp"

namespace ZorvTest {

struct ScriptedAnswer {
    int status = 200;
    std::string body;
    bool isStream = false;
    bool staysOpen = false;  ///< a stream that ends with the test only
};

class ScriptedNode {
public:
    ScriptedNode();
    ~ScriptedNode();

    ScriptedNode(const ScriptedNode&) = delete;
    ScriptedNode& operator=(const ScriptedNode&) = delete;

    const std::string& socket() const { return path; }

    /// The next answer to "METHOD TARGET"; the last one given serves for ever. Anything else is answered with 404.
    void answer(const std::string& request, const std::string& body, int status = 200);

    /// Server-sent events. @param staysOpen the stream does not end behind them.
    void stream(const std::string& request, const std::string& events, bool staysOpen);

    /// "METHOD TARGET BODY" of each request so far; a Last-Event-ID stands before the body.
    std::vector<std::string> requests() const;

    /// Waits until there have been so many; false after ten seconds.
    bool awaitRequests(std::size_t number) const;

    /// Called by the server's threads.
    ScriptedAnswer take(const std::string& request, const std::string& recorded);
    void awaitEnd() const;

private:
    const TemporaryDirectory directory;
    const std::string path;
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::map<std::string, std::deque<ScriptedAnswer>> script;  // guarded by mutex
    std::vector<std::string> recorded;                         // guarded by mutex
    bool isEnding = false;                                     // guarded by mutex
    std::unique_ptr<Poco::Net::HTTPServer> server;
};

}  // namespace ZorvTest
