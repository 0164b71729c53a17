/// One walk over the stored alarms of a replicated list, from the front.
///
/// Threads:   the caller holds the active alarm list's mutex.
/// Failure:   a list that cannot be walked is traced and over at once; a walk that breaks off throws Zorv::ZorvException
///            after an error line. An iteration that was opened is finalized in any case.
#pragma once

#include "ReplicatedList.hpp"
#include "StoredAlarm.hpp"

namespace ZorvFm {

class AlarmListWalk {
public:
    explicit AlarmListWalk(const ReplicatedList& walkedList);
    ~AlarmListWalk();

    AlarmListWalk(const AlarmListWalk&) = delete;
    AlarmListWalk& operator=(const AlarmListWalk&) = delete;

    /// False when the list could not be walked at all.
    bool isOpen() const { return opened; }

    /// The next item. False at the end.
    bool next(ZorvMwSpiListNameT& itemName, StoredAlarmT& data);

private:
    const ReplicatedList& list;
    ZorvMwSpiListRefT ref = nullptr;
    bool opened = false;
};

}  // namespace ZorvFm
