/// Alarms one behind the other, linked through their own place in the list: no memory for an entry, and every change costs
/// the same however many there are.
///
/// Threads:   those of the index.
/// Ownership: the alarms are the list's; an alarm is in one chain of each kind at most.
#pragma once

#include <cstddef>

#include "Alarm.hpp"

namespace ZorvFm {

template <AlarmLinks AlarmListPlace::*links>
class AlarmChain {
public:
    /// Removing the alarm that it stands on ends the walk; going on first does not.
    class Iterator {
    public:
        explicit Iterator(Alarm* present) : alarm(present) {}

        /// Null at the end.
        Alarm* operator*() const { return alarm; }
        bool operator!=(const Iterator& other) const { return alarm != other.alarm; }

        Iterator& operator++()
        {
            alarm = (alarm->place.*links).next;
            return *this;
        }

    private:
        Alarm* alarm;
    };

    Iterator begin() const { return Iterator(first); }
    Iterator end() const { return Iterator(nullptr); }
    bool empty() const { return first == nullptr; }
    std::size_t size() const { return number; }

    void append(Alarm& alarm)
    {
        AlarmLinks& own = alarm.place.*links;
        own = {last, nullptr};
        (last == nullptr ? first : (last->place.*links).next) = &alarm;
        last = &alarm;
        ++number;
    }

    void remove(Alarm& alarm)
    {
        const AlarmLinks own = alarm.place.*links;
        (own.before == nullptr ? first : (own.before->place.*links).next) = own.next;
        (own.next == nullptr ? last : (own.next->place.*links).before) = own.before;
        alarm.place.*links = {};
        --number;
    }

private:
    Alarm* first = nullptr;
    Alarm* last = nullptr;
    std::size_t number = 0;
};

}  // namespace ZorvFm
