/// What the component under test did to the middleware, in order, over all fakes.
///
/// An entry is the text of one call, written when the call has been decided: "listPushBack FmStatusSection -> 0".
/// What the call caused (callbacks, deliveries) stands behind it. Each fake's header gives the form of its entries.
///
/// Threads: any.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace ZorvFakes {

/// Groups of entries that a test shows or hides together.
enum class Topic {
    Portal,       ///< portals fetched, components registered
    Lookup,       ///< getInterface; hidden at first
    Log,          ///< log lines
    Record,       ///< records of the alarm log
    Trace,        ///< trace lines; hidden at first
    Router,       ///< event router: registrations, subscriptions, notifications
    Done,         ///< values handed back to their producers; hidden at first
    List,         ///< replicated lists
    Model,        ///< managed objects and the model repository
    Transaction,  ///< transactions
    Clock         ///< sleeps under the virtual clock
};

class Journal {
public:
    using Entries = std::vector<std::string>;

    static constexpr std::chrono::milliseconds patience{10000};

    Journal();

    /// Kept only while the topic is shown.
    void record(Topic topic, std::string entry);

    void show(std::initializer_list<Topic> topics);
    void hide(std::initializer_list<Topic> topics);
    void showOnly(std::initializer_list<Topic> topics);

    /// Everything recorded since the last take; the journal is empty afterwards.
    Entries take();

    Entries entries() const;

    /// Waits until the entries not yet taken satisfy the condition; false when they do not within the bound.
    bool waitFor(const std::function<bool(const Entries&)>& condition, std::chrono::milliseconds bound = patience);

    /// Waits for one whole entry.
    bool waitForEntry(const std::string& entry, std::chrono::milliseconds bound = patience);

private:
    mutable std::mutex mutex;
    std::condition_variable recorded;
    std::set<Topic> shown;  // guarded by mutex
    Entries kept;           // guarded by mutex
};

}  // namespace ZorvFakes
