/// An application that raises and clears alarms on ports of its own as fast as the node takes them, batch by batch, and
/// knows which state each port has to be in.
///
/// A batch whose answer did not come is sent again, with the same times and under the same name, before anything else.
///
/// Threads: one at a time.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace ZorvTest {

class Publisher {
public:
    /// @param alarmType minor type of its alarms.
    Publisher(std::string socketPath, int publisherNumber, int alarmType, std::uint64_t seed);

    /// Publishes until the node goes away.
    void run();

    /// Sends what has not been answered yet. Throws when the node goes away.
    void finish();

    /// DNs of the alarms that have to be active when everything sent has been answered.
    std::vector<std::string> activeDns() const;

    std::size_t getNumberAnswered() const { return answered; }

private:
    struct Operation {
        std::string dn;
        bool isRaise;
        std::uint64_t time;
    };

    void makeBatch();
    std::string batchJson() const;

    const std::string socket;
    const int number;
    const int minorType;
    std::mt19937 random;
    std::vector<Operation> pending;
    std::map<std::string, bool> active;
    std::uint64_t time = 0;
    std::size_t answered = 0;
};

}  // namespace ZorvTest
