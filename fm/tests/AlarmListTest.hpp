/// What the tests of the active alarm list stand on: a list that has been started on a fresh node.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "AlarmList.hpp"
#include "AlarmSamples.hpp"
#include "FmTest.hpp"

namespace ZorvFm {

/// DNs and ids in the order of the list.
inline std::vector<std::string> contentsOf(AlarmList& list)
{
    std::list<Alarm*> all;
    list.getAlarms(all);
    std::vector<std::string> texts;
    for (const Alarm* alarm : all) {
        texts.push_back(alarm->dn + " " + std::to_string(alarm->alarmId));
    }
    return texts;
}

class AlarmListTest : public FmTest {
protected:
    AlarmListTest()
    {
        list.initialize();
        journal();
    }

    Alarm* savedAlarm(const AlarmData& data)
    {
        Alarm* alarm = list.createAlarm(data);
        list.saveAlarm(*alarm);
        journal();
        return alarm;
    }

    /// Visible northbound, and saved as such.
    Alarm* activeAlarm(const AlarmData& data, bool toggling = false)
    {
        config.alarmToggleWindowSize = toggling ? 1 : 0;
        Alarm* alarm = list.createAlarm(data);
        alarm->raise();
        alarm->tick(0);
        list.saveAlarm(*alarm);
        journal();
        return alarm;
    }

    static std::vector<AlarmData> visibleAlarms()
    {
        std::vector<AlarmData> alarms;
        NbiAlarmList::getAlarms(alarms);
        return alarms;
    }

    static std::vector<AlarmData> alarmsIn(const std::vector<AlarmChunkT>& chunks)
    {
        std::vector<AlarmData> alarms;
        for (const AlarmChunkT& chunk : chunks) {
            for (const ShownAlarm& shown : *chunk) {
                EXPECT_EQ(shown.alarmId, shown.data->alarmId);
                alarms.push_back(*shown.data);
            }
        }
        return alarms;
    }

    static std::vector<AlarmData> sharedAlarms() { return alarmsIn(NbiAlarmList::shareAlarms()); }

    /// The texts of the stored alarms.
    std::vector<std::string> items() const { return middleware.lists.items("FmActiveAlarmList2"); }

    FmConfig config;
    AlarmList list{config};
};

/// An alarm whose first item has so many characters, when its id is a digit.
inline AlarmData alarmOfStoredLength(std::size_t length)
{
    AlarmData data = anAlarm("A", 32473, 7);
    data.originalSeqNo = 0;
    data.seqNo = 1;
    const auto stored = [&] {
        Alarm alarm = alarmInState(AlarmState::NEW, data);
        alarm.init(data);
        alarm.alarmId = 1;
        return alarm.serialize_v2().size();
    };
    while (stored() + 10 < length) {
        data.specificProblem += "abc";
    }
    while (stored() < length) {
        data.seqNo *= 10;
    }
    return data;
}

}  // namespace ZorvFm
