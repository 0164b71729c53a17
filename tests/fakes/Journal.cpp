#include "Journal.hpp"

#include <algorithm>
#include <utility>

namespace ZorvFakes {

Journal::Journal()
    : shown{Topic::Portal, Topic::Log,   Topic::Record,      Topic::Router,
            Topic::List,   Topic::Model, Topic::Transaction, Topic::Clock}
{
}

void Journal::record(Topic topic, std::string entry)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (shown.count(topic) == 0) {
        return;
    }
    kept.push_back(std::move(entry));
    recorded.notify_all();
}

void Journal::show(std::initializer_list<Topic> topics)
{
    const std::lock_guard<std::mutex> lock(mutex);
    shown.insert(topics);
}

void Journal::hide(std::initializer_list<Topic> topics)
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (const Topic topic : topics) {
        shown.erase(topic);
    }
}

void Journal::showOnly(std::initializer_list<Topic> topics)
{
    const std::lock_guard<std::mutex> lock(mutex);
    shown = topics;
}

Journal::Entries Journal::take()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return std::exchange(kept, {});
}

Journal::Entries Journal::entries() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return kept;
}

bool Journal::waitFor(const std::function<bool(const Entries&)>& condition, std::chrono::milliseconds bound)
{
    std::unique_lock<std::mutex> lock(mutex);
    return recorded.wait_for(lock, bound, [&] { return condition(kept); });
}

bool Journal::waitForEntry(const std::string& entry, std::chrono::milliseconds bound)
{
    return waitFor([&](const Entries& all) { return std::find(all.begin(), all.end(), entry) != all.end(); }, bound);
}

}  // namespace ZorvFakes
