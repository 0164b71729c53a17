#include "ShownAlarms.hpp"

namespace ZorvFm {

void ShownAlarms::use(const AlarmIndex::AlarmsT& alarms)
{
    if (!isUsed) {
        isUsed = true;
        next = *alarms.begin();
    }
}

void ShownAlarms::noteChange(Alarm& alarm)
{
    if (isUsed && AlarmIndex::contains(alarm)) {
        changed.emplace(alarm.place.position, &alarm);
    }
}

void ShownAlarms::noteRemoval(const Alarm& alarm)
{
    if (!isUsed) {
        return;
    }
    if (next == &alarm) {
        next = alarm.place.inList.next;
    }
    changed.erase(alarm.place.position);
    view.remove(alarm.place.position);
}

bool ShownAlarms::refresh(std::size_t number)
{
    for (; number > 0 && next != nullptr; --number) {
        show(*next);
        next = next->place.inList.next;
    }
    for (; number > 0 && !changed.empty(); --number) {
        show(*changed.begin()->second);
        changed.erase(changed.begin());
    }
    return next == nullptr && changed.empty();
}

void ShownAlarms::show(const Alarm& alarm)
{
    if (alarm.isVisibleInNbi()) {
        view.put(alarm.place.position, alarm);
    } else {
        view.remove(alarm.place.position);
    }
}

}  // namespace ZorvFm
