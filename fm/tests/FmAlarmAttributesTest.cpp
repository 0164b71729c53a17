/// The attributes of the active alarms, as management reads them.
#include "FmAlarmAttributes.hpp"

#include "MoImplTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFm {
namespace {

class FmAlarmAttributesTest : public MoImplTest {
protected:
    FmAlarmAttributesTest() { alarms.set({fullAlarm()}); }
};

// --- The table

TEST_F(FmAlarmAttributesTest, everyAttributeHasItsTypeAndValue)
{
    EXPECT_EQ("9 '6'", attribute("fmAlarmId"));
    EXPECT_EQ("9 'ManagedElement=1,Slot=2,Port=4'", attribute("source"));
    EXPECT_EQ("9 '2023-11-14T22:13:20.123+00:00'", attribute("lastEventTime"));
    EXPECT_EQ("4 17", attribute("sequenceNumber"));
    EXPECT_EQ("12 4", attribute("activeSeverity"));
    EXPECT_EQ("9 'Link down again'", attribute("additionalText"));
    EXPECT_EQ("7 32473", attribute("majorType"));
    EXPECT_EQ("7 4097", attribute("minorType"));
    EXPECT_EQ("9 'Link failure'", attribute("specificProblem"));
    EXPECT_EQ("7 14", attribute("probableCause"));
    EXPECT_EQ("11 [{name='slot' value='two'}, {name='port' value='four'}]", attribute("additionalInfo"));
    EXPECT_EQ("12 5", attribute("originalSeverity"));
    EXPECT_EQ("9 'Link down'", attribute("originalAdditionalText"));
    EXPECT_EQ("9 '2023-07-22T04:26:40.000+00:00'", attribute("originalEventTime"));
    EXPECT_EQ("12 2", attribute("eventType"));
}

TEST_F(FmAlarmAttributesTest, theLargestNumbersAreReadWhole)
{
    AlarmData alarm = fullAlarm();
    alarm.alarmId = 18446744073709551615U;
    alarm.seqNo = 18446744073709551615U;
    alarm.majorType = alarm.minorType = alarm.probableCause = 4294967295U;
    alarms.set({alarm});
    const std::string dn = "FmAlarm=18446744073709551615";

    EXPECT_EQ("9 '18446744073709551615'", attribute("fmAlarmId", dn));
    EXPECT_EQ("4 18446744073709551615", attribute("sequenceNumber", dn));
    EXPECT_EQ("7 4294967295", attribute("majorType", dn));
    EXPECT_EQ("7 4294967295", attribute("minorType", dn));
    EXPECT_EQ("7 4294967295", attribute("probableCause", dn));
}

TEST_F(FmAlarmAttributesTest, anAlarmThatWasNotSentHasNoSequenceNumber)
{
    AlarmData alarm = fullAlarm();
    alarm.seqNo = 0;
    alarms.set({alarm});
    YaltOamSpiMoAttributeResult_3T result{};

    ASSERT_EQ(0, impl.getMoAttribute(1, "FmAlarm=6", "sequenceNumber", &result));

    EXPECT_EQ(4, result.attribute->type);
    EXPECT_EQ(0U, result.attribute->numberOfValues);
    EXPECT_EQ(nullptr, result.attribute->values);
}

TEST_F(FmAlarmAttributesTest, emptyTextsAreTexts)
{
    AlarmData alarm;
    alarm.alarmId = 6;
    alarm.specificProblem = "";
    alarms.set({alarm});

    for (const char* name : {"source", "additionalText", "specificProblem", "originalAdditionalText"}) {
        EXPECT_EQ("9 ''", attribute(name)) << name;
    }
}

TEST_F(FmAlarmAttributesTest, eventTypesAreReadAsTheyAre)
{
    AlarmData alarm = fullAlarm();
    for (const int eventType : {0, 1, 11, 12, -1}) {
        alarm.eventType = eventType;
        alarms.set({alarm});

        EXPECT_EQ("12 " + std::to_string(eventType), attribute("eventType"));
        impl.finish(1);
    }
}

TEST_F(FmAlarmAttributesTest, aNameThatIsNotInTheTableIsNotFound)
{
    for (const char* name : {"", "fmAlarmID", "severity", "fmAlarmId ", "userLabel"}) {
        EXPECT_EQ("-2", attribute(name)) << name;
    }
}

// --- Additional information

TEST_F(FmAlarmAttributesTest, aPairIsAStructureOfTwoTexts)
{
    YaltOamSpiMoAttributeResult_3T result{};

    ASSERT_EQ(0, impl.getMoAttribute(1, "FmAlarm=6", "additionalInfo", &result));

    ASSERT_EQ(2U, result.attribute->numberOfValues);
    const YaltOamSpiMoStruct_3T& pair = *result.attribute->values[1].structValue;
    ASSERT_EQ(2U, pair.numberOfMembers);
    EXPECT_STREQ("name", pair.members[0].name);
    EXPECT_EQ("9 'port'", shown(pair.members[0].attribute));
    EXPECT_STREQ("value", pair.members[1].name);
    EXPECT_EQ("9 'four'", shown(pair.members[1].attribute));
}

TEST_F(FmAlarmAttributesTest, onePairIsOneStructure)
{
    AlarmData alarm = fullAlarm();
    alarm.additionalInfo = {{"", ""}};
    alarms.set({alarm});

    EXPECT_EQ("11 {name='' value=''}", attribute("additionalInfo"));
}

TEST_F(FmAlarmAttributesTest, withoutPairsTheInformationHasNoValue)
{
    AlarmData alarm = fullAlarm();
    alarm.additionalInfo.clear();
    alarms.set({alarm});
    YaltOamSpiMoAttributeResult_3T result{};

    EXPECT_EQ("11 none", attribute("additionalInfo"));
    ASSERT_EQ(0, impl.getMoAttribute(1, "FmAlarm=6", "additionalInfo", &result));
    EXPECT_EQ(nullptr, result.attribute->values);
}

// --- Severities

TEST_F(FmAlarmAttributesTest, severitiesAreConvertedToThoseOfTheClass)
{
    EXPECT_EQ(1, FmAlarmAttributes::convertSeverity(YALT_FM_SEVERITY_CLEARED));
    EXPECT_EQ(6, FmAlarmAttributes::convertSeverity(YALT_FM_SEVERITY_WARNING));
    EXPECT_EQ(5, FmAlarmAttributes::convertSeverity(YALT_FM_SEVERITY_MINOR));
    EXPECT_EQ(4, FmAlarmAttributes::convertSeverity(YALT_FM_SEVERITY_MAJOR));
    EXPECT_EQ(3, FmAlarmAttributes::convertSeverity(YALT_FM_SEVERITY_CRITICAL));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(FmAlarmAttributesTest, anIndeterminateSeverityIsReadAsCritical)
{
    EXPECT_EQ(3, FmAlarmAttributes::convertSeverity(YALT_FM_SEVERITY_INDETERMINATE));

    EXPECT_THAT(journal(),
                ElementsAre("log 4 Alarm received with non supported severity Indeterminate. Using Critical instead"));
}

TEST_F(FmAlarmAttributesTest, anyOtherSeverityIsReadAsCritical)
{
    EXPECT_EQ(3, FmAlarmAttributes::convertSeverity(6));
    EXPECT_EQ(3, FmAlarmAttributes::convertSeverity(-1));

    EXPECT_THAT(journal(),
                ElementsAre("log 3 Faulty alarm severity received: 6", "log 3 Faulty alarm severity received: -1"));
}

TEST_F(FmAlarmAttributesTest, bothSeveritiesAreConverted)
{
    AlarmData alarm = fullAlarm();
    alarm.severity = YALT_FM_SEVERITY_INDETERMINATE;
    alarm.originalSeverity = 99;
    alarms.set({alarm});

    EXPECT_EQ("12 3", attribute("activeSeverity"));
    EXPECT_EQ("12 3", attribute("originalSeverity"));
    EXPECT_THAT(journal(),
                ElementsAre("log 4 Alarm received with non supported severity Indeterminate. Using Critical instead",
                            "log 3 Faulty alarm severity received: 99"));
}

}  // namespace
}  // namespace ZorvFm
