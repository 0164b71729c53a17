#include "RouterLedger.hpp"

#include <algorithm>

#include "Gate.hpp"

namespace ZorvTest {

namespace {

using LockT = std::unique_lock<std::mutex>;

}  // namespace

void RouterLedger::valueAccepted(int producer, int value)
{
    const LockT lock(mutex);
    ++values[{producer, value}];
    changed.notify_all();
}

/// May come before the notify that it belongs to has returned.
void RouterLedger::valueHandedBack(int producer, int value)
{
    const LockT lock(mutex);
    --values[{producer, value}];
    changed.notify_all();
}

void RouterLedger::subscriptionAccepted(int producer, unsigned long consumerId, const char* eventType,
                                        YaltNameValuePair** filter)
{
    const LockT lock(mutex);
    subscriptions.insert({producer, consumerId, eventType, filter});
    latest[{producer, consumerId}] = filter;
}

void RouterLedger::subscriptionEnded(int producer, unsigned long consumerId, const char* eventType,
                                     YaltNameValuePair** filter)
{
    const LockT lock(mutex);
    const auto found = subscriptions.find({producer, consumerId, eventType, filter});
    if (found == subscriptions.end()) {
        ADD_FAILURE() << "the end of a subscription to " << eventType << " that producer " << producer << " has not";
        return;
    }
    subscriptions.erase(found);
    changed.notify_all();
}

void RouterLedger::release(int producer, const std::string& eventType)
{
    const LockT lock(mutex);
    for (auto entry = subscriptions.begin(); entry != subscriptions.end();) {
        const bool isMeant = std::get<0>(*entry) == producer && (eventType.empty() || std::get<2>(*entry) == eventType);
        entry = isMeant ? subscriptions.erase(entry) : std::next(entry);
    }
}

YaltNameValuePair** RouterLedger::latestFilter(int producer, unsigned long consumerId) const
{
    const LockT lock(mutex);
    const auto found = latest.find({producer, consumerId});
    return found != latest.end() ? found->second : nullptr;
}

void RouterLedger::awaitValues()
{
    LockT lock(mutex);
    EXPECT_TRUE(changed.wait_for(lock, patience, [this] { return areValuesBack(); })) << "values do not come back";
}

void RouterLedger::awaitBalance()
{
    awaitValues();
    LockT lock(mutex);
    EXPECT_TRUE(changed.wait_for(lock, patience, [this] { return subscriptions.empty(); })) << "ends are not told";
}

bool RouterLedger::areValuesBack() const
{
    return std::all_of(values.begin(), values.end(), [](const auto& entry) { return entry.second == 0; });
}

}  // namespace ZorvTest
