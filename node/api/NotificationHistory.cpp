#include "api/NotificationHistory.hpp"

#include <algorithm>

#include "files/Number.hpp"

namespace ZorvNode {

namespace {

using LockT = std::unique_lock<std::mutex>;

/// Whether everything up to the one is included in the other.
bool isWithin(const NotificationPlace& place, const NotificationPlace& other)
{
    return place.stateful <= other.stateful && place.stateless <= other.stateless;
}

}  // namespace

std::optional<NotificationPlace> NotificationPlace::fromText(const std::string& text)
{
    const std::size_t dot = text.find('.');
    NotificationPlace place;
    const bool isPlace = dot != std::string::npos && ZorvInput::parseUnsigned(text.substr(0, dot), place.stateful) &&
                         ZorvInput::parseUnsigned(text.substr(dot + 1), place.stateless);
    return isPlace ? std::optional<NotificationPlace>(place) : std::nullopt;
}

void NotificationHistory::add(const NorthboundEvent& event)
{
    const LockT lock(mutex);
    const NotificationPlace before = placeBefore(event);
    const bool isGap =
        (statefulKnown && before.stateful != last.stateful) || (statelessKnown && before.stateless != last.stateless);
    last = before;
    if (isGap) {
        push("resync", "{}");
    }
    const bool isAlarm = event.name == "alarm";
    const bool isHeartbeat = event.name == "heartbeat";
    statefulKnown = statefulKnown || isHeartbeat || (isAlarm && event.isStateful);
    statelessKnown = statelessKnown || isHeartbeat || (isAlarm && !event.isStateful);
    if (!dropped && statefulKnown && statelessKnown) {
        dropped = before;
    }
    if (isAlarm) {
        (event.isStateful ? last.stateful : last.stateless) = event.seqNo;
    }
    push(event.name, event.json);
    changed.notify_all();
}

/// Where the node's numbers stood just before the event, as far as it tells.
NotificationPlace NotificationHistory::placeBefore(const NorthboundEvent& event) const
{
    if (event.name == "heartbeat") {
        return {event.stateful, event.stateless};
    }
    NotificationPlace place = last;
    if (event.name == "alarm") {
        (event.isStateful ? place.stateful : place.stateless) = event.seqNo - 1;
    }
    return place;
}

void NotificationHistory::push(const std::string& name, const std::string& json)
{
    entries.push_back(std::make_shared<const HistoryEntry>(HistoryEntry{name, json, last}));
    if (entries.size() > bound) {
        if (dropped && isWithin(*dropped, entries.front()->place)) {
            dropped = entries.front()->place;
        }
        entries.pop_front();
        ++first;
    }
}

NotificationHistory::PositionT NotificationHistory::end() const
{
    const LockT lock(mutex);
    return first + entries.size();
}

NotificationHistory::PositionT NotificationHistory::oldest() const
{
    const LockT lock(mutex);
    return first;
}

NotificationPlace NotificationHistory::lastPlace() const
{
    const LockT lock(mutex);
    return last;
}

std::optional<NotificationHistory::PositionT> NotificationHistory::behind(const NotificationPlace& place) const
{
    const LockT lock(mutex);
    if (!dropped || !isWithin(*dropped, place) || !isWithin(place, last)) {
        return std::nullopt;
    }
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const EntryT& entry) { return !isWithin(entry->place, place); });
    return first + static_cast<PositionT>(found - entries.begin());
}

NotificationHistory::Found NotificationHistory::next(PositionT position, std::chrono::milliseconds patience,
                                                     EntryT& entry) const
{
    LockT lock(mutex);
    changed.wait_for(lock, patience, [&] { return position < first + entries.size(); });
    if (position < first) {
        return Found::missed;
    }
    if (position >= first + entries.size()) {
        return Found::nothing;
    }
    entry = entries[static_cast<std::size_t>(position - first)];
    return Found::entry;
}

}  // namespace ZorvNode
