#include "AlarmSnapshot.hpp"

#include <charconv>

#include "NbiAlarmList.hpp"

namespace ZorvFm {

AlarmSnapshot::AlarmSnapshot()
{
    NbiAlarmList::getAlarms(alarms);
    byId.reserve(alarms.size());
    for (std::size_t i = 0; i < alarms.size(); ++i) {
        byId.try_emplace(alarms[i].alarmId, i);
    }
}

const AlarmData* AlarmSnapshot::find(std::string_view identity) const
{
    std::uint64_t alarmId = 0;
    const char* end = identity.data() + identity.size();
    const auto parsed = std::from_chars(identity.data(), end, alarmId);
    const bool isBaseTen = parsed.ec == std::errc() && parsed.ptr == end && (identity.front() != '0' || alarmId == 0);
    if (!isBaseTen || (alarmId == 0 && identity.size() > 1)) {
        return nullptr;
    }
    const auto alarm = byId.find(alarmId);
    return alarm == byId.end() ? nullptr : &alarms[alarm->second];
}

}  // namespace ZorvFm
