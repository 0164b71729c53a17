/// A northbound consumer: follows the alarm notifications of one life of the node, from their beginning to its end.
///
/// Threads: a thread of its own reads; getAlarms after the node's end, getNumberSeen at any time.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace ZorvTest {

struct SeenAlarm {
    std::uint64_t seqNo;
    std::string dn;
    std::string severity;
};

class AlarmFollower {
public:
    explicit AlarmFollower(const std::string& socket);
    ~AlarmFollower();

    /// Waits for the end of the stream; what came, stateful ones only, in their order.
    const std::vector<SeenAlarm>& getAlarms();

    std::size_t getNumberSeen() const { return numberSeen; }

private:
    void follow(const std::string& socket);

    std::vector<SeenAlarm> alarms;
    std::atomic<std::size_t> numberSeen{0};
    std::thread thread;
};

}  // namespace ZorvTest
