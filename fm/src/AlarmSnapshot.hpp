/// The visible alarms at one moment, in the order of the list and by their identity.
///
/// Threads:   never changes after construction.
/// Ownership: owns copies of the alarms.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "AlarmData.hpp"

namespace ZorvFm {

class AlarmSnapshot {
public:
    /// Takes the active alarms as they are now.
    AlarmSnapshot();

    const std::vector<AlarmData>& getAlarms() const { return alarms; }

    /// The first alarm whose identity, written in base ten, is the text; null when there is none.
    const AlarmData* find(std::string_view identity) const;

private:
    std::vector<AlarmData> alarms;
    std::unordered_map<std::uint64_t, std::size_t> byId;  // index into alarms
};

}  // namespace ZorvFm
