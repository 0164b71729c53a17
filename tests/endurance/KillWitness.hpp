/// What northbound consumers saw of a node that is killed again and again, and what its alarm log says about it.
///
/// Threads: one.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AlarmFollower.hpp"
#include "StreamReader.hpp"

namespace ZorvTest {

class KillWitness {
public:
    /// Where the consumer goes on that wants to miss nothing.
    StreamWish goesOn(bool follow) const { return {place, follow}; }

    /// It has gone on, life after life: every number came, or it was told of a gap.
    void note(StreamReader& consumer);

    /// Numbers grow by one within a life, and none is used again in a later one.
    void note(const std::vector<SeenAlarm>& alarms);

    /// Each number stands in the alarm log once, in order, and what was seen stands there as it was seen.
    void expectLog(const std::string& file) const;

    /// From now on the alarm log begins anew.
    void forget() { seen.clear(); }

    std::size_t getNumberSeen() const { return seen.size(); }
    std::uint64_t getLast() const { return last; }

private:
    std::optional<StreamPlace> place = StreamPlace();
    std::map<std::uint64_t, std::string> seen;  // by sequence number
    std::uint64_t last = 0;
};

}  // namespace ZorvTest
