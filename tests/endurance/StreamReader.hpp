/// A northbound consumer that reads the node's notification stream at a pace of its own, and keeps what can be said of it:
/// how regularly the heartbeats came, whether a number is missing without notice, and the state of each alarm as reported.
///
/// Threads:   a thread of its own reads; the figures are for after finish.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <thread>

namespace ZorvTest {

/// The last sequence numbers of both kinds, as the ids of events tell them.
struct StreamPlace {
    std::uint64_t stateful = 0;
    std::uint64_t stateless = 0;

    std::uint64_t total() const { return stateful + stateless; }
    std::string toText() const { return std::to_string(stateful) + "." + std::to_string(stateless); }
};

struct StreamFigures {
    std::uint64_t alarms = 0;  ///< alerts too
    std::uint64_t heartbeats = 0;
    std::uint64_t rebuilts = 0;
    std::uint64_t resyncs = 0;
    std::uint64_t missed = 0;                         ///< numbers that did not come, a resync in their place
    std::uint64_t unexplained = 0;                    ///< numbers that did not come, nothing in their place
    std::chrono::duration<double> longestSilence{0};  ///< between two heartbeats, and behind the last one
    std::string lastEvent;
    StreamPlace place;
    std::set<std::string> active;  ///< DNs of the alarms last reported as active
};

struct StreamWish {
    std::optional<StreamPlace> after;  ///< none: from the oldest that the node has
    bool follow = true;                ///< false: up to what is there
    bool dawdles = false;              ///< stops behind the first event, until finish
};

class StreamReader {
public:
    StreamReader(const std::string& socket, const StreamWish& wish);
    ~StreamReader();

    StreamReader(const StreamReader&) = delete;
    StreamReader& operator=(const StreamReader&) = delete;

    /// Waits for the end of the stream; one that dawdles goes on now.
    const StreamFigures& finish();

private:
    using ClockT = std::chrono::steady_clock;

    void follow(const std::string& socket, const std::string& target);
    void note(const std::string& data);
    void noteResync();
    void noteAlarm(const std::string& data);

    const bool dawdles;
    std::atomic<bool> finishing{false};
    StreamFigures figures;
    StreamPlace eventPlace;
    bool isPlaced;  // figures.place is the place of all that came before
    std::optional<ClockT::time_point> lastHeartbeat;
    std::thread thread;
};

}  // namespace ZorvTest
