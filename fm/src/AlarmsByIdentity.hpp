/// Finds alarms by their identity: type and DN. A hash table that is linked through the alarms themselves.
///
/// It grows by one bucket at a time (linear hashing, Litwin 1980), so that no alarm waits until all others have been put in
/// order again.
///
/// Threads:   those of the index.
/// Ownership: the alarms are the list's. The identity of an alarm stays the same while it is in here.
/// Failure:   std::bad_alloc, and the alarm is not in here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

#include "Alarm.hpp"

namespace ZorvFm {

class AlarmsByIdentity {
public:
    void add(Alarm& alarm);

    /// @pre it was added.
    void remove(const Alarm& alarm);

    /// Calls call(alarm) with each alarm that has this identity, in no order.
    template <class CallT>
    void each(const AlarmData& identity, CallT call) const
    {
        const std::uint64_t hash = hashOf(identity);
        for (Alarm* alarm = buckets[bucketOf(hash)]; alarm != nullptr; alarm = alarm->place.nextInBucket) {
            if (alarm->place.identityHash == hash && isSame(*alarm, identity)) {
                call(*alarm);
            }
        }
    }

private:
    static std::uint64_t hashOf(const AlarmData& identity);
    static bool isSame(const AlarmData& one, const AlarmData& other);
    std::size_t bucketOf(std::uint64_t hash) const;
    void grow();

    std::deque<Alarm*> buckets{nullptr};  // the first alarm of each
    std::size_t power = 1;                // of two, the smallest that is not less than the number of buckets
    std::size_t number = 0;               // of alarms
};

}  // namespace ZorvFm
