/// What a router owes to the producers of a test: values to hand back, and ends of subscriptions to tell.
///
/// Threads: any. Failure: what comes back too often, or not at all, fails the test.
#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "YaltNameValuePair.h"

namespace ZorvTest {

class RouterLedger {
public:
    void valueAccepted(int producer, int value);
    void valueHandedBack(int producer, int value);

    void subscriptionAccepted(int producer, unsigned long consumerId, const char* eventType,
                              YaltNameValuePair** filter);
    void subscriptionEnded(int producer, unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);

    /// No ends are owed any more to a producer, for one event type or for all ("").
    void release(int producer, const std::string& eventType = "");

    /// The filter that a producer was given last for a consumer; null if there was none.
    YaltNameValuePair** latestFilter(int producer, unsigned long consumerId) const;

    /// Waits until every accepted value has been handed back.
    void awaitValues();

    /// Waits until nothing at all is owed any more.
    void awaitBalance();

private:
    using SubscriptionT = std::tuple<int, unsigned long, std::string, YaltNameValuePair**>;

    bool areValuesBack() const;

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::map<std::pair<int, int>, int> values;  // guarded by mutex, as all below; owed, by producer and value
    std::multiset<SubscriptionT> subscriptions;
    std::map<std::pair<int, unsigned long>, YaltNameValuePair**> latest;
};

}  // namespace ZorvTest
