#include "AlarmData.hpp"

#include <string>
#include <type_traits>

#include "AlarmSamples.hpp"
#include "FmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr std::uint64_t monotonicNow = 5000000000123;

static_assert(std::has_virtual_destructor_v<AlarmData>, "alarms are deleted through their data");

/// The three structures have the same members, apart from what the later ones add.
template <class NotificationT>
class AlarmDataFromNotificationTest : public FmTest {
protected:
    AlarmDataFromNotificationTest()
    {
        middleware.clock.turnOn(monotonicNow);
        middleware.journal.show({Topic::Trace});
    }

    static NotificationT notification()
    {
        NotificationT one{};
        one.dn = "ManagedElement=1,Port=4";
        one.majorType = 32473;
        one.minorType = 4294967295;
        one.additionalText = "Link down";
        one.severity = YALT_FM_SEVERITY_MAJOR;
        return one;
    }

    /// What the notification makes, when it has no time of its own.
    static AlarmData expected()
    {
        AlarmData alarm;
        alarm.dn = "ManagedElement=1,Port=4";
        alarm.majorType = 32473;
        alarm.minorType = 4294967295;
        alarm.originalAdditionalText = "Link down";
        alarm.severity = YALT_FM_SEVERITY_MAJOR;
        alarm.originalSeverity = YALT_FM_SEVERITY_MAJOR;
        alarm.eventTime = monotonicNow;
        alarm.originalEventTime = monotonicNow;
        alarm.clearEventTime = 0;
        alarm.hasConfiguredSeverity = false;
        alarm.configuredSeverity = 1;
        alarm.seqNo = 0;
        alarm.originalSeqNo = 0;
        alarm.alarmId = 0;
        alarm.stateful = false;
        alarm.eventType = 1;
        alarm.probableCause = 418;
        alarm.specificProblem = "Unknown alarm";
        alarm.additionalInfo = {};
        alarm.additionalText = "Link down";
        alarm.additionalTextForClear = "";
        return alarm;
    }
};

using NotificationTs =
    testing::Types<YaltOamSpiNotificationFmStruct, YaltOamSpiNotificationFmStruct_2, YaltOamSpiNotificationFmStruct_4>;

struct VersionNames {
    template <class NotificationT>
    static std::string GetName(int index)
    {
        static const char* const names[] = {"version1", "version2", "version4"};
        return names[index];
    }
};

TYPED_TEST_SUITE(AlarmDataFromNotificationTest, NotificationTs, VersionNames);

TYPED_TEST(AlarmDataFromNotificationTest, fieldsAreTakenAndTheRestIsUnknown)
{
    EXPECT_EQ(allFields(this->expected()), allFields(AlarmData(this->notification())));
    EXPECT_THAT(this->journal(), IsEmpty());
}

TYPED_TEST(AlarmDataFromNotificationTest, nullAndEmptyDnAreToldAndAccepted)
{
    AlarmData expected = this->expected();
    expected.dn = "";
    for (const char* dn : {static_cast<const char*>(nullptr), ""}) {
        TypeParam notification = this->notification();
        notification.dn = dn;

        EXPECT_EQ(allFields(expected), allFields(AlarmData(notification)));
        EXPECT_THAT(
            this->journal(),
            ElementsAre("log 3 Received notification contains no source DN: major 32473, minor = 4294967295",
                        "trace 3 FM Received notification contains no source DN: major 32473, minor = 4294967295"));
    }
}

TYPED_TEST(AlarmDataFromNotificationTest, nullAndEmptyTextAreEmpty)
{
    AlarmData expected = this->expected();
    expected.additionalText = "";
    expected.originalAdditionalText = "";
    for (const char* text : {static_cast<const char*>(nullptr), ""}) {
        TypeParam notification = this->notification();
        notification.additionalText = text;

        EXPECT_EQ(allFields(expected), allFields(AlarmData(notification)));
        EXPECT_THAT(this->journal(), IsEmpty());
    }
}

TYPED_TEST(AlarmDataFromNotificationTest, nothingOfTheNotificationIsKept)
{
    std::string dn = "ManagedElement=1,Port=4";
    std::string text = "Link down";
    TypeParam notification = this->notification();
    notification.dn = dn.c_str();
    notification.additionalText = text.c_str();
    const AlarmData alarm(notification);
    dn.assign(dn.size(), 'x');
    text.assign(text.size(), 'x');

    EXPECT_EQ(allFields(this->expected()), allFields(alarm));
}

TYPED_TEST(AlarmDataFromNotificationTest, severitiesThatNobodyKnowsAreKept)
{
    for (const std::int32_t severity : {6, 255, -1, INT32_MAX, INT32_MIN}) {
        TypeParam notification = this->notification();
        notification.severity = severity;
        const AlarmData alarm(notification);

        EXPECT_EQ(severity, alarm.severity);
        EXPECT_EQ(severity, alarm.originalSeverity);
    }
}

TYPED_TEST(AlarmDataFromNotificationTest, anyBytesAndAnyLengthAreTaken)
{
    const std::string text = "%s%n;\xff\xc3\n\x01" + std::string(1000000, 'a');
    TypeParam notification = this->notification();
    notification.dn = text.c_str();
    notification.additionalText = text.c_str();
    const AlarmData alarm(notification);

    EXPECT_EQ(text, alarm.dn);
    EXPECT_EQ(text, alarm.additionalText);
    EXPECT_EQ(text, alarm.originalAdditionalText);
}

// --- What the later structures add

class AlarmDataTest : public FmTest {
protected:
    AlarmDataTest() { middleware.clock.turnOn(monotonicNow); }
};

TEST_F(AlarmDataTest, version2HasItsTime)
{
    YaltOamSpiNotificationFmStruct_2 notification{};
    notification.dn = "ManagedElement=1";
    notification.eventTime = 1;
    const AlarmData alarm(notification);

    EXPECT_EQ(1u, alarm.eventTime);
    EXPECT_EQ(1u, alarm.originalEventTime);
}

TEST_F(AlarmDataTest, version4HasItsTime)
{
    YaltOamSpiNotificationFmStruct_4 notification{};
    notification.dn = "ManagedElement=1";
    notification.eventTime = UINT64_MAX;
    const AlarmData alarm(notification);

    EXPECT_EQ(UINT64_MAX, alarm.eventTime);
    EXPECT_EQ(UINT64_MAX, alarm.originalEventTime);
}

TEST_F(AlarmDataTest, version4HasItsInformationInTheOrderOfTheArray)
{
    const YaltOamSpiFmAdditionalInfoEntry entries[] = {{"b", "2"}, {"a", "1"}, {"b", "2"}, {"", ""}};
    YaltOamSpiNotificationFmStruct_4 notification{};
    notification.additionalInfo = {entries, 4};

    EXPECT_THAT(AlarmData(notification).getAdditionalInfo(),
                ElementsAre(std::pair("b", "2"), std::pair("a", "1"), std::pair("b", "2"), std::pair("", "")));
}

TEST_F(AlarmDataTest, nullNamesAndValuesAreEmpty)
{
    const YaltOamSpiFmAdditionalInfoEntry entries[] = {{nullptr, "1"}, {"a", nullptr}, {nullptr, nullptr}};
    YaltOamSpiNotificationFmStruct_4 notification{};
    notification.additionalInfo = {entries, 3};

    EXPECT_THAT(AlarmData(notification).getAdditionalInfo(),
                ElementsAre(std::pair("", "1"), std::pair("a", ""), std::pair("", "")));
}

TEST_F(AlarmDataTest, aCountOfZeroAddsNothing)
{
    const YaltOamSpiFmAdditionalInfoEntry entries[] = {{"a", "1"}};
    YaltOamSpiNotificationFmStruct_4 notification{};
    notification.additionalInfo = {entries, 0};

    EXPECT_THAT(AlarmData(notification).getAdditionalInfo(), IsEmpty());
}

TEST_F(AlarmDataTest, aNullArrayHasNoEntriesWhateverItsCount)
{
    YaltOamSpiNotificationFmStruct_4 notification{};
    notification.additionalInfo = {nullptr, 4294967295};

    EXPECT_THAT(AlarmData(notification).getAdditionalInfo(), IsEmpty());
}

// --- A value

TEST_F(AlarmDataTest, aNewOneIsUnknownAndZero)
{
    EXPECT_EQ("dn=\nmajorType=0\nminorType=0\noriginalAdditionalText=\nseverity=0\noriginalSeverity=0\neventTime=0\n"
              "originalEventTime=0\nclearEventTime=0\nhasConfiguredSeverity=0\nconfiguredSeverity=1\nseqNo=0\n"
              "originalSeqNo=0\nalarmId=0\nstateful=0\neventType=0\nprobableCause=0\nspecificProblem=Unknown alarm\n"
              "additionalText=\nadditionalTextForClear=",
              allFields(AlarmData()));
}

TEST_F(AlarmDataTest, aCopyHasAllFields)
{
    const AlarmData source = fullAlarm();
    AlarmData assigned;
    assigned = source;
    AlarmData given;
    given.assign(source);

    EXPECT_EQ(allFields(source), allFields(dataOf(source)));
    EXPECT_EQ(allFields(source), allFields(assigned));
    EXPECT_EQ(allFields(source), allFields(given));
}

TEST_F(AlarmDataTest, aCopyReplacesWhatWasThere)
{
    AlarmData alarm = fullAlarm();
    alarm = AlarmData();

    EXPECT_EQ(allFields(AlarmData()), allFields(alarm));
}

TEST_F(AlarmDataTest, assignedToItselfItStaysAsItIs)
{
    AlarmData alarm = fullAlarm();
    const AlarmData& same = alarm;
    alarm = same;

    EXPECT_EQ(allFields(fullAlarm()), allFields(alarm));
}

/// Shows other texts and information than it keeps.
class ShowingAlarm : public AlarmData {
public:
    using AlarmData::AlarmData;
    explicit ShowingAlarm(const AlarmData& data) : AlarmData(data) {}

    std::string getAdditionalText() const override { return "shown text"; }
    const std::string& getAdditionalTextForClear() const override { return shownForClear; }
    AdditionalInfoT getAdditionalInfo() const override { return {{"shown", "info"}}; }

private:
    const std::string shownForClear = "shown text for clear";
};

TEST_F(AlarmDataTest, aCopyHasTextAndInformationAsTheSourceShowsThem)
{
    const ShowingAlarm source(fullAlarm());
    AlarmData expected = fullAlarm();
    expected.additionalText = "shown text";
    expected.additionalInfo = {{"shown", "info"}};
    const AlarmData& base = source;
    AlarmData assigned;
    assigned = base;

    EXPECT_EQ(allFields(expected), allFields(dataOf(source)));
    EXPECT_EQ(allFields(expected), allFields(assigned));
}

// --- Comparisons

TEST_F(AlarmDataTest, dnMajorTypeAndMinorTypeAreTheIdentity)
{
    AlarmData other;
    other.dn = fullAlarm().dn;
    other.majorType = fullAlarm().majorType;
    other.minorType = fullAlarm().minorType;
    EXPECT_TRUE(fullAlarm() == other);
    EXPECT_FALSE(fullAlarm() != other);

    AlarmData otherDn = fullAlarm();
    otherDn.dn += " ";
    EXPECT_FALSE(fullAlarm() == otherDn);
    EXPECT_TRUE(fullAlarm() != otherDn);

    AlarmData otherMajorType = fullAlarm();
    ++otherMajorType.majorType;
    EXPECT_FALSE(fullAlarm() == otherMajorType);

    AlarmData otherMinorType = fullAlarm();
    ++otherMinorType.minorType;
    EXPECT_FALSE(fullAlarm() == otherMinorType);
}

TEST_F(AlarmDataTest, majorAndMinorTypeDoNotStandForEachOther)
{
    EXPECT_FALSE(anAlarm("ManagedElement=1", 1, 2) == anAlarm("ManagedElement=1", 2, 1));
}

TEST_F(AlarmDataTest, theDnIsComparedByteByByte)
{
    EXPECT_FALSE(anAlarm("ManagedElement=1") == anAlarm("managedelement=1"));
    EXPECT_FALSE(anAlarm("\xc3\xa4") == anAlarm("a\xcc\x88"));
    EXPECT_FALSE(anAlarm(std::string("a\0b", 3)) == anAlarm(std::string("a\0c", 3)));
    EXPECT_TRUE(anAlarm("\xff") == anAlarm("\xff"));
}

TEST_F(AlarmDataTest, textsAreComparedAsTheyAreKept)
{
    AlarmData other;
    other.additionalText = fullAlarm().additionalText;
    EXPECT_TRUE(fullAlarm().isAdditionalTextEqual(other));
    EXPECT_TRUE(ShowingAlarm(fullAlarm()).isAdditionalTextEqual(other));
    EXPECT_TRUE(other.isAdditionalTextEqual(ShowingAlarm(fullAlarm())));

    other.additionalText = "shown text";
    EXPECT_FALSE(fullAlarm().isAdditionalTextEqual(other));
    EXPECT_FALSE(ShowingAlarm(fullAlarm()).isAdditionalTextEqual(other));
}

AlarmData withInfo(const AdditionalInfoT& info)
{
    AlarmData alarm;
    alarm.setAdditionalInfo(info);
    return alarm;
}

bool isEqual(const AdditionalInfoT& one, const AdditionalInfoT& other)
{
    const bool answer = withInfo(one).isAdditionalInfoEqual(withInfo(other));
    EXPECT_EQ(answer, withInfo(other).isAdditionalInfoEqual(withInfo(one)));
    return answer;
}

TEST_F(AlarmDataTest, theOrderOfInformationDoesNotMatter)
{
    EXPECT_TRUE(isEqual({}, {}));
    EXPECT_TRUE(isEqual({{"b", "2"}, {"a", "1"}}, {{"a", "1"}, {"b", "2"}}));
    EXPECT_TRUE(isEqual({{"a", "2"}, {"a", "1"}, {"a", "2"}}, {{"a", "2"}, {"a", "2"}, {"a", "1"}}));
}

TEST_F(AlarmDataTest, namesValuesAndNumberOfInformationMatter)
{
    EXPECT_FALSE(isEqual({{"a", "1"}}, {{"a", "1"}, {"a", "1"}}));
    EXPECT_FALSE(isEqual({{"a", "1"}, {"a", "1"}, {"b", "2"}}, {{"a", "1"}, {"b", "2"}, {"b", "2"}}));
    EXPECT_FALSE(isEqual({{"a", "1"}}, {{"a", "2"}}));
    EXPECT_FALSE(isEqual({{"a", "1"}}, {{"b", "1"}}));
    EXPECT_FALSE(isEqual({{"a", "b"}}, {{"b", "a"}}));
    EXPECT_FALSE(isEqual({{"a", "1"}}, {}));
}

TEST_F(AlarmDataTest, informationIsComparedAsItIsShown)
{
    EXPECT_TRUE(ShowingAlarm(fullAlarm()).isAdditionalInfoEqual(withInfo({{"shown", "info"}})));
    EXPECT_TRUE(withInfo({{"shown", "info"}}).isAdditionalInfoEqual(ShowingAlarm(fullAlarm())));
    EXPECT_FALSE(ShowingAlarm(fullAlarm()).isAdditionalInfoEqual(fullAlarm()));
}

TEST_F(AlarmDataTest, comparingLeavesTheOrderOfInformation)
{
    const AlarmData alarm = withInfo({{"b", "2"}, {"a", "1"}});
    EXPECT_TRUE(alarm.isAdditionalInfoEqual(alarm));

    EXPECT_THAT(alarm.getAdditionalInfo(), ElementsAre(std::pair("b", "2"), std::pair("a", "1")));
}

TEST_F(AlarmDataTest, theSeverityIsComparedWithTheConfiguredOne)
{
    EXPECT_TRUE(fullAlarm().isSevEqualConfiguredSev(4));
    EXPECT_FALSE(fullAlarm().isSevEqualConfiguredSev(5));
    EXPECT_FALSE(fullAlarm().isSevEqualConfiguredSev(0));
}

// --- Setters

TEST_F(AlarmDataTest, informationIsAppendedOneByOne)
{
    AlarmData alarm;
    alarm.addAdditionalInfo("b", "2");
    alarm.addAdditionalInfo("a", "1");

    EXPECT_THAT(alarm.getAdditionalInfo(), ElementsAre(std::pair("b", "2"), std::pair("a", "1")));
}

TEST_F(AlarmDataTest, aContainerIsAppendedAListReplaces)
{
    const YaltOamSpiFmAdditionalInfoEntry entries[] = {{"b", "2"}, {nullptr, nullptr}};
    AlarmData alarm = withInfo({{"a", "1"}});
    alarm.setAdditionalInfo(YaltOamSpiFmAdditionalInfoContainer{entries, 2});
    EXPECT_THAT(alarm.getAdditionalInfo(), ElementsAre(std::pair("a", "1"), std::pair("b", "2"), std::pair("", "")));

    alarm.setAdditionalInfo(AdditionalInfoT{{"c", "3"}});
    EXPECT_THAT(alarm.getAdditionalInfo(), ElementsAre(std::pair("c", "3")));
}

TEST_F(AlarmDataTest, theInformationHandedOutIsACopy)
{
    const AlarmData alarm = withInfo({{"a", "1"}});
    alarm.getAdditionalInfo().clear();

    EXPECT_THAT(alarm.getAdditionalInfo(), ElementsAre(std::pair("a", "1")));
}

TEST_F(AlarmDataTest, textsAreSetApart)
{
    AlarmData alarm;
    alarm.setAdditionalText("Link down");
    alarm.setAdditionalTextForClear("Link up");

    EXPECT_EQ("Link down", alarm.getAdditionalText());
    EXPECT_EQ("Link up", alarm.getAdditionalTextForClear());
    EXPECT_EQ("", alarm.originalAdditionalText);
}

}  // namespace
}  // namespace ZorvFm
