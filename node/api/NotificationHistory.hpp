/// The latest northbound notifications of one version, in their order, for any number of readers at their own pace.
///
/// Each entry carries the last sequence numbers of both kinds up to and including it: its place. A reader goes on from a
/// place it has seen, or learns that something in between is gone: a jump in the numbers stands in the history as an entry
/// named resync. Nothing is copied for a reader, and none is waited for.
///
/// Threads:   any.
/// Ownership: entries are shared and unchangeable.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "api/NotificationJson.hpp"

namespace ZorvNode {

/// The last sequence numbers of either kind; "STATEFUL.STATELESS".
struct NotificationPlace {
    std::uint64_t stateful = 0;
    std::uint64_t stateless = 0;

    std::string toText() const { return std::to_string(stateful) + "." + std::to_string(stateless); }

    /// None when the text is no place.
    static std::optional<NotificationPlace> fromText(const std::string& text);
};

struct HistoryEntry {
    std::string name;
    std::string json;
    NotificationPlace place;
};

class NotificationHistory {
public:
    using EntryT = std::shared_ptr<const HistoryEntry>;

    /// What a reader holds: the number of the next entry it wants. Numbers count from 0 over the node's life.
    using PositionT = std::uint64_t;

    enum class Found { entry, nothing, missed };

    explicit NotificationHistory(std::size_t historyBound) : bound(historyBound) {}

    void add(const NorthboundEvent& event);

    PositionT end() const;
    PositionT oldest() const;

    /// Behind the place; none when what follows it is not known any more, or the place never was.
    std::optional<PositionT> behind(const NotificationPlace& place) const;

    /// The entry at the position, waiting for it if need be. missed: it is gone.
    Found next(PositionT position, std::chrono::milliseconds patience, EntryT& entry) const;

    NotificationPlace lastPlace() const;

private:
    NotificationPlace placeBefore(const NorthboundEvent& event) const;
    void push(const std::string& name, const std::string& json);

    const std::size_t bound;
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::deque<EntryT> entries;                // guarded by mutex
    PositionT first = 0;                       // guarded by mutex; number of entries.front()
    NotificationPlace last;                    // guarded by mutex
    std::optional<NotificationPlace> dropped;  // guarded by mutex; just before entries.front(), when it is known
    bool statefulKnown = false;                // guarded by mutex
    bool statelessKnown = false;               // guarded by mutex
};

}  // namespace ZorvNode
