#include "AlarmList.hpp"

#include <atomic>
#include <thread>

#include "AlarmListTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

// --- New alarms

TEST_F(AlarmListTest, createsAlarmsInMemoryOnly)
{
    middleware.journal.show({Topic::Trace});
    AlarmData expected = fullAlarm();
    expected.alarmId = 1;
    expected.originalSeqNo = 0;
    expected.originalAdditionalText = "Link down again";
    expected.originalSeverity = YALT_FM_SEVERITY_MAJOR;
    expected.originalEventTime = expected.eventTime;
    Alarm* alarm = list.createAlarm(fullAlarm());

    EXPECT_EQ(allFields(expected), allFields(*alarm));
    EXPECT_EQ(AlarmState::NEW, alarm->getState().getState());
    EXPECT_EQ(0, alarm->itemName.length);
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Added alarm to active alarm list: '" + expected.toString() +
                                       "; state=0', listSize :1"));
}

TEST_F(AlarmListTest, tracesTheLengthOfTheListAfterTheAlarm)
{
    middleware.journal.show({Topic::Trace});
    list.createAlarm(anAlarm("A"));
    journal();
    list.createAlarm(anAlarm("B"));

    EXPECT_THAT(journal(), ElementsAre(testing::EndsWith("; state=0', listSize :2")));
}

TEST_F(AlarmListTest, keepsTheOrderOfCreation)
{
    Alarm* second = list.createAlarm(anAlarm("B"));
    Alarm* first = list.createAlarm(anAlarm("A"));
    std::list<Alarm*> copy = {nullptr};
    list.getAlarms(copy);

    EXPECT_THAT(copy, ElementsAre(second, first));
}

TEST_F(AlarmListTest, togglesAsTheConfigurationSays)
{
    config.alarmToggleWindowSize = 60000000000;
    Alarm* alarm = list.createAlarm(anAlarm("A"));
    alarm->raise();
    alarm->tick(0);

    EXPECT_TRUE(alarm->isToggling());
}

// --- Ids

TEST_F(AlarmListTest, idsCountFromOne)
{
    EXPECT_EQ(1u, list.createAlarm(anAlarm("A"))->alarmId);
    EXPECT_EQ(2u, list.createAlarm(anAlarm("B"))->alarmId);
    EXPECT_EQ(3u, list.createAlarm(anAlarm("A"))->alarmId);
}

TEST_F(AlarmListTest, idsAreNotReused)
{
    list.deleteAlarm(*list.createAlarm(anAlarm("A")));

    EXPECT_EQ(2u, list.createAlarm(anAlarm("A"))->alarmId);
}

TEST_F(AlarmListTest, anAlarmKeepsItsIdAndTheNextGetsALargerOne)
{
    Alarm alarm(config);
    alarm.alarmId = 17;
    list.assignAlarmId(alarm);
    EXPECT_EQ(17u, alarm.alarmId);
    EXPECT_EQ(18u, list.createAlarm(anAlarm("A"))->alarmId);

    alarm.alarmId = 5;
    list.assignAlarmId(alarm);
    EXPECT_EQ(5u, alarm.alarmId);
    EXPECT_EQ(19u, list.createAlarm(anAlarm("A"))->alarmId);
}

TEST_F(AlarmListTest, idsAreComparedAsLargeNumbers)
{
    Alarm alarm(config);
    alarm.alarmId = 1;
    list.assignAlarmId(alarm);
    alarm.alarmId = UINT64_MAX - 1;
    list.assignAlarmId(alarm);

    EXPECT_EQ(UINT64_MAX, list.createAlarm(anAlarm("A"))->alarmId);
}

// --- Saving

TEST_F(AlarmListTest, pushesOnceAndReplacesAfterThat)
{
    middleware.journal.show({Topic::Trace});
    Alarm* alarm = list.createAlarm(anAlarm("A"));
    journal();

    list.saveAlarm(*alarm);
    EXPECT_THAT(journal(), ElementsAre("listPushBack FmActiveAlarmList2 -> 0", "trace 8 FM listPushBack retval=0 "));
    EXPECT_THAT(items(), ElementsAre(alarm->serialize_v2()));
    EXPECT_STREQ("item1", alarm->itemName.value);
    EXPECT_EQ(6, alarm->itemName.length);

    alarm->raise();
    list.saveAlarm(*alarm);
    EXPECT_THAT(journal(),
                ElementsAre("listReplaceItem FmActiveAlarmList2 item1 -> 0", "trace 8 FM listReplaceItem retval=0 "));
    EXPECT_THAT(items(), ElementsAre(alarm->serialize_v2()));
}

TEST_F(AlarmListTest, aFailedPushIsTriedAgainAtTheNextSave)
{
    middleware.journal.show({Topic::Trace});
    Alarm* alarm = list.createAlarm(anAlarm("A"));
    journal();
    middleware.lists.failNext("listPushBack", -10);

    list.saveAlarm(*alarm);
    EXPECT_THAT(journal(), ElementsAre("listPushBack FmActiveAlarmList2 -> -10", "trace 8 FM listPushBack retval=-10 ",
                                       "log 3 Failed to push back alarm to replicated list! retval=-10 '" +
                                           alarm->toString() + "'"));
    EXPECT_EQ(0, alarm->itemName.length);
    EXPECT_EQ(alarm, list.findAlarm(anAlarm("A")));

    list.saveAlarm(*alarm);
    EXPECT_THAT(journal(), ElementsAre("listPushBack FmActiveAlarmList2 -> 0", "trace 8 FM listPushBack retval=0 "));
    EXPECT_THAT(items(), ElementsAre(alarm->serialize_v2()));
}

TEST_F(AlarmListTest, aFailedReplaceIsTriedAgainAtTheNextSave)
{
    middleware.journal.show({Topic::Trace});
    Alarm* alarm = savedAlarm(anAlarm("A"));
    const std::string before = alarm->serialize_v2();
    alarm->raise();
    middleware.lists.failNext("listReplaceItem", -1);

    list.saveAlarm(*alarm);
    EXPECT_THAT(journal(),
                ElementsAre("listReplaceItem FmActiveAlarmList2 item1 -> -1", "trace 8 FM listReplaceItem retval=-1 ",
                            "log 3 Failed to save alarm in replicated list! retval=-1 '" + alarm->toString() + "'"));
    EXPECT_THAT(items(), ElementsAre(before));
    EXPECT_STREQ("item1", alarm->itemName.value);

    list.saveAlarm(*alarm);
    EXPECT_THAT(items(), ElementsAre(alarm->serialize_v2()));
}

TEST_F(AlarmListTest, anAlarmThatIsNotInMemoryIsSavedToo)
{
    Alarm alarm = alarmInState(AlarmState::ACTIVE);
    list.saveAlarm(alarm);

    EXPECT_THAT(items(), ElementsAre(alarm.serialize_v2()));
    EXPECT_EQ(nullptr, list.findAlarm(alarm));
    EXPECT_EQ(0U, list.getSummary().total);
}

TEST_F(AlarmListTest, anotherListIsSavedToWhenNamed)
{
    ReplicatedList other("OtherList");
    other.open();
    other.create(1000);
    Alarm* alarm = list.createAlarm(anAlarm("A"));
    journal();
    list.saveAlarm(*alarm, other);
    list.saveAlarm(*alarm, other);

    EXPECT_THAT(journal(), ElementsAre("listPushBack OtherList -> 0", "listReplaceItem OtherList item1 -> 0"));
    EXPECT_THAT(middleware.lists.items("OtherList"), ElementsAre(alarm->serialize_v2()));
}

TEST_F(AlarmListTest, anAlarmWithoutIdIsNotSaved)
{
    Alarm alarm(config);

    EXPECT_DEATH(list.saveAlarm(alarm), "Assertion `alarm\\.alarmId>0' failed");
}

TEST_F(AlarmListTest, textsAreNoFormats)
{
    Alarm* alarm = list.createAlarm(anAlarm("%s%n", 32473, 7, "%s"));
    middleware.lists.failNext("listPushBack", -1);
    journal();
    list.saveAlarm(*alarm);

    EXPECT_THAT(journal(), ElementsAre("listPushBack FmActiveAlarmList2 -> -1",
                                       "log 3 Failed to push back alarm to replicated list! retval=-1 '" +
                                           alarm->toString() + "'"));
}

// --- The length of what is stored

TEST_F(AlarmListTest, aTextOf999CharactersIsStoredWhole)
{
    Alarm* alarm = savedAlarm(alarmOfStoredLength(999));

    EXPECT_THAT(items(), ElementsAre(alarm->serialize_v2()));
    EXPECT_EQ(999u, items().front().size());
}

TEST_F(AlarmListTest, aLongerTextIsCutAt999Characters)
{
    Alarm* alarm = savedAlarm(alarmOfStoredLength(1000));
    const std::string expected = alarm->serialize_v2().substr(0, 999);

    EXPECT_THAT(middleware.lists.bytes("FmActiveAlarmList2"), ElementsAre(expected + std::string(1, '\0')));

    alarm->setAdditionalText(std::string(100000, 'x'));
    list.saveAlarm(*alarm);
    EXPECT_THAT(middleware.lists.bytes("FmActiveAlarmList2"),
                ElementsAre(alarm->serialize_v2().substr(0, 999) + std::string(1, '\0')));
}

TEST_F(AlarmListTest, aShorterTextLeavesNothingOfTheLongerOne)
{
    Alarm* alarm = savedAlarm(anAlarm("A", 32473, 7, std::string(300, 'x')));
    alarm->setAdditionalText("");
    list.saveAlarm(*alarm);
    std::string expected = alarm->serialize_v2();
    expected.resize(1000);

    EXPECT_THAT(middleware.lists.bytes("FmActiveAlarmList2"), ElementsAre(expected));
}

// --- Deleting

TEST_F(AlarmListTest, deletesFromMemoryAndStore)
{
    middleware.journal.show({Topic::Trace});
    Alarm* alarm = savedAlarm(anAlarm("A"));
    savedAlarm(anAlarm("B"));
    const std::string text = alarm->toString();

    EXPECT_EQ(0, list.deleteAlarm(*alarm));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> eraseAlarm alarms, size: 2, " + text,
                                       "listEraseItem FmActiveAlarmList2 item1 -> 0"));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("A")));
    EXPECT_THAT(middleware.lists.names("FmActiveAlarmList2"), ElementsAre("item2"));
}

TEST_F(AlarmListTest, aFailedEraseIsToldAndTheAlarmIsGone)
{
    Alarm* alarm = savedAlarm(anAlarm("A"));
    middleware.lists.failNext("listEraseItem", -1);

    EXPECT_EQ(-1, list.deleteAlarm(*alarm));
    EXPECT_THAT(journal(),
                ElementsAre("listEraseItem FmActiveAlarmList2 item1 -> -1", "log 4 Retval from listEraseItem: -1"));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("A")));
    EXPECT_EQ(1u, items().size());
}

TEST_F(AlarmListTest, anAlarmThatWasNeverStoredIsErasedByItsEmptyName)
{
    EXPECT_EQ(-2, list.deleteAlarm(*list.createAlarm(anAlarm("A"))));
    EXPECT_THAT(journal(),
                ElementsAre("listEraseItem FmActiveAlarmList2  -> -2", "log 4 Retval from listEraseItem: -2"));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("A")));
}

TEST_F(AlarmListTest, anUnknownAlarmLosesItsItem)
{
    Alarm alarm = alarmInState(AlarmState::ACTIVE);
    list.saveAlarm(alarm);
    journal();

    EXPECT_EQ(0, list.deleteAlarm(alarm));
    EXPECT_THAT(journal(), ElementsAre("listEraseItem FmActiveAlarmList2 item1 -> 0",
                                       "log 3 Alarm not found: " + alarm.toString()));
    EXPECT_THAT(items(), IsEmpty());
}

TEST_F(AlarmListTest, ofTwinsTheVeryObjectIsDeleted)
{
    Alarm* first = savedAlarm(anAlarm("A", 1, 1, "first"));
    Alarm* second = savedAlarm(anAlarm("A", 1, 1, "second"));

    EXPECT_EQ(0, list.deleteAlarm(*second));
    EXPECT_EQ(first, list.findAlarm(anAlarm("A", 1, 1)));
    EXPECT_EQ("first", first->additionalText);
    EXPECT_THAT(middleware.lists.names("FmActiveAlarmList2"), ElementsAre("item1"));
}

TEST_F(AlarmListTest, anEqualAlarmDeletesTheFirstTwin)
{
    savedAlarm(anAlarm("A", 1, 1, "first"));
    Alarm* second = savedAlarm(anAlarm("A", 1, 1, "second"));
    const Alarm equal = alarmInState(AlarmState::NEW, anAlarm("A", 1, 1));

    EXPECT_EQ(-2, list.deleteAlarm(equal));
    EXPECT_EQ(second, list.findAlarm(anAlarm("A", 1, 1)));
    EXPECT_EQ(2u, items().size());
}

// --- The northbound view

TEST_F(AlarmListTest, visibleAlarmsAreShownInOrder)
{
    middleware.journal.show({Topic::Trace});
    AlarmData hidden;
    hidden.dn = "hidden";
    list.createAlarm(hidden);
    Alarm* toggling = activeAlarm(anAlarm("B"), true);
    Alarm* active = activeAlarm(anAlarm("A"));
    journal();
    std::vector<AlarmData> alarms(3);
    list.getNbiAlarms(alarms);

    ASSERT_EQ(2u, alarms.size());
    const AlarmData expected = dataOf(*toggling);
    EXPECT_EQ(" The alarm is currently toggling.", expected.additionalText);
    EXPECT_EQ(allFields(expected), allFields(alarms[0]));
    EXPECT_EQ(allFields(*active), allFields(alarms[1]));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Get NBI alarms, size: 2, suppression : off"));
}

TEST_F(AlarmListTest, theViewFollowsTheFilterState)
{
    config.transientCeaseAlarmFilterTime = 1;
    Alarm* alarm = activeAlarm(anAlarm("A"));
    alarm->clear();
    EXPECT_EQ(1u, visibleAlarms().size());

    alarm->tick(UINT64_MAX);
    EXPECT_THAT(visibleAlarms(), IsEmpty());
}

TEST_F(AlarmListTest, theViewTracesSuppression)
{
    middleware.journal.show({Topic::Trace});
    std::vector<AlarmData> alarms;
    list.setSuppression(true);
    list.getNbiAlarms(alarms);
    list.setSuppression(false);
    list.getNbiAlarms(alarms);

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM Get NBI alarms, size: 0, suppression : on",
                                       "trace 8 FM Get NBI alarms, size: 0, suppression : off"));
}

TEST_F(AlarmListTest, theViewIsReachedThroughTheClass)
{
    activeAlarm(anAlarm("A"));
    std::vector<AlarmData> alarms;
    NbiAlarmList::getAlarms(alarms);

    ASSERT_EQ(1u, alarms.size());
    EXPECT_EQ("A", alarms[0].dn);
}

TEST(NbiAlarmListTest, withoutAListTheResultStaysAsItIs)
{
    std::vector<AlarmData> alarms = {fullAlarm()};
    NbiAlarmList::getAlarms(alarms);
    EXPECT_EQ(1u, alarms.size());

    const FmConfig config;
    {
        AlarmList list(config);
        NbiAlarmList::getAlarms(alarms);
        EXPECT_THAT(alarms, IsEmpty());
    }
    alarms.emplace_back();
    NbiAlarmList::getAlarms(alarms);
    EXPECT_EQ(1u, alarms.size());
}

// --- What the handler asks besides

TEST_F(AlarmListTest, changingAlarmsAreThoseSavedSo)
{
    Alarm* alarm = list.createAlarm(anAlarm("A"));
    list.createAlarm(anAlarm("B"));
    std::vector<Alarm*> changing = {nullptr};
    list.getChangingAlarms(changing);
    EXPECT_THAT(changing, IsEmpty());

    alarm->raise();
    list.saveAlarm(*alarm);
    list.getChangingAlarms(changing);
    EXPECT_THAT(changing, ElementsAre(alarm));
}

TEST_F(AlarmListTest, theSummaryCountsVisibleAlarms)
{
    AlarmData critical = anAlarm("B");
    critical.severity = YALT_FM_SEVERITY_CRITICAL;
    activeAlarm(critical);
    activeAlarm(anAlarm("A"));
    list.createAlarm(anAlarm("C"));
    const AlarmSummary summary = list.getSummary();

    EXPECT_EQ(2u, summary.total);
    EXPECT_EQ(1u, summary.critical);
    EXPECT_EQ(1u, summary.major);
    EXPECT_EQ(0u, summary.minor);
    EXPECT_EQ(0u, summary.warning);
}

TEST_F(AlarmListTest, invisibleAlarmsAreTraced)
{
    const std::string first = list.createAlarm(anAlarm("A"))->toString();
    activeAlarm(anAlarm("B"));
    const std::string second = list.createAlarm(anAlarm("C"))->toString();
    middleware.journal.show({Topic::Trace});
    journal();
    list.traceInvisibleAlarms();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM Alarm not visible :" + first, "trace 8 FM Alarm not visible :" + second));
}

// --- Threads

TEST_F(AlarmListTest, whoHoldsTheListMayUseIt)
{
    Alarm* alarm = savedAlarm(anAlarm("A"));
    const AlarmList::Lock lock(list, *alarm);
    list.saveAlarm(*alarm);

    EXPECT_EQ(alarm, list.findAlarm(anAlarm("A")));
    EXPECT_EQ(0, list.deleteAlarm(*alarm));
}

TEST_F(AlarmListTest, readersMayLookWhileAlarmsComeAndGo)
{
    middleware.journal.showOnly({});
    std::atomic<bool> done{false};
    std::thread reader([&] {
        while (!done) {
            for (const AlarmData& alarm : visibleAlarms()) {
                EXPECT_EQ("A", alarm.dn);
            }
            for (const AlarmData& alarm : sharedAlarms()) {
                EXPECT_EQ("A", alarm.dn);
            }
        }
    });
    for (int i = 0; i < 200; ++i) {
        Alarm* alarm = list.createAlarm(anAlarm("A"));
        {
            const AlarmList::Lock lock(list, *alarm);
            alarm->raise();
            alarm->tick(0);
        }
        list.saveAlarm(*alarm);
        list.deleteAlarm(*alarm);
    }
    done = true;
    reader.join();

    EXPECT_THAT(visibleAlarms(), IsEmpty());
}

}  // namespace
}  // namespace ZorvFm
