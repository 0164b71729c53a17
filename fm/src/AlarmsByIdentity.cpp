#include "AlarmsByIdentity.hpp"

#include <string_view>
#include <utility>

namespace ZorvFm {

void AlarmsByIdentity::add(Alarm& alarm)
{
    if (number == buckets.size()) {
        grow();
    }
    ++number;
    alarm.place.identityHash = hashOf(alarm);
    alarm.place.nextInBucket = std::exchange(buckets[bucketOf(alarm.place.identityHash)], &alarm);
}

void AlarmsByIdentity::remove(const Alarm& alarm)
{
    Alarm** link = &buckets[bucketOf(alarm.place.identityHash)];
    while (*link != &alarm) {
        link = &(*link)->place.nextInBucket;
    }
    *link = alarm.place.nextInBucket;
    --number;
}

/// The new bucket gets its alarms from the one that they were in by one bit less.
void AlarmsByIdentity::grow()
{
    const std::size_t added = buckets.size();
    buckets.push_back(nullptr);
    power *= added == power ? 2 : 1;
    Alarm** link = &buckets[added - power / 2];
    while (Alarm* const alarm = *link) {
        if (bucketOf(alarm->place.identityHash) == added) {
            *link = alarm->place.nextInBucket;
            alarm->place.nextInBucket = std::exchange(buckets[added], alarm);
        } else {
            link = &alarm->place.nextInBucket;
        }
    }
}

/// By as many bits of the hash as lead to a bucket that there is.
std::size_t AlarmsByIdentity::bucketOf(std::uint64_t hash) const
{
    const std::size_t bucket = hash & (power - 1);
    return bucket < buckets.size() ? bucket : bucket - power / 2;
}

/// The factors are odd: of one DN, types that differ in one of their numbers alone never have the same hash.
std::uint64_t AlarmsByIdentity::hashOf(const AlarmData& identity)
{
    return std::hash<std::string_view>{}(identity.dn) + identity.majorType * 0x9e3779b97f4a7c15 +
           identity.minorType * 0xc2b2ae3d27d4eb4f;
}

bool AlarmsByIdentity::isSame(const AlarmData& one, const AlarmData& other)
{
    return one.minorType == other.minorType && one.majorType == other.majorType && one.dn == other.dn;
}

}  // namespace ZorvFm
