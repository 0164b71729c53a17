/// Server-sent events from the node, read ahead by a thread of its own.
///
/// Threads:   next on one thread at a time; an interruption from any ends the stream.
/// Ownership: owns its connection.
/// Failure:   a connection that breaks ends the stream.
#pragma once

#include <Poco/Net/HTTPClientSession.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <istream>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "Interruption.hpp"

namespace ZorvCtl {

struct Event {
    std::string name;
    std::string id;  ///< empty when the event carried none
    std::string data;
};

class EventStream {
public:
    enum class Next { event, quiet, ended };

    /// @param body the session's, where the events stand.
    EventStream(std::unique_ptr<Poco::Net::HTTPClientSession> theSession, std::istream& body,
                Interruption& interruption);
    ~EventStream();

    EventStream(const EventStream&) = delete;
    EventStream& operator=(const EventStream&) = delete;

    /// Waits for the next event, but not longer than this; after the end of the stream first gives what was read.
    Next next(Event& event, std::chrono::milliseconds timeout);

private:
    void read(std::istream& body);
    void push(Event event);

    std::unique_ptr<Poco::Net::HTTPClientSession> session;
    const Interruption::Watch watch;

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Event> events;  // guarded by mutex
    bool hasEnded = false;     // guarded by mutex
    bool isClosing = false;    // guarded by mutex

    std::thread reader;
};

}  // namespace ZorvCtl
