/// An application inside the node's process: raises and clears alarms of its own, and knows which have to be active.
///
/// Threads: one at a time.
#pragma once

#include <map>
#include <random>
#include <set>
#include <string>

#include "runtime/Node.hpp"

namespace ZorvTest {

class RacingPublisher {
public:
    /// @param publisherNumber one digit.
    RacingPublisher(ZorvNode::Node& publishingNode, int publisherNumber) : node(publishingNode), number(publisherNumber)
    {
    }

    /// Publishes a few; a node that has no room for them is given a moment.
    void publish(std::mt19937_64& random);

    void addActiveTo(std::set<std::string>& dns) const;

private:
    ZorvInput::FmNotification change(std::mt19937_64& random, std::map<std::string, bool>& then);

    ZorvNode::Node& node;
    const int number;
    std::uint64_t time = 0;
    std::map<std::string, bool> active;  // by DN
};

}  // namespace ZorvTest
