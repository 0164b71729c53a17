/// The measurements of an alarm's path in one process. Each runs in a process of its own and says its figures.
///
/// Failure: std::exception.
#pragma once

#include <cstdint>
#include <string>

#include "LoadedNode.hpp"

namespace ZorvBench {

struct Choice {
    NodeChoice node;
    std::uint64_t alarms = 100000;  ///< how many are raised and measured
    std::uint64_t active = 0;       ///< how many are active before that
    std::string kind = "alarm";     ///< what is sent: alarm, alert, unknown, or alarm with reconfigure in between
    double rate = 10000;            ///< alarms in a second, when they are paced
};

/// From the router's callback until both versions have been delivered to two consumers.
void measureRaises(const Choice& choice);

/// The same one at a time at a given rate: how long an alarm takes to reach a consumer.
void measureLatency(const Choice& choice);

/// What an alarm costs beside so many active ones: raised, repeated, changed, cleared, cleared by a pattern.
void measureFlat(const Choice& choice);

/// Reading all attributes of all alarms in one transaction, and what raises take meanwhile.
void measureWalk(const Choice& choice);

/// Starting with stored alarms, against reading and decoding them; and the memory that alarms take.
void measureStart(const Choice& choice);

/// One alarm looked up, serialised and formatted in memory; the same with one append to a file and one to the log.
void measureMemoryReference(const Choice& choice);

/// The bare store doing the list operations of raises.
void measureStoreReference(const Choice& choice);

}  // namespace ZorvBench
