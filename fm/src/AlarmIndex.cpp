#include "AlarmIndex.hpp"

namespace ZorvFm {

void AlarmIndex::add(Alarm& alarm)
{
    AlarmsOfTypeT& type = types[typeKey(alarm.majorType, alarm.minorType)];
    byIdentity.add(alarm);
    alarm.place.alarm = &alarm;
    alarm.place.position = ++lastPosition;
    alarms.append(alarm);
    type.append(alarm);
    update(alarm);
}

void AlarmIndex::remove(Alarm& alarm)
{
    byIdentity.remove(alarm);
    const auto type = types.find(typeKey(alarm.majorType, alarm.minorType));
    type->second.remove(alarm);
    if (type->second.empty()) {
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
    Alarm* first = nullptr;
    byIdentity.each(identity, [&](Alarm& alarm) {
        if (first == nullptr || alarm.place.position < first->place.position) {
            first = &alarm;
        }
    });
    return first;
}

void AlarmIndex::findAll(const AlarmData& identity, std::list<Alarm*>& found) const
{
    std::map<std::uint64_t, Alarm*> inOrder;  // by position
    byIdentity.each(identity, [&](Alarm& alarm) { inOrder.emplace(alarm.place.position, &alarm); });
    for (const auto& [position, alarm] : inOrder) {
        found.push_back(alarm);
    }
}

const AlarmIndex::AlarmsOfTypeT& AlarmIndex::getAlarmsOfType(std::uint32_t majorType, std::uint32_t minorType) const
{
    static const AlarmsOfTypeT none;
    const auto type = types.find(typeKey(majorType, minorType));
    return type == types.end() ? none : type->second;
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
