/// The visible alarms at one moment, in the order of the list and by their identity.
///
/// Threads:   never changes after construction.
/// Ownership: shares the alarms with the list and with other snapshots.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "AlarmView.hpp"

namespace ZorvFm {

class AlarmSnapshot {
public:
    /// Takes the active alarms as they are now.
    AlarmSnapshot();

    std::size_t size() const { return alarms.size(); }
    std::uint64_t getAlarmId(std::size_t index) const { return alarms[index].alarmId; }

    /// The first alarm whose identity, written in base ten, is the text; null when there is none.
    const AlarmData* find(std::string_view identity) const;

private:
    struct Place {
        std::uint64_t alarmId;
        const AlarmData* data;
    };

    std::vector<AlarmChunkT> chunks;  // what the places point to
    std::vector<Place> alarms;        // in the order of the list
    std::vector<Place> byId;          // empty when that is the order of the list
};

}  // namespace ZorvFm
