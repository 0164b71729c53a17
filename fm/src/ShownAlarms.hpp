/// Keeps the view of the active alarms: nothing as long as nobody reads it, and then only what has changed.
///
/// Threads:   the active alarm list's mutex guards it.
/// Ownership: the alarms are the list's.
/// Failure:   std::bad_alloc; what was not shown yet is shown the next time.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "AlarmIndex.hpp"
#include "AlarmView.hpp"

namespace ZorvFm {

class ShownAlarms {
public:
    /// A reader has come: from now on there is a view of these alarms.
    void use(const AlarmIndex::AlarmsT& alarms);

    /// The alarm is new, or may look different from now on.
    void noteChange(Alarm& alarm);

    /// Before it leaves the list.
    void noteRemoval(const Alarm& alarm);

    /// Shows so many alarms as they are now. True when the view is complete.
    bool refresh(std::size_t number);

    std::size_t size() const { return view.size(); }
    std::vector<AlarmChunkT> take() { return view.take(); }

private:
    void show(const Alarm& alarm);

    bool isUsed = false;
    AlarmView view;
    Alarm* next = nullptr;                    // the first one that has not been shown yet, of those that were there
    std::map<std::uint64_t, Alarm*> changed;  // by position
};

}  // namespace ZorvFm
