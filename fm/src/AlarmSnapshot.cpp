#include "AlarmSnapshot.hpp"

#include <algorithm>
#include <charconv>

#include "NbiAlarmList.hpp"

namespace ZorvFm {

AlarmSnapshot::AlarmSnapshot() : chunks(NbiAlarmList::shareAlarms())
{
    for (const AlarmChunkT& chunk : chunks) {
        for (const ShownAlarm& shown : *chunk) {
            alarms.push_back({shown.alarmId, shown.data.get()});
        }
    }
    const auto isBefore = [](const Place& one, const Place& other) { return one.alarmId < other.alarmId; };
    if (!std::is_sorted(alarms.begin(), alarms.end(), isBefore)) {
        byId = alarms;
        std::stable_sort(byId.begin(), byId.end(), isBefore);
    }
}

const AlarmData* AlarmSnapshot::find(std::string_view identity) const
{
    std::uint64_t alarmId = 0;
    const char* end = identity.data() + identity.size();
    const auto parsed = std::from_chars(identity.data(), end, alarmId);
    if (parsed.ec != std::errc() || parsed.ptr != end || identity.front() == '0') {
        return nullptr;  // no id in base ten; they begin with 1
    }
    const std::vector<Place>& places = byId.empty() ? alarms : byId;
    const auto place = std::lower_bound(places.begin(), places.end(), alarmId,
                                        [](const Place& one, std::uint64_t wanted) { return one.alarmId < wanted; });
    return place == places.end() || place->alarmId != alarmId ? nullptr : place->data;
}

}  // namespace ZorvFm
