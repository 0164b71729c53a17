#include "AlarmView.hpp"

#include <algorithm>

namespace ZorvFm {
namespace {

constexpr std::size_t chunkSize = 256;

}  // namespace

void AlarmView::put(std::uint64_t position, const AlarmData& alarm)
{
    ShownAlarm shown{position, alarm.alarmId, std::make_shared<const AlarmData>(alarm)};
    const std::size_t chunk = chunkOf(position);
    const bool isBehindAll =
        chunks.empty() || (chunk + 1 == chunks.size() && chunks[chunk].alarms->back().position < position);
    if (isBehindAll && (chunks.empty() || chunks[chunk].alarms->size() >= chunkSize)) {
        auto alarms = std::make_shared<AlarmsT>();
        alarms->reserve(chunkSize);
        alarms->push_back(std::move(shown));
        chunks.push_back({std::move(alarms), false});
        ++number;
        return;
    }
    AlarmsT& alarms = writable(chunk);
    const auto place = placeOf(position, alarms);
    if (place != alarms.end() && place->position == position) {
        *place = std::move(shown);
        return;
    }
    alarms.insert(place, std::move(shown));
    ++number;
    if (alarms.size() > chunkSize) {
        split(chunk);
    }
}

void AlarmView::remove(std::uint64_t position)
{
    if (chunks.empty()) {
        return;
    }
    const std::size_t chunk = chunkOf(position);
    AlarmsT& present = *chunks[chunk].alarms;
    const auto place = placeOf(position, present);
    if (place == present.end() || place->position != position) {
        return;
    }
    if (present.size() == 1) {
        chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(chunk));
    } else {
        AlarmsT& alarms = writable(chunk);
        alarms.erase(placeOf(position, alarms));
    }
    --number;
}

std::vector<AlarmChunkT> AlarmView::take()
{
    std::vector<AlarmChunkT> taken;
    taken.reserve(chunks.size());
    for (Chunk& chunk : chunks) {
        chunk.isShared = true;
        taken.push_back(chunk.alarms);
    }
    return taken;
}

/// The one that has the position, or would have it; 0 when there is none.
std::size_t AlarmView::chunkOf(std::uint64_t position) const
{
    const auto behind =
        std::upper_bound(chunks.begin(), chunks.end(), position, [](std::uint64_t wanted, const Chunk& chunk) {
            return wanted < chunk.alarms->front().position;
        });
    return behind == chunks.begin() ? 0 : static_cast<std::size_t>(behind - chunks.begin()) - 1;
}

AlarmView::AlarmsT::iterator AlarmView::placeOf(std::uint64_t position, AlarmsT& alarms)
{
    return std::lower_bound(alarms.begin(), alarms.end(), position,
                            [](const ShownAlarm& shown, std::uint64_t wanted) { return shown.position < wanted; });
}

AlarmView::AlarmsT& AlarmView::writable(std::size_t chunk)
{
    Chunk& written = chunks[chunk];
    if (written.isShared) {
        written.alarms = std::make_shared<AlarmsT>(*written.alarms);
        written.isShared = false;
    }
    return *written.alarms;
}

void AlarmView::split(std::size_t chunk)
{
    AlarmsT& first = *chunks[chunk].alarms;
    const auto half = first.begin() + static_cast<std::ptrdiff_t>(first.size() / 2);
    Chunk second{std::make_shared<AlarmsT>(std::make_move_iterator(half), std::make_move_iterator(first.end())), false};
    first.erase(half, first.end());
    chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(chunk) + 1, std::move(second));
}

}  // namespace ZorvFm
