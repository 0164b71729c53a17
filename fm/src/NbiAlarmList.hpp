/// The northbound view of the active alarm list, for those who need not know the list itself.
///
/// At most one list lives at a time; it is reached through the class.
///
/// Threads:   getAlarms from any thread; the list comes and goes with the component.
/// Failure:   without a list there are no alarms: getAlarms leaves the result as it is.
#pragma once

#include <vector>

#include "AlarmView.hpp"

namespace ZorvFm {

class NbiAlarmList {
public:
    NbiAlarmList() { _theOne = this; }
    virtual ~NbiAlarmList() { _theOne = nullptr; }

    NbiAlarmList(const NbiAlarmList&) = delete;
    NbiAlarmList& operator=(const NbiAlarmList&) = delete;

    /// Copies of all alarms that are visible northbound, in the order of the list.
    virtual void getNbiAlarms(std::vector<AlarmData>& alarms) = 0;

    /// The same alarms, shared with the list and with earlier readers as far as nothing has changed.
    virtual std::vector<AlarmChunkT> shareNbiAlarms()
    {
        std::vector<AlarmData> alarms;
        getNbiAlarms(alarms);
        AlarmView view;
        std::uint64_t position = 0;
        for (const AlarmData& alarm : alarms) {
            view.put(++position, alarm);
        }
        return view.take();
    }

    static std::vector<AlarmChunkT> shareAlarms()
    {
        return _theOne == nullptr ? std::vector<AlarmChunkT>() : _theOne->shareNbiAlarms();
    }

    static void getAlarms(std::vector<AlarmData>& alarms)
    {
        if (_theOne != nullptr) {
            _theOne->getNbiAlarms(alarms);
        }
    }

private:
    static inline NbiAlarmList* _theOne = nullptr;
};

}  // namespace ZorvFm
