/// The alarms that are visible northbound, as copies that never change, for readers to share.
///
/// They stand in chunks. Whoever takes the chunks keeps the alarms as they are at that moment; what changes afterwards is
/// changed in a copy of its chunk, and the rest stays shared.
///
/// Threads:   the active alarm list's mutex guards it; chunks that were taken are read by anyone.
/// Ownership: shared.
/// Failure:   std::bad_alloc; the view then has the alarm, or not, as before.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "AlarmData.hpp"

namespace ZorvFm {

struct ShownAlarm {
    std::uint64_t position;  // in the list
    std::uint64_t alarmId;
    std::shared_ptr<const AlarmData> data;
};

/// By position.
using AlarmChunkT = std::shared_ptr<const std::vector<ShownAlarm>>;

class AlarmView {
public:
    /// Shows the alarm as it is now, whether it was shown before or not.
    void put(std::uint64_t position, const AlarmData& alarm);

    /// Does nothing when it is not shown.
    void remove(std::uint64_t position);

    std::size_t size() const { return number; }

    /// All chunks, by position.
    std::vector<AlarmChunkT> take();

private:
    using AlarmsT = std::vector<ShownAlarm>;

    struct Chunk {
        std::shared_ptr<AlarmsT> alarms;  // never empty
        bool isShared = false;
    };

    std::size_t chunkOf(std::uint64_t position) const;
    static AlarmsT::iterator placeOf(std::uint64_t position, AlarmsT& alarms);
    AlarmsT& writable(std::size_t chunk);
    void split(std::size_t chunk);

    std::vector<Chunk> chunks;
    std::size_t number = 0;  // of alarms
};

}  // namespace ZorvFm
