#include "Subscriptions.hpp"

#include <algorithm>

namespace ZorvFakes {

Subscriptions::Ref Subscriptions::add(unsigned long consumerId, const std::string& eventType,
                                      const YaltNameValuePair* const* filter)
{
    auto subscription = std::make_shared<Subscription>(consumerId, eventType, filter);
    const std::lock_guard<std::mutex> lock(mutex);
    present.push_back({subscription, {}});
    return subscription;
}

std::set<uint32_t> Subscriptions::end(const Ref& subscription)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto entry = std::find_if(present.begin(), present.end(),
                                    [&](const Entry& known) { return known.subscription == subscription; });
    if (entry == present.end()) {
        return {};
    }
    std::set<uint32_t> acceptedBy = entry->acceptedBy;
    ended.push_back(subscription);
    present.erase(entry);
    return acceptedBy;
}

void Subscriptions::endAll()
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (const Entry& entry : present) {
        ended.push_back(entry.subscription);
    }
    present.clear();
}

bool Subscriptions::accept(const Ref& subscription, uint32_t producer)
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (Entry& entry : present) {
        if (entry.subscription == subscription) {
            entry.acceptedBy.insert(producer);
            return true;
        }
    }
    return false;
}

void Subscriptions::withdraw(uint32_t producer, const std::string& eventType)
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (Entry& entry : present) {
        if (eventType.empty() || entry.subscription->eventType == eventType) {
            entry.acceptedBy.erase(producer);
        }
    }
}

std::vector<Subscriptions::Ref> Subscriptions::all() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::vector<Ref> found;
    for (const Entry& entry : present) {
        found.push_back(entry.subscription);
    }
    return found;
}

std::vector<Subscriptions::Ref> Subscriptions::to(const std::string& eventType) const
{
    std::vector<Ref> found = all();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](const Ref& subscription) { return subscription->eventType != eventType; }),
                found.end());
    return found;
}

std::vector<Subscriptions::Ref> Subscriptions::of(unsigned long consumerId) const
{
    std::vector<Ref> found = all();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](const Ref& subscription) { return subscription->consumerId != consumerId; }),
                found.end());
    return found;
}

}  // namespace ZorvFakes
