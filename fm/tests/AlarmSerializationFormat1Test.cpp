#include <string>

#include "AlarmSamples.hpp"
#include "StoredAlarmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFm {
namespace {

/// fullAlarm() in state 5, field by field.
constexpr const char* fullText =
    "TWFuYWdlZEVsZW1lbnQ9MSxTbG90PTIsUG9ydD00;32473;4097;TGluayBkb3duIGFnYWlu;4;"
    "TGluayBmYWlsdXJl;17;1700000000123456789;1;2;14;11;TGluayBkb3du;3;1690000000000000001;5;"
    "1700000001000000002;c2xvdA==;dHdv;cG9ydA==;Zm91cg==";

class AlarmSerializationFormat1Test : public StoredAlarmTest<&Alarm::deserialize> {
protected:
    /// otherAlarm() after the reading of the first fields of fullText.
    static AlarmData readUpTo(std::size_t count)
    {
        AlarmData data = otherAlarm();
        data.additionalInfo.clear();
        for (std::size_t i = 0; i < count; ++i) {
            fieldsOfFormat1().at(i).take(data, fullAlarm());
        }
        if (count > 14) {
            data.alarmId = data.originalSeqNo;
        }
        return data;
    }

    /// What fullText reads as.
    static AlarmData fullData()
    {
        AlarmData data = readUpTo(17);
        data.additionalInfo = fullAlarm().additionalInfo;
        return data;
    }
};

// --- Writing

TEST_F(AlarmSerializationFormat1Test, writesTheFieldsInOrder)
{
    EXPECT_EQ(fullText, alarmInState(AlarmState::CEASE_PENDING).serialize());
}

TEST_F(AlarmSerializationFormat1Test, writesTheShortestFormWithoutStateAndClear)
{
    EXPECT_EQ(firstFields(fullText, 15), alarmInState(AlarmState::CEASE_PENDING).serializeOldForTest());
}

TEST_F(AlarmSerializationFormat1Test, writesEmptyTextsAsEmptyFields)
{
    AlarmData data;
    data.specificProblem = "";

    EXPECT_EQ(";0;0;;0;;0;0;0;0;0;0;;0;0;0;0", alarmInState(AlarmState::NEW, data).serialize());
    EXPECT_EQ(";0;0;;0;;0;0;0;0;0;0;;0;0", alarmInState(AlarmState::NEW, data).serializeOldForTest());
}

TEST_F(AlarmSerializationFormat1Test, writesTheStateNumberAndTheTextAsItIsShown)
{
    const std::vector<std::string> fields = split(alarmInState(AlarmState::ACTIVE_TOGGLING).serialize());

    EXPECT_EQ("3", fields.at(15));
    EXPECT_EQ("TGluayBkb3duIGFnYWluIFRoZSBhbGFybSBpcyBjdXJyZW50bHkgdG9nZ2xpbmcu", fields.at(3));
}

// --- Reading each length

TEST_F(AlarmSerializationFormat1Test, reads11Fields)
{
    AlarmData expected = readUpTo(11);
    expected.originalSeqNo = expected.seqNo;
    expected.alarmId = expected.seqNo;
    expected.originalAdditionalText = expected.additionalText;
    expected.originalSeverity = expected.severity;
    expected.originalEventTime = expected.eventTime;
    const Alarm alarm = read(firstFields(fullText, 11));

    EXPECT_EQ(allFields(expected), allFields(alarm));
    EXPECT_EQ(AlarmState::ACTIVE, alarm.getState().getState());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationFormat1Test, reads15Fields)
{
    const Alarm alarm = read(firstFields(fullText, 15));

    EXPECT_EQ(allFields(readUpTo(15)), allFields(alarm));
    EXPECT_EQ(11u, alarm.alarmId);
    EXPECT_EQ(AlarmState::ACTIVE, alarm.getState().getState());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationFormat1Test, reads16Fields)
{
    const Alarm alarm = read(firstFields(fullText, 16));

    EXPECT_EQ(allFields(readUpTo(16)), allFields(alarm));
    EXPECT_EQ(AlarmState::CEASE_PENDING, alarm.getState().getState());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationFormat1Test, reads17Fields)
{
    const Alarm alarm = read(firstFields(fullText, 17));

    EXPECT_EQ(allFields(readUpTo(17)), allFields(alarm));
    EXPECT_EQ(AlarmState::CEASE_PENDING, alarm.getState().getState());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationFormat1Test, readsPairs)
{
    AlarmData onePair = fullData();
    onePair.additionalInfo.pop_back();

    EXPECT_EQ(allFields(onePair), allFields(read(firstFields(fullText, 19))));
    EXPECT_EQ(allFields(fullData()), allFields(read(fullText)));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationFormat1Test, refusesEveryOtherLength)
{
    AlarmData unchanged = otherAlarm();
    unchanged.additionalInfo.clear();
    for (const unsigned count : {0U, 1U, 2U, 10U, 12U, 13U, 14U, 18U, 20U, 22U, 100U}) {
        SCOPED_TRACE(count);
        const Alarm alarm = read(count == 0 ? "" : firstFields(std::string(fullText) + std::string(200, ';'), count));

        EXPECT_EQ(allFields(unchanged), allFields(alarm));
        EXPECT_EQ(AlarmState::NEW, alarm.getState().getState());
        const std::string line = "Corrupt data from replicated list, size " + std::to_string(count);
        EXPECT_THAT(journal(), ElementsAre("log 3 " + line, "trace 3 FM " + line));
    }
}

TEST_F(AlarmSerializationFormat1Test, anEmptyStateIsActive)
{
    for (const unsigned count : {16U, 17U, 21U}) {
        EXPECT_EQ(AlarmState::ACTIVE, read(replaced(firstFields(fullText, count), 15, "")).getState().getState());
    }
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationFormat1Test, anAlertIsReadAsOne)
{
    Alarm alarm = alarmInState(AlarmState::NEW);
    alarm.deserialize(replaced(fullText, 8, "0"));

    EXPECT_FALSE(alarm.stateful);
}

TEST_F(AlarmSerializationFormat1Test, keepsWhatIsNotStored)
{
    Alarm alarm = alarmInState(AlarmState::NEW);
    alarm.deserialize(firstFields(fullText, 16));

    EXPECT_EQ("Link up", alarm.additionalTextForClear);
    EXPECT_EQ(1700000001000000002u, alarm.clearEventTime);
    EXPECT_TRUE(alarm.hasConfiguredSeverity);
    EXPECT_EQ(5u, alarm.configuredSeverity);
}

TEST_F(AlarmSerializationFormat1Test, whatFollowsANumberIsIgnored)
{
    EXPECT_EQ(allFields(fullData()), allFields(read(replaced(fullText, 1, "32473x"))));
    EXPECT_THAT(journal(), IsEmpty());
}

// --- Damage

TEST_F(AlarmSerializationFormat1Test, anUnreadableNumberEndsTheReading)
{
    for (std::size_t i = 0; i < fieldsOfFormat1().size(); ++i) {
        const std::string name = fieldsOfFormat1()[i].name;
        if (name.empty()) {
            continue;
        }
        SCOPED_TRACE(name);
        expectEnd(i, readUpTo(i), "Failed to retrieve " + name, replaced(fullText, i, "x"));
    }
}

TEST_F(AlarmSerializationFormat1Test, ofTheShortestLengthToo)
{
    expectEnd(10, readUpTo(10), "Failed to retrieve probableCause", replaced(firstFields(fullText, 11), 10, ""));
}

TEST_F(AlarmSerializationFormat1Test, anyBytesAreSurvivedAndShown)
{
    const std::string text = "%s%n\xff;x" + std::string(9, ';');

    read(text);
    expectFailure("Failed to retrieve majorType", text);
}

// --- Round trips

TEST_F(AlarmSerializationFormat1Test, randomAlarmsComeBack)
{
    Dice dice;
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE("seed " + std::to_string(dice.getSeed()) + ", alarm " + std::to_string(i));
        AlarmData data = randomAlarm(dice);
        const int state = static_cast<int>(dice.roll(AlarmState::CEASED + 1));
        const Alarm alarm = alarmInState(state, data);
        const Alarm readBack = read(alarm.serialize());

        data.additionalText = alarm.getAdditionalText();
        data.additionalTextForClear = otherAlarm().additionalTextForClear;
        data.alarmId = data.originalSeqNo;
        data.hasConfiguredSeverity = false;
        data.configuredSeverity = 1;
        ASSERT_EQ(allFields(data), allFields(readBack));
        ASSERT_EQ(state, readBack.getState().getState());
    }
    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace ZorvFm
