/// An alarm of the active alarm list: its data with its filter state, and the name of its stored item.
///
/// Threads:   changed by the worker under the active alarm list's mutex, read by others under it.
/// Ownership: owned by the active alarm list; the configuration outlives it.
/// Failure:   a stored text that cannot be read is logged; the alarm keeps what could be read.
#pragma once

#include "AlarmData.hpp"
#include "AlarmState.hpp"
#include "ZorvMwSpiReplicatedList_1.h"

namespace ZorvFm {

class Alarm;

/// The neighbours of an alarm; null at the ends.
struct AlarmLinks {
    Alarm* before = nullptr;
    Alarm* next = nullptr;
};

/// How the active alarm list keeps track of an alarm.
struct AlarmListPlace {
    Alarm* alarm = nullptr;      // the one in the list
    std::uint64_t position = 0;  // grows from alarm to alarm
    AlarmLinks inList;
    AlarmLinks inType;
    std::uint64_t identityHash = 0;
    Alarm* nextInBucket = nullptr;  // of those by identity
    bool isChanging = false;        // a tick may change it
    bool isCounted = false;         // visible northbound, and in the summary under countedSeverity
    std::int32_t countedSeverity = 0;
};

class Alarm : public AlarmData {
public:
    explicit Alarm(const FmConfig& componentConfig);

    /// A copy has a filter state of its own, equal to the source's, and no place in the list.
    Alarm(const Alarm& other);
    Alarm& operator=(const Alarm&) = delete;

    /// Takes the data as those of a first raise. The filter state stays.
    void init(const AlarmData& data);

    std::string toString() const override;

    /// With a remark while the alarm is toggling.
    std::string getAdditionalText() const override;
    virtual std::string getAdditionalTextBasic() const { return additionalText; }

    void raise() { state.raise(); }
    void clear() { state.clear(); }

    /// @param now monotonic time in ns. @return a TickResultT
    int tick(std::uint64_t now) { return state.tick(now); }

    bool isToggling() const { return state.isToggling(); }
    bool isVisibleInNbi() const { return state.isVisibleInNbi(); }
    const AlarmState& getState() const { return state; }

    /// The stored form of today, and of the earlier list.
    std::string serialize_v2() const;
    void deserialize_v2(const std::string& data);
    std::string serialize() const;
    void deserialize(const std::string& data);

    /// The shortest form that the earlier list may hold today, 15 fields.
    std::string serializeOldForTest() const;

    ZorvMwSpiListNameT itemName{};  // of the stored item; length 0: not stored yet
    AlarmListPlace place;

private:
    AlarmState state;
};

}  // namespace ZorvFm
