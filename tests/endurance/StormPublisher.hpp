/// An application in a storm: over one connection it sends batch after batch as fast as the node takes them, raises,
/// changes and clears of lasting alarms, toggling alarms and alarms of an unknown type mixed, and knows which alarms have
/// to be active in the end.
///
/// A node that has no room answers 503; then the same batch is sent again.
///
/// Threads:   one at a time.
/// Failure:   any other answer fails the test and ends the run.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>

namespace Poco::Net {
class HTTPClientSession;
}

namespace ZorvTest {

class StormPublisher {
public:
    /// @param publisherNumber one digit; each publisher has alarms of its own.
    StormPublisher(std::string socketPath, int publisherNumber, std::uint64_t seed);

    /// Publishes so many, or a few more.
    void run(std::uint64_t notifications);

    void addActiveTo(std::set<std::string>& dns) const;

    std::uint64_t getNumberAcknowledged() const { return acknowledged; }
    std::uint64_t getNumberOfRefusals() const { return refusals; }

private:
    enum class Answer { accepted, busy, wrong };

    std::string makeBatch();
    std::string makeNotification();
    std::string change(const std::string& dn, bool isToggling);
    std::string notification(const char* action, const std::string& dn, int minorType);
    Answer send(Poco::Net::HTTPClientSession& session, const std::string& batch);

    const std::string socket;
    const int number;
    std::mt19937_64 random;
    std::map<std::string, bool> active;  // by DN
    std::uint64_t time = 0;
    std::uint64_t acknowledged = 0;
    std::uint64_t refusals = 0;
};

}  // namespace ZorvTest
