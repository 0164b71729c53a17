#include <algorithm>
#include <string>

#include "AlarmData.hpp"
#include "AlarmSamples.hpp"
#include "FmTest.hpp"
#include "TimeZone.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* centralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

// --- Names

TEST(AlarmNamesTest, severities)
{
    EXPECT_STREQ("CLEARED", AlarmData::getSeverity(0));
    EXPECT_STREQ("INDETERMINATE", AlarmData::getSeverity(1));
    EXPECT_STREQ("WARNING", AlarmData::getSeverity(2));
    EXPECT_STREQ("MINOR", AlarmData::getSeverity(3));
    EXPECT_STREQ("MAJOR", AlarmData::getSeverity(4));
    EXPECT_STREQ("CRITICAL", AlarmData::getSeverity(5));
    for (const std::int32_t unknown : {6, 7, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_STREQ("UNKNOWN", AlarmData::getSeverity(unknown)) << unknown;
    }
}

TEST(AlarmNamesTest, severityOfNowAndOfTheFirstRaise)
{
    AlarmData alarm;
    alarm.severity = YALT_FM_SEVERITY_CRITICAL;
    alarm.originalSeverity = YALT_FM_SEVERITY_WARNING;

    EXPECT_STREQ("CRITICAL", alarm.getSeverity());
    EXPECT_STREQ("WARNING", alarm.getOriginalSeverity());
}

TEST(AlarmNamesTest, eventTypes)
{
    const std::vector<std::string> names = {"UNKNOWN",
                                            "OTHER",
                                            "COMMUNICATIONSALARM",
                                            "QUALITYOFSERVICEALARM",
                                            "PROCESSINGERRORALARM",
                                            "EQUIPMENTALARM",
                                            "ENVIRONMENTALALARM",
                                            "INTEGRITYVIOLATION",
                                            "OPERATIONALVIOLATION",
                                            "PHYSICALVIOLATION",
                                            "SECURITYSERVICEORMECHANISMVIOLATION",
                                            "TIMEDOMAINVIOLATION",
                                            "UNKNOWN"};
    AlarmData alarm;
    for (std::size_t i = 0; i < names.size(); ++i) {
        alarm.eventType = static_cast<std::int32_t>(i);
        EXPECT_EQ(names[i], alarm.getEventType()) << i;
    }
    for (const std::int32_t unknown : {-1, INT32_MAX, INT32_MIN}) {
        alarm.eventType = unknown;
        EXPECT_STREQ("UNKNOWN", alarm.getEventType()) << unknown;
    }
}

// --- Times

TEST(AlarmTimeTest, isCutToMilliseconds)
{
    const TimeZone zone("UTC0");

    EXPECT_EQ("1970-01-01T00:00:00.000+00:00", AlarmData::formatTimeStr(0));
    EXPECT_EQ("1970-01-01T00:00:00.000+00:00", AlarmData::formatTimeStr(999999));
    EXPECT_EQ("1970-01-01T00:00:00.001+00:00", AlarmData::formatTimeStr(1000000));
    EXPECT_EQ("2023-11-14T22:13:20.999+00:00", AlarmData::formatTimeStr(1700000000999999999));
    EXPECT_EQ("2023-11-14T22:13:21.000+00:00", AlarmData::formatTimeStr(1700000001000000000));
}

TEST(AlarmTimeTest, reachesFarIntoTheFuture)
{
    const TimeZone zone("UTC0");

    EXPECT_EQ("2262-04-11T23:47:16.854+00:00", AlarmData::formatTimeStr(INT64_MAX));
    EXPECT_EQ("2554-07-21T23:34:33.709+00:00", AlarmData::formatTimeStr(UINT64_MAX));
}

TEST(AlarmTimeTest, followsDaylightSaving)
{
    const TimeZone zone(centralEurope);

    EXPECT_EQ("2023-11-14T23:13:20.000+01:00", AlarmData::formatTimeStr(1700000000000000000));
    EXPECT_EQ("2023-07-22T06:26:40.000+02:00", AlarmData::formatTimeStr(1690000000000000000));
}

TEST(AlarmTimeTest, springsForwardAndFallsBackAtTheMomentOfTheZone)
{
    const TimeZone zone(centralEurope);

    EXPECT_EQ("2023-03-26T01:59:59.999+01:00", AlarmData::formatTimeStr(1679792399999999999));
    EXPECT_EQ("2023-03-26T03:00:00.000+02:00", AlarmData::formatTimeStr(1679792400000000000));
    EXPECT_EQ("2023-10-29T02:59:59.999+02:00", AlarmData::formatTimeStr(1698541199999999999));
    EXPECT_EQ("2023-10-29T02:00:00.000+01:00", AlarmData::formatTimeStr(1698541200000000000));
}

TEST(AlarmTimeTest, knowsZonesWestOfGreenwichAndOfHalfHours)
{
    {
        const TimeZone zone("EST5");
        EXPECT_EQ("2023-11-14T17:13:20.000-05:00", AlarmData::formatTimeStr(1700000000000000000));
        EXPECT_EQ("1969-12-31T19:00:00.000-05:00", AlarmData::formatTimeStr(0));
    }
    const TimeZone zone("IST-5:30");
    EXPECT_EQ("2023-11-15T03:43:20.000+05:30", AlarmData::formatTimeStr(1700000000000000000));
}

TEST(AlarmTimeTest, timeOfTheLatestEventAndOfTheFirstRaise)
{
    const TimeZone zone(centralEurope);
    AlarmData alarm;
    alarm.eventTime = 1700000000123456789;
    alarm.originalEventTime = 1690000000987654321;

    EXPECT_EQ("2023-11-14T23:13:20.123+01:00", alarm.getEventTimeStr());
    EXPECT_EQ("2023-07-22T06:26:40.987+02:00", alarm.getOriginalEventTimeStr());
}

// --- XML

TEST(AlarmXmlTest, fiveCharactersBecomeEntities)
{
    EXPECT_EQ("&amp;", AlarmData::xmlEncode("&"));
    EXPECT_EQ("&quot;", AlarmData::xmlEncode("\""));
    EXPECT_EQ("&apos;", AlarmData::xmlEncode("'"));
    EXPECT_EQ("&lt;", AlarmData::xmlEncode("<"));
    EXPECT_EQ("&gt;", AlarmData::xmlEncode(">"));
    EXPECT_EQ("a&lt;b&gt; &amp;amp; &quot;it&apos;s&quot;", AlarmData::xmlEncode("a<b> &amp; \"it's\""));
    EXPECT_EQ("", AlarmData::xmlEncode(""));
}

TEST(AlarmXmlTest, everyOtherByteStaysAsItIs)
{
    for (int value = 0; value < 256; ++value) {
        const std::string text(1, static_cast<char>(value));
        if (text.find_first_of("&\"'<>") == std::string::npos) {
            EXPECT_EQ(text, AlarmData::xmlEncode(text)) << value;
        }
    }
}

// --- Whole texts

TEST(AlarmTextTest, additionalInfoToString)
{
    AlarmData alarm;
    EXPECT_EQ("AdditionalInfoSize=0; ", alarm.additionalInfoToString());

    alarm.addAdditionalInfo("slot", "two");
    EXPECT_EQ("AdditionalInfoSize=1; slot : two, ", alarm.additionalInfoToString());

    alarm.addAdditionalInfo("", "");
    EXPECT_EQ("AdditionalInfoSize=2; slot : two,  : , ", alarm.additionalInfoToString());
}

TEST(AlarmTextTest, toStringOfANewOne)
{
    EXPECT_EQ("dn=; majorType=0; minorType=0; additionalText=; severity=0; specificProblem=Unknown alarm; seqNo=0; "
              "eventTime=0; stateful=0; eventType=0; probableCause=0; originalSeqNo=0; originalAdditionalText=; "
              "originalSeverity=0; originalEventTime=0; alarmId=0; additionalInfoSize=0",
              AlarmData().toString());
}

TEST(AlarmTextTest, toStringShowsTheFieldsInOrder)
{
    EXPECT_EQ("dn=ManagedElement=1,Slot=2,Port=4; majorType=32473; minorType=4097; additionalText=Link down again; "
              "severity=4; specificProblem=Link failure; seqNo=17; eventTime=1700000000123456789; stateful=1; "
              "eventType=2; probableCause=14; originalSeqNo=11; originalAdditionalText=Link down; originalSeverity=3; "
              "originalEventTime=1690000000000000001; alarmId=6; additionalInfoSize=2; slot; two; port; four",
              fullAlarm().toString());
}

TEST(AlarmTextTest, toStringShowsTheEndsOfTheNumbers)
{
    AlarmData alarm = AlarmData();
    alarm.majorType = alarm.minorType = alarm.probableCause = UINT32_MAX;
    alarm.severity = alarm.originalSeverity = alarm.eventType = INT32_MIN;
    alarm.seqNo = alarm.originalSeqNo = alarm.alarmId = alarm.eventTime = alarm.originalEventTime = UINT64_MAX;

    EXPECT_EQ("dn=; majorType=4294967295; minorType=4294967295; additionalText=; severity=-2147483648; "
              "specificProblem=Unknown alarm; seqNo=18446744073709551615; eventTime=18446744073709551615; stateful=0; "
              "eventType=-2147483648; probableCause=4294967295; originalSeqNo=18446744073709551615; "
              "originalAdditionalText=; originalSeverity=-2147483648; originalEventTime=18446744073709551615; "
              "alarmId=18446744073709551615; additionalInfoSize=0",
              alarm.toString());
}

/// Shows other texts and information than it keeps.
class ShowingAlarm : public AlarmData {
public:
    std::string getAdditionalText() const override { return "shown"; }
    AdditionalInfoT getAdditionalInfo() const override { return {{"a", "1"}}; }
};

TEST(AlarmTextTest, textsShowWhatTheAlarmShows)
{
    EXPECT_THAT(ShowingAlarm().toString(), testing::HasSubstr("; additionalText=shown; "));
    EXPECT_THAT(ShowingAlarm().toString(), testing::EndsWith("; additionalInfoSize=1; a; 1"));
    EXPECT_EQ("AdditionalInfoSize=1; a : 1, ", ShowingAlarm().additionalInfoToString());
    EXPECT_THAT(ShowingAlarm().toLogString(), testing::HasSubstr(";CLEARED;shown;0;UNKNOWN;"));
    EXPECT_THAT(ShowingAlarm().toLogString(), testing::HasSubstr(";0;1;a;1</Alert>"));
}

// --- The alarm log record

class AlarmLogRecordTest : public FmTest {
protected:
    AlarmLogRecordTest()
    {
        middleware.journal.show({Topic::Trace});
        middleware.clock.turnOn(1000000000, 1750000000456789000);
    }

    const TimeZone zone{centralEurope};
};

TEST_F(AlarmLogRecordTest, ofAnAlarm)
{
    EXPECT_EQ(
        "<FmLogRecord>\n"
        "   <LogTimestamp>2025-06-15T17:06:40.456+02:00</LogTimestamp>\n"
        "   <Alarm>1;2023-11-14T23:13:20.123+01:00;ManagedElement=1,Slot=2,Port=4;32473;4097;Link failure;14;"
        "MAJOR;Link down again;17;COMMUNICATIONSALARM;2023-07-22T06:26:40.000+02:00;MINOR;Link down;11;2;slot;two;"
        "port;four</Alarm>\n"
        "</FmLogRecord>",
        fullAlarm().toLogString());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmLogRecordTest, ofAnAlertWithoutInformation)
{
    AlarmData alert = fullAlarm();
    alert.stateful = false;
    alert.setAdditionalInfo(AdditionalInfoT{});

    EXPECT_EQ(
        "<FmLogRecord>\n"
        "   <LogTimestamp>2025-06-15T17:06:40.456+02:00</LogTimestamp>\n"
        "   <Alert>0;2023-11-14T23:13:20.123+01:00;ManagedElement=1,Slot=2,Port=4;32473;4097;Link failure;14;"
        "MAJOR;Link down again;17;COMMUNICATIONSALARM;2023-07-22T06:26:40.000+02:00;MINOR;Link down;11;0</Alert>\n"
        "</FmLogRecord>",
        alert.toLogString());
}

TEST_F(AlarmLogRecordTest, theBodyIsEncodedAndNothingElse)
{
    AlarmData alarm;
    alarm.stateful = true;
    alarm.dn = "<dn>";
    alarm.specificProblem = "&";
    alarm.additionalText = "it's";
    alarm.originalAdditionalText = "\"";
    alarm.addAdditionalInfo("<", ">");

    EXPECT_EQ("<FmLogRecord>\n"
              "   <LogTimestamp>2025-06-15T17:06:40.456+02:00</LogTimestamp>\n"
              "   <Alarm>1;1970-01-01T01:00:00.000+01:00;&lt;dn&gt;;0;0;&amp;;0;CLEARED;it&apos;s;0;UNKNOWN;"
              "1970-01-01T01:00:00.000+01:00;CLEARED;&quot;;0;1;&lt;;&gt;</Alarm>\n"
              "</FmLogRecord>",
              alarm.toLogString());
}

TEST_F(AlarmLogRecordTest, textsMayHoldSeparatorsFormatsAndAnyBytes)
{
    AlarmData alarm;
    alarm.dn = "a;b";
    alarm.additionalText = "%s%n\xff";
    alarm.addAdditionalInfo(";", "\n");

    EXPECT_EQ("<FmLogRecord>\n"
              "   <LogTimestamp>2025-06-15T17:06:40.456+02:00</LogTimestamp>\n"
              "   <Alert>0;1970-01-01T01:00:00.000+01:00;a;b;0;0;Unknown alarm;0;CLEARED;%s%n\xff;0;UNKNOWN;"
              "1970-01-01T01:00:00.000+01:00;CLEARED;;0;1;;;\n</Alert>\n"
              "</FmLogRecord>",
              alarm.toLogString());
}

TEST_F(AlarmLogRecordTest, withoutAClockItIsStampedWithTheEpoch)
{
    middleware.clock.fail(CLOCK_REALTIME);
    const std::string record = fullAlarm().toLogString();

    EXPECT_THAT(record, testing::StartsWith("<FmLogRecord>\n   <LogTimestamp>1970-01-01T01:00:00.000+01:00"
                                            "</LogTimestamp>\n   <Alarm>1;2023-11-14T23:13:20.123+01:00;"));
    EXPECT_THAT(journal(),
                ElementsAre("log 4 Failed to retrieve system time", "trace 4 FM Failed to retrieve system time"));
}

}  // namespace
}  // namespace ZorvFm
