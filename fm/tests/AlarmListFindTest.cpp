#include <list>
#include <string>

#include "AlarmListTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* matching = "trace 8 FM majorType and minorType match found. Using DN as regular expression...";

class AlarmListFindTest : public AlarmListTest {
protected:
    AlarmListFindTest() { middleware.journal.show({Topic::Trace}); }

    Alarm* add(const std::string& dn, std::uint32_t majorType = 1, std::uint32_t minorType = 2)
    {
        Alarm* alarm = list.createAlarm(anAlarm(dn, majorType, minorType));
        journal();
        return alarm;
    }

    std::list<Alarm*> find(const std::string& dn, std::uint32_t majorType = 1, std::uint32_t minorType = 2)
    {
        std::list<Alarm*> found;
        list.findAlarms(anAlarm(dn, majorType, minorType, "another text"), found);
        return found;
    }

    static std::string refused(const std::string& dn, const std::string& reason)
    {
        return "log 3 DnUtil::doRegexp, regcomp failed for DN: " + dn + " :" + reason;
    }
};

// --- One alarm

TEST_F(AlarmListFindTest, findAlarmKnowsTheWholeIdentityOnly)
{
    Alarm* alarm = add("ManagedElement=1,Port=4");
    add("ManagedElement=1,Port=4", 2, 1);

    EXPECT_EQ(alarm, list.findAlarm(anAlarm("ManagedElement=1,Port=4", 1, 2)));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("ManagedElement=1,Port=4", 1, 1)));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("ManagedElement=1,Port=4", 2, 2)));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("ManagedElement=1,Port=.", 1, 2)));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("Port=4", 1, 2)));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmListFindTest, findAlarmAnswersTheFirstTwin)
{
    Alarm* first = add("A");
    add("A");

    EXPECT_EQ(first, list.findAlarm(anAlarm("A", 1, 2)));
}

TEST_F(AlarmListFindTest, findAlarmKnowsAnyBytes)
{
    const std::string dn("\xff\0;(", 4);
    Alarm* alarm = add(dn);

    EXPECT_EQ(alarm, list.findAlarm(anAlarm(dn, 1, 2)));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("\xff", 1, 2)));
}

// --- By identity

TEST_F(AlarmListFindTest, equalAlarmsAreFoundInOrder)
{
    Alarm* first = add("A");
    add("AB");
    Alarm* second = add("A");
    add("A", 2, 1);

    EXPECT_THAT(find("A"), ElementsAre(first, second));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Found 2 alarms"));
}

TEST_F(AlarmListFindTest, aDnThatIsKnownIsNoPattern)
{
    Alarm* alarm = add("A(");
    add("A((");
    Alarm* any = add(".*");

    EXPECT_THAT(find("A("), ElementsAre(alarm));
    EXPECT_THAT(find(".*"), ElementsAre(any));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Found 1 alarms", "trace 8 FM Found 1 alarms"));
}

TEST_F(AlarmListFindTest, whatIsFoundIsAppended)
{
    Alarm* alarm = add("A");
    std::list<Alarm*> found = {nullptr};
    list.findAlarms(anAlarm("A", 1, 2), found);
    list.findAlarms(anAlarm("^A", 1, 2), found);

    EXPECT_THAT(found, ElementsAre(nullptr, alarm, alarm));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Found 1 alarms", matching, "trace 8 FM Found 1 alarms"));
}

// --- By pattern

TEST_F(AlarmListFindTest, alarmsOfTheTypeAreMatchedInOrder)
{
    Alarm* first = add("ManagedElement=1,Slot=2,Port=4");
    add("ManagedElement=1,Slot=3,Port=4");
    add("ManagedElement=1,Slot=2,Port=5", 2, 1);
    Alarm* second = add("ManagedElement=1,Slot=2,Port=1");

    EXPECT_THAT(find("^ManagedElement=1,Slot=2,Port=[0-9]+$"), ElementsAre(first, second));
    EXPECT_THAT(journal(), ElementsAre(matching, matching, matching, "trace 8 FM Found 2 alarms"));
}

TEST_F(AlarmListFindTest, aPatternNeedNotCoverTheDn)
{
    Alarm* first = add("ManagedElement=1,Port=11");
    Alarm* second = add("ManagedElement=1,Port=1,Link=2");

    EXPECT_THAT(find("ManagedElement=1,Port=1"), ElementsAre(first, second));
    EXPECT_THAT(find("Port=1,"), ElementsAre(second));
    EXPECT_THAT(find(""), ElementsAre(first, second));
}

TEST_F(AlarmListFindTest, theSyntaxIsExtended)
{
    Alarm* first = add("Port=1");
    Alarm* second = add("Port=22");
    add("Port=333");

    EXPECT_THAT(find("^Port=(1|2+)$"), ElementsAre(first, second));
    EXPECT_THAT(find("^Port=[[:digit:]]{1,2}$"), ElementsAre(first, second));
}

TEST_F(AlarmListFindTest, caseMatters)
{
    add("Port=1");

    EXPECT_THAT(find("port"), IsEmpty());
    EXPECT_THAT(journal(), ElementsAre(matching, "trace 8 FM Found 0 alarms"));
}

TEST_F(AlarmListFindTest, withoutAlarmsOfTheTypeNoPatternIsTried)
{
    add("A", 2, 1);

    EXPECT_THAT(find("a(b"), IsEmpty());
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Found 0 alarms"));
}

// --- Patterns that mean harm

TEST_F(AlarmListFindTest, anInvalidPatternIsToldForEachAlarmOfTheType)
{
    add("A");
    add("B");
    add("C", 2, 1);

    EXPECT_THAT(find("a(b"), IsEmpty());
    EXPECT_THAT(journal(), ElementsAre(matching, refused("a(b", "missing ): a(b"), matching,
                                       refused("a(b", "missing ): a(b"), "trace 8 FM Found 0 alarms"));
}

TEST_F(AlarmListFindTest, hugeRepetitionsAndNestingAreRefused)
{
    add("A");
    const std::string nested = std::string(100000, '(') + "a" + std::string(100000, ')');

    EXPECT_THAT(find("a{1,32767}"), IsEmpty());
    EXPECT_THAT(find(nested), IsEmpty());
    EXPECT_THAT(journal(),
                ElementsAre(matching, refused("a{1,32767}", "pattern too large"), "trace 8 FM Found 0 alarms", matching,
                            refused(nested, "pattern too large"), "trace 8 FM Found 0 alarms"));
}

TEST_F(AlarmListFindTest, nestedRepetitionsMatchLongDnsInLinearTime)
{
    Alarm* alarm = add(std::string(100000, 'a'));

    EXPECT_THAT(find("^(a+)+b$"), IsEmpty());
    EXPECT_THAT(find("^(a+)+$"), ElementsAre(alarm));
}

TEST_F(AlarmListFindTest, aPatternIsNoFormatAndMayHoldAnyBytes)
{
    add("A");
    Alarm* alarm = add("B\xff");

    EXPECT_THAT(find("\xff"), ElementsAre(alarm));
    journal();
    EXPECT_THAT(find("%s%n["), IsEmpty());
    EXPECT_THAT(journal(), ElementsAre(matching, refused("%s%n[", "missing ]: ["), matching,
                                       refused("%s%n[", "missing ]: ["), "trace 8 FM Found 0 alarms"));
}

}  // namespace
}  // namespace ZorvFm
