#include <string>

#include "AlarmSamples.hpp"
#include "Dice.hpp"
#include "Serialize.hpp"
#include "StoredAlarmTest.hpp"

using testing::IsEmpty;

namespace ZorvFm {
namespace {

/// fullAlarm() in state 5, field by field.
constexpr const char* fullText =
    "TWFuYWdlZEVsZW1lbnQ9MSxTbG90PTIsUG9ydD00;32473;4097;TGluayBkb3duIGFnYWlu;TGluayB1cA==;"
    "4;TGluayBmYWlsdXJl;17;1700000000123456789;2;14;11;TGluayBkb3du;3;1690000000000000001;5;"
    "1700000001000000002;6;2;c2xvdA==;dHdv;cG9ydA==;Zm91cg==";

class AlarmSerializationTest : public StoredAlarmTest<&Alarm::deserialize_v2> {
protected:
    /// What fullText reads as: the configured severity is not stored.
    static AlarmData fullData()
    {
        AlarmData data = fullAlarm();
        data.hasConfiguredSeverity = false;
        data.configuredSeverity = 1;
        return data;
    }

    /// otherAlarm() after the reading of the first fields of fullText.
    static AlarmData readUpTo(std::size_t count)
    {
        AlarmData data = otherAlarm();
        data.additionalInfo.clear();
        data.additionalTextForClear.clear();
        data.stateful = true;
        for (std::size_t i = 0; i < count; ++i) {
            fieldsOfFormat2().at(i).take(data, fullData());
        }
        return data;
    }
};

// --- Writing

TEST_F(AlarmSerializationTest, writesTheFieldsInOrder)
{
    EXPECT_EQ(fullText, alarmInState(AlarmState::CEASE_PENDING).serialize_v2());
}

TEST_F(AlarmSerializationTest, writesEmptyTextsAsEmptyFields)
{
    AlarmData data;
    data.specificProblem = "";

    EXPECT_EQ(";0;0;;;0;;0;0;0;0;0;;0;0;0;0;0;0", alarmInState(AlarmState::NEW, data).serialize_v2());
}

TEST_F(AlarmSerializationTest, endsWithTheIdAndTheNumberOfPairs)
{
    AlarmData data = fullAlarm();
    data.additionalInfo.clear();
    EXPECT_THAT(alarmInState(AlarmState::ACTIVE, data).serialize_v2(), testing::EndsWith(";2;1700000001000000002;6;0"));

    data.additionalInfo = {{"", ""}};
    EXPECT_THAT(alarmInState(AlarmState::ACTIVE, data).serialize_v2(), testing::EndsWith(";6;1;;"));
}

TEST_F(AlarmSerializationTest, writesTheEndsOfTheNumbers)
{
    AlarmData data;
    data.majorType = data.minorType = data.probableCause = UINT32_MAX;
    data.severity = data.originalSeverity = INT32_MIN;
    data.eventType = -1;
    data.seqNo = data.originalSeqNo = data.alarmId = UINT64_MAX;
    data.eventTime = data.originalEventTime = data.clearEventTime = UINT64_MAX;
    const std::string maximum = "18446744073709551615";

    EXPECT_EQ(";4294967295;4294967295;;;-2147483648;VW5rbm93biBhbGFybQ==;" + maximum + ";" + maximum +
                  ";4294967295;4294967295;" + maximum + ";;-2147483648;" + maximum + ";0;" + maximum + ";" + maximum +
                  ";0",
              alarmInState(AlarmState::NEW, data).serialize_v2());
}

TEST_F(AlarmSerializationTest, writesTheStateNumber)
{
    for (int state = AlarmState::NEW; state <= AlarmState::CEASED; ++state) {
        EXPECT_EQ(std::to_string(state), split(alarmInState(state).serialize_v2()).at(15));
    }
}

TEST_F(AlarmSerializationTest, writesTheTextAsItIsShown)
{
    const std::vector<std::string> fields = split(alarmInState(AlarmState::ACTIVE_TOGGLING).serialize_v2());

    EXPECT_EQ(Serialize::toBase64("Link down again The alarm is currently toggling."), fields.at(3));
    EXPECT_EQ(Serialize::toBase64("Link down"), fields.at(12));
}

// --- Reading

TEST_F(AlarmSerializationTest, readsTheFieldsInOrder)
{
    const Alarm alarm = read(fullText);

    EXPECT_EQ(allFields(fullData()), allFields(alarm));
    EXPECT_EQ(AlarmState::CEASE_PENDING, alarm.getState().getState());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, readsEmptyTexts)
{
    AlarmData expected;
    expected.specificProblem = "";
    expected.stateful = true;
    const Alarm alarm = read(";0;0;;;0;;0;0;0;0;0;;0;0;0;0;0;0");

    EXPECT_EQ(allFields(expected), allFields(alarm));
    EXPECT_EQ(AlarmState::NEW, alarm.getState().getState());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, readsALongTextOverLineBreaks)
{
    AlarmData data = fullAlarm();
    data.additionalText = std::string(100, 'x') + ";\r\n\xff" + std::string(100, '\0');
    const std::string text = alarmInState(AlarmState::ACTIVE, data).serialize_v2();

    EXPECT_NE(std::string::npos, split(text).at(3).find("\r\n"));
    EXPECT_EQ(data.additionalText, read(text).additionalText);
}

TEST_F(AlarmSerializationTest, whatIsReadIsStateful)
{
    Alarm alarm = alarmInState(AlarmState::NEW, otherAlarm());
    alarm.stateful = false;
    alarm.deserialize_v2(fullText);

    EXPECT_TRUE(alarm.stateful);
}

TEST_F(AlarmSerializationTest, keepsWhatIsNotStored)
{
    Alarm alarm = alarmInState(AlarmState::NEW, otherAlarm());
    alarm.hasConfiguredSeverity = true;
    alarm.configuredSeverity = 5;
    alarm.itemName.length = 6;
    alarm.deserialize_v2(fullText);

    EXPECT_TRUE(alarm.hasConfiguredSeverity);
    EXPECT_EQ(5u, alarm.configuredSeverity);
    EXPECT_EQ(6, alarm.itemName.length);
}

TEST_F(AlarmSerializationTest, anEmptyStateIsActive)
{
    const Alarm alarm = read(replaced(fullText, 15, ""));

    EXPECT_EQ(AlarmState::ACTIVE, alarm.getState().getState());
    EXPECT_EQ(allFields(fullData()), allFields(alarm));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, anyStateNumberIsTaken)
{
    EXPECT_EQ(-3, read(replaced(fullText, 15, "-3")).getState().getState());
    EXPECT_EQ(77, read(replaced(fullText, 15, "77")).getState().getState());
}

TEST_F(AlarmSerializationTest, aTogglingAlarmThatWasReadBackSaysSoTwice)
{
    const Alarm alarm = read(alarmInState(AlarmState::ACTIVE_TOGGLING).serialize_v2());

    EXPECT_EQ("Link down again The alarm is currently toggling.", alarm.getAdditionalTextBasic());
    EXPECT_EQ("Link down again The alarm is currently toggling. The alarm is currently toggling.",
              alarm.getAdditionalText());
}

TEST_F(AlarmSerializationTest, whatFollowsANumberIsIgnored)
{
    EXPECT_EQ(193u, read(replaced(fullText, 1, "193x")).majorType);
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, numbersBeyond32BitsLoseTheirUpperHalf)
{
    EXPECT_EQ(1u, read(replaced(fullText, 1, "4294967297")).majorType);
    EXPECT_EQ(UINT32_MAX, read(replaced(fullText, 2, "-1")).minorType);
}

TEST_F(AlarmSerializationTest, foreignCharactersCutATextOnly)
{
    AlarmData expected = fullData();
    expected.specificProblem = "Link f";

    EXPECT_EQ(allFields(expected), allFields(read(replaced(fullText, 6, "TGluayBm*WlsdXJl"))));
    EXPECT_THAT(journal(), IsEmpty());
}

// --- Pairs

TEST_F(AlarmSerializationTest, surplusFieldsAreIgnored)
{
    EXPECT_EQ(allFields(fullData()), allFields(read(std::string(fullText) + ";Zm91cg==")));
    EXPECT_EQ(allFields(fullData()), allFields(read(std::string(fullText) + ";;;;")));

    AlarmData onePair = fullData();
    onePair.additionalInfo.pop_back();
    EXPECT_EQ(allFields(onePair), allFields(read(replaced(fullText, 18, "1"))));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, missingPairsAreForgiven)
{
    AlarmData onePair = fullData();
    onePair.additionalInfo.pop_back();
    EXPECT_EQ(allFields(onePair), allFields(read(firstFields(fullText, 21))));
    EXPECT_EQ(allFields(fullData()), allFields(read(replaced(fullText, 18, "2147483647"))));

    AlarmData noPair = fullData();
    noPair.additionalInfo.clear();
    EXPECT_EQ(allFields(noPair), allFields(read(firstFields(fullText, 19))));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, aCountOfZeroOrLessReadsNone)
{
    AlarmData noPair = fullData();
    noPair.additionalInfo.clear();
    EXPECT_EQ(allFields(noPair), allFields(read(replaced(fullText, 18, "0"))));
    EXPECT_EQ(allFields(noPair), allFields(read(replaced(fullText, 18, "-1"))));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, aNameWithoutItsValueFails)
{
    AlarmData noPair = fullData();
    noPair.additionalInfo.clear();
    expectEnd(20, noPair, "Out of range", firstFields(replaced(fullText, 18, "1"), 20));

    AlarmData onePair = fullData();
    onePair.additionalInfo.pop_back();
    expectEnd(22, onePair, "Out of range", firstFields(fullText, 22));
}

// --- Damage

TEST_F(AlarmSerializationTest, anUnreadableNumberEndsTheReading)
{
    for (std::size_t i = 0; i < fieldsOfFormat2().size(); ++i) {
        const std::string name = fieldsOfFormat2()[i].name;
        if (name.empty()) {
            continue;
        }
        SCOPED_TRACE(name);
        expectEnd(i, readUpTo(i), "Failed to retrieve " + name, replaced(fullText, i, "x"));
    }
}

TEST_F(AlarmSerializationTest, anEmptyNumberEndsTheReadingUnlessItIsTheState)
{
    for (std::size_t i = 0; i < fieldsOfFormat2().size(); ++i) {
        const std::string name = fieldsOfFormat2()[i].name;
        if (name.empty() || i == 15) {
            continue;
        }
        SCOPED_TRACE(name);
        expectEnd(i, readUpTo(i), "Failed to retrieve " + name, replaced(fullText, i, ""));
    }
}

TEST_F(AlarmSerializationTest, aMissingFieldEndsTheReading)
{
    for (std::size_t count = 1; count < fieldsOfFormat2().size(); ++count) {
        SCOPED_TRACE(count);
        expectEnd(count, readUpTo(count), "Out of range", firstFields(fullText, count));
    }
}

TEST_F(AlarmSerializationTest, anEmptyTextHasNoField)
{
    expectEnd(0, readUpTo(0), "Out of range", "");
}

TEST_F(AlarmSerializationTest, separatorsAloneAreEmptyFields)
{
    AlarmData expected = readUpTo(0);
    expected.dn = "";

    expectEnd(1, expected, "Failed to retrieve majorType", std::string(30, ';'));
}

TEST_F(AlarmSerializationTest, anyBytesAreSurvivedAndShown)
{
    const std::string text = "%s%n\xff\xfe;x;\x01" + std::string(100000, 'y');

    read(text);
    expectFailure("Failed to retrieve majorType", text);
}

// --- Round trips

TEST_F(AlarmSerializationTest, randomAlarmsComeBack)
{
    Dice dice;
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE("seed " + std::to_string(dice.getSeed()) + ", alarm " + std::to_string(i));
        AlarmData data = randomAlarm(dice);
        const int state = static_cast<int>(dice.roll(AlarmState::CEASED + 1));
        const Alarm alarm = alarmInState(state, data);
        const Alarm readBack = read(alarm.serialize_v2());

        data.additionalText = alarm.getAdditionalText();
        data.hasConfiguredSeverity = false;
        data.configuredSeverity = 1;
        data.stateful = true;
        ASSERT_EQ(allFields(data), allFields(readBack));
        ASSERT_EQ(state, readBack.getState().getState());
    }
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmSerializationTest, randomDamageIsSurvived)
{
    Dice dice;
    for (int i = 0; i < 300; ++i) {
        std::string text = alarmInState(AlarmState::ACTIVE, randomAlarm(dice)).serialize_v2();
        for (std::uint64_t damages = dice.roll(5); damages > 0 && !text.empty(); --damages) {
            text[dice.roll(text.size())] = static_cast<char>(dice.roll(256));
            text.resize(text.size() - dice.roll(text.size()) / 10);
        }
        const Alarm alarm = read(text);
        EXPECT_TRUE(alarm.stateful) << "seed " << dice.getSeed();
    }
}

}  // namespace
}  // namespace ZorvFm
