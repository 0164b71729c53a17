#include "AlarmIndex.hpp"

namespace ZorvFm {

void AlarmIndex::add(Alarm& alarm)
{
    TypeEntry& type = types[typeKey(alarm.majorType, alarm.minorType)];
    type.byDn.emplace(alarm.dn, &alarm);
    alarm.place.alarm = &alarm;
    alarm.place.position = ++lastPosition;
    alarms.append(alarm);
    type.alarms.append(alarm);
    update(alarm);
}

void AlarmIndex::remove(Alarm& alarm)
{
    const auto type = types.find(typeKey(alarm.majorType, alarm.minorType));
    const auto twins = type->second.byDn.equal_range(alarm.dn);
    for (auto twin = twins.first; twin != twins.second; ++twin) {
        if (twin->second == &alarm) {
            type->second.byDn.erase(twin);
            break;
        }
    }
    type->second.alarms.remove(alarm);
    if (type->second.alarms.empty()) {
        types.erase(type);
    }
    uncount(alarm);
    changing.erase(alarm.place.position);
    alarms.remove(alarm);
    alarm.place = {};
}

void AlarmIndex::update(Alarm& alarm)
{
    if (const bool canChange = alarm.getState().canChangeInTick(); canChange != alarm.place.isChanging) {
        alarm.place.isChanging = canChange;
        if (canChange) {
            changing.emplace(alarm.place.position, &alarm);
        } else {
            changing.erase(alarm.place.position);
        }
    }
    uncount(alarm);
    count(alarm);
}

Alarm* AlarmIndex::find(const AlarmData& identity) const
{
    const auto type = types.find(typeKey(identity.majorType, identity.minorType));
    if (type == types.end()) {
        return nullptr;
    }
    Alarm* first = nullptr;
    const auto twins = type->second.byDn.equal_range(identity.dn);
    for (auto twin = twins.first; twin != twins.second; ++twin) {
        if (first == nullptr || twin->second->place.position < first->place.position) {
            first = twin->second;
        }
    }
    return first;
}

void AlarmIndex::findAll(const AlarmData& identity, std::list<Alarm*>& found) const
{
    const auto type = types.find(typeKey(identity.majorType, identity.minorType));
    if (type == types.end()) {
        return;
    }
    std::map<std::uint64_t, Alarm*> inOrder;  // by position
    const auto twins = type->second.byDn.equal_range(identity.dn);
    for (auto twin = twins.first; twin != twins.second; ++twin) {
        inOrder.emplace(twin->second->place.position, twin->second);
    }
    for (const auto& [position, alarm] : inOrder) {
        found.push_back(alarm);
    }
}

const AlarmIndex::AlarmsOfTypeT& AlarmIndex::getAlarmsOfType(std::uint32_t majorType, std::uint32_t minorType) const
{
    static const AlarmsOfTypeT none;
    const auto type = types.find(typeKey(majorType, minorType));
    return type == types.end() ? none : type->second.alarms;
}

std::uint64_t AlarmIndex::typeKey(std::uint32_t majorType, std::uint32_t minorType)
{
    return (static_cast<std::uint64_t>(majorType) << 32) | minorType;
}

void AlarmIndex::count(Alarm& alarm)
{
    if (!alarm.isVisibleInNbi()) {
        return;
    }
    alarm.place.isCounted = true;
    alarm.place.countedSeverity = alarm.severity;
    ++summary.total;
    if (std::uint32_t* counter = counterOf(alarm.severity)) {
        ++*counter;
    }
}

void AlarmIndex::uncount(Alarm& alarm)
{
    if (!alarm.place.isCounted) {
        return;
    }
    alarm.place.isCounted = false;
    --summary.total;
    if (std::uint32_t* counter = counterOf(alarm.place.countedSeverity)) {
        --*counter;
    }
}

/// An indeterminate alarm, and one whose severity is none of those known, is summed up as critical.
std::uint32_t* AlarmIndex::counterOf(std::int32_t severity)
{
    switch (severity) {
    case YALT_FM_SEVERITY_CLEARED:
        return nullptr;
    case YALT_FM_SEVERITY_WARNING:
        return &summary.warning;
    case YALT_FM_SEVERITY_MINOR:
        return &summary.minor;
    case YALT_FM_SEVERITY_MAJOR:
        return &summary.major;
    default:
        return &summary.critical;
    }
}

}  // namespace ZorvFm
