/// What the tests of both stored formats stand on: traces shown, a reading, and a look at its failure.
#pragma once

#include <string>

#include "AlarmSamples.hpp"
#include "FmTest.hpp"
#include "StoredFields.hpp"

namespace ZorvFm {

/// @param reader of the format
template <void (Alarm::*reader)(const std::string& text)>
class StoredAlarmTest : public FmTest {
protected:
    StoredAlarmTest() { middleware.journal.show({ZorvFakes::Topic::Trace}); }

    /// What the text makes of otherAlarm().
    static Alarm read(const std::string& text)
    {
        Alarm alarm = alarmInState(AlarmState::NEW, otherAlarm());
        (alarm.*reader)(text);
        return alarm;
    }

    /// The reading of this text ends before that field, with the data as far as they were read. The text's own state is 5.
    void expectEnd(std::size_t index, const AlarmData& expected, const std::string& reason, const std::string& text)
    {
        const Alarm alarm = read(text);
        EXPECT_EQ(allFields(expected), allFields(alarm));
        EXPECT_EQ(index > 15 ? AlarmState::CEASE_PENDING : AlarmState::NEW, alarm.getState().getState());
        expectFailure(reason, text);
    }

    /// The journal tells that this text could not be read, and nothing else.
    void expectFailure(const std::string& reason, const std::string& text)
    {
        const std::string line = "Failed to deserialize alarm: " + reason + ", data :" + text;
        EXPECT_THAT(journal(), testing::ElementsAre("log 3 " + line, "trace 3 FM " + line));
    }
};

}  // namespace ZorvFm
