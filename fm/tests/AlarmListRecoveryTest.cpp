#include <list>
#include <string>

#include "AlarmListTest.hpp"
#include "StoredFields.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

constexpr const char* listName = "FmActiveAlarmList2";

class AlarmListRecoveryTest : public FmTest {
protected:
    /// Puts the alarm into the store as an earlier life of the list did.
    std::string plant(const AlarmData& data, int state = AlarmState::ACTIVE)
    {
        std::string text = alarmInState(state, data).serialize_v2();
        middleware.lists.plant(listName, text);
        return text;
    }

    static AlarmData withId(const std::string& dn, std::uint64_t alarmId)
    {
        AlarmData data = anAlarm(dn);
        data.alarmId = alarmId;
        return data;
    }

    std::vector<const Alarm*> alarms()
    {
        std::list<Alarm*> all;
        list.getAlarms(all);
        return {all.begin(), all.end()};
    }

    /// Every iteration that was opened was closed, and by one call.
    void expectIterationsClosed(unsigned count)
    {
        EXPECT_EQ(count, middleware.lists.opened());
        EXPECT_EQ(count, middleware.lists.calls("listGetFinalize"));
    }

    FmConfig config;
    AlarmList list{config};
};

// --- Whole journals

TEST_F(AlarmListRecoveryTest, onAFreshNode)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});
    list.initialize();

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Try to get interface ZorvMwSpiReplicatedList",
                                       "getInterface - ZorvMwSpiReplicatedList 1 -> 0", "trace 8 FM  << ",
                                       "listCreate FmActiveAlarmList2 1000 -> 0", "listIsEmpty FmActiveAlarmList -> -2",
                                       "listGetFrontRef FmActiveAlarmList2 -> 0", "trace 8 FM listGetFrontRef, 0",
                                       "listGetFinalize FmActiveAlarmList2 -> 0",
                                       "trace 8 FM Response from listGetFinalize of list FmActiveAlarmList2: 0",
                                       "log 6 Active Alarm List recovered, 0"));
    EXPECT_THAT(contentsOf(list), IsEmpty());
}

TEST_F(AlarmListRecoveryTest, afterARestart)
{
    plant(withId("B", 4));
    plant(withId("A", 2));
    middleware.journal.show({Topic::Trace});
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> Try to get interface ZorvMwSpiReplicatedList", "trace 8 FM  << ",
                            "listCreate FmActiveAlarmList2 1000 -> -3", "listIsEmpty FmActiveAlarmList -> -2",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "trace 8 FM listGetFrontRef, 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> 0", "trace 8 FM listGetNextItemFront, 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> 0", "trace 8 FM listGetNextItemFront, 0",
                            "listGetFinalize FmActiveAlarmList2 -> 0",
                            "trace 8 FM Response from listGetFinalize of list FmActiveAlarmList2: 0",
                            "log 6 Active Alarm List recovered, 2"));
    EXPECT_THAT(contentsOf(list), ElementsAre("B 4", "A 2"));
}

// --- What comes back

TEST_F(AlarmListRecoveryTest, alarmsComeBackWithTheirStateAndTheirItem)
{
    AlarmData expected = fullAlarm();
    expected.hasConfiguredSeverity = false;
    expected.configuredSeverity = 1;
    for (int state = AlarmState::NEW; state <= AlarmState::CEASED; ++state) {
        plant(fullAlarm(), state);
    }
    list.initialize();

    ASSERT_EQ(7u, alarms().size());
    for (int state = AlarmState::NEW; state <= AlarmState::CEASED; ++state) {
        const Alarm& alarm = *alarms()[static_cast<std::size_t>(state)];
        EXPECT_EQ(state, alarm.getState().getState());
        EXPECT_EQ("item" + std::to_string(state + 1), alarm.itemName.value);
        AlarmData shown = expected;
        shown.additionalText += state == 3 || state == 4 ? " The alarm is currently toggling." : "";
        EXPECT_EQ(allFields(shown), allFields(alarm));
    }
    EXPECT_EQ(4u, list.getSummary().total);
}

TEST_F(AlarmListRecoveryTest, aRecoveredAlarmIsReplacedAtItsNextSave)
{
    plant(withId("A", 4));
    list.initialize();
    Alarm* alarm = list.findAlarm(anAlarm("A"));
    alarm->clear();
    journal();
    list.saveAlarm(*alarm);

    EXPECT_THAT(journal(), ElementsAre("listReplaceItem FmActiveAlarmList2 item1 -> 0"));
    EXPECT_THAT(middleware.lists.items(listName), ElementsAre(alarm->serialize_v2()));
}

TEST_F(AlarmListRecoveryTest, pendingStatesCompleteAtTheFirstTick)
{
    config.transientCeaseAlarmFilterTime = UINT64_MAX / 2;
    plant(withId("A", 4), AlarmState::CEASE_PENDING);
    list.initialize();
    std::vector<Alarm*> changing;
    list.getChangingAlarms(changing);

    ASSERT_EQ(1u, changing.size());
    EXPECT_EQ(ALARM_CLEARED, changing.front()->tick(0));
}

TEST_F(AlarmListRecoveryTest, newAlarmsContinueAboveTheHighestId)
{
    plant(withId("B", 4));
    plant(withId("C", 17));
    plant(withId("A", 2));
    list.initialize();

    EXPECT_EQ(18u, list.createAlarm(anAlarm("D"))->alarmId);
    EXPECT_THAT(contentsOf(list), ElementsAre("B 4", "C 17", "A 2", "D 18"));
}

TEST_F(AlarmListRecoveryTest, twinsComeBackBoth)
{
    plant(withId("A", 1));
    plant(withId("A", 2));
    list.initialize();

    EXPECT_THAT(contentsOf(list), ElementsAre("A 1", "A 2"));
    EXPECT_EQ(1u, list.findAlarm(anAlarm("A"))->alarmId);
}

TEST_F(AlarmListRecoveryTest, whatWasInMemoryIsForgottenAndReadAgain)
{
    list.initialize();
    list.saveAlarm(*list.createAlarm(anAlarm("A")));
    list.createAlarm(anAlarm("never saved"));
    list.initialize();

    EXPECT_THAT(contentsOf(list), ElementsAre("A 1"));
    EXPECT_EQ(nullptr, list.findAlarm(anAlarm("never saved")));
    EXPECT_EQ(3u, list.createAlarm(anAlarm("B"))->alarmId);
    EXPECT_EQ(0u, list.getSummary().total);
}

// --- Damaged items

TEST_F(AlarmListRecoveryTest, aDamagedItemIsAnAlarmWithWhatCouldBeRead)
{
    const std::string damaged = replaced(plant(withId("A", 4)), 7, "x");
    middleware.lists.plant(listName, damaged);
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> -3", "listIsEmpty FmActiveAlarmList -> -2",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "listGetNextItemFront FmActiveAlarmList2 -> 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> 0",
                            "log 3 Failed to deserialize alarm: Failed to retrieve Sequence number, data :" + damaged,
                            "listGetFinalize FmActiveAlarmList2 -> 0", "log 6 Active Alarm List recovered, 2"));
    AlarmData expected;
    for (std::size_t i = 0; i < 7; ++i) {
        fieldsOfFormat2()[i].take(expected, withId("A", 4));
    }
    expected.stateful = true;
    expected.alarmId = 5;
    ASSERT_EQ(2u, alarms().size());
    EXPECT_EQ(allFields(expected), allFields(*alarms()[1]));
    EXPECT_EQ(AlarmState::NEW, alarms()[1]->getState().getState());
}

TEST_F(AlarmListRecoveryTest, alarmsThatLostTheirIdGetFreeOnesInOrder)
{
    middleware.lists.plant(listName, "");
    plant(withId("A", 0));
    plant(withId("B", 17));
    middleware.lists.plant(listName, ";;;");
    list.initialize();

    EXPECT_THAT(contentsOf(list), ElementsAre(" 18", "A 19", "B 17", " 20"));
    EXPECT_EQ(21u, list.createAlarm(anAlarm("C"))->alarmId);
}

TEST_F(AlarmListRecoveryTest, aDamagedAlarmCanBeSavedAndDeleted)
{
    middleware.lists.plant(listName, "x");
    list.initialize();
    Alarm* alarm = list.findAlarm(*alarms().front());
    journal();
    list.saveAlarm(*alarm);
    list.deleteAlarm(*alarm);

    EXPECT_THAT(journal(), ElementsAre("listReplaceItem FmActiveAlarmList2 item1 -> 0",
                                       "listEraseItem FmActiveAlarmList2 item1 -> 0"));
    EXPECT_THAT(contentsOf(list), IsEmpty());
}

TEST_F(AlarmListRecoveryTest, anItemWithoutAFinalZeroIsReadToItsEnd)
{
    middleware.lists.plant(listName, std::string(1000, 'x'));
    list.initialize();

    EXPECT_THAT(journal(),
                testing::Contains("log 3 Failed to deserialize alarm: Out of range, data :" + std::string(1000, 'x')));
    EXPECT_EQ(1u, alarms().size());
}

TEST_F(AlarmListRecoveryTest, aCutItemIsToldAndKeepsTheFieldsBeforeTheCut)
{
    AlarmData data = withId("A", 4);
    data.additionalText = std::string(2000, 'x');
    const std::string cut = alarmInState(AlarmState::ACTIVE, data).serialize_v2().substr(0, 999);
    middleware.lists.plant(listName, cut);
    list.initialize();

    EXPECT_THAT(journal(), testing::Contains("log 3 Failed to deserialize alarm: Out of range, data :" + cut));
    ASSERT_EQ(1u, alarms().size());
    const Alarm& alarm = *alarms().front();
    EXPECT_EQ("A", alarm.dn);
    EXPECT_EQ(std::string(alarm.additionalText.size(), 'x'), alarm.additionalText);
    EXPECT_LT(600u, alarm.additionalText.size());
    EXPECT_EQ(0, alarm.severity);
    EXPECT_EQ(1u, alarm.alarmId);
}

TEST_F(AlarmListRecoveryTest, aCutThroughThePairsKeepsTheAlarm)
{
    AlarmData data = withId("A", 4);
    data.setAdditionalInfo(AdditionalInfoT{{"name", "value"}, {std::string(1000, 'x'), ""}});
    const std::string cut = alarmInState(AlarmState::ACTIVE, data).serialize_v2().substr(0, 999);
    middleware.lists.plant(listName, cut);
    list.initialize();

    EXPECT_THAT(journal(), testing::Contains("log 3 Failed to deserialize alarm: Out of range, data :" + cut));
    EXPECT_THAT(contentsOf(list), ElementsAre("A 4"));
    EXPECT_THAT(alarms().front()->getAdditionalInfo(), ElementsAre(std::pair("name", "value")));
    EXPECT_TRUE(alarms().front()->isVisibleInNbi());
}

// --- A failing service

TEST_F(AlarmListRecoveryTest, aListThatCannotBeCreatedIsTold)
{
    middleware.lists.failNext("listCreate", -10);
    list.initialize();
    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> -10",
                            "log 3 Replicated List FmActiveAlarmList2 listCreate reports no resources ( -10 )",
                            "listIsEmpty FmActiveAlarmList -> -2", "listGetFrontRef FmActiveAlarmList2 -> -2",
                            "log 6 Active Alarm List recovered, 0", "log 4 Failed to copy Active AlarmData List"));

    middleware.lists.failNext("listCreate", -1);
    list.initialize();
    EXPECT_THAT(journal(),
                ElementsAre("listCreate FmActiveAlarmList2 1000 -> -1",
                            "log 3 Replicated List FmActiveAlarmList2 listCreate failed: -1",
                            "listIsEmpty FmActiveAlarmList -> -2", "listGetFrontRef FmActiveAlarmList2 -> -2",
                            "log 6 Active Alarm List recovered, 0", "log 4 Failed to copy Active AlarmData List"));
    expectIterationsClosed(0);
}

TEST_F(AlarmListRecoveryTest, otherFailuresOfTheCreationAreToldWithTheirCode)
{
    for (const int code : {-2, -4, 1}) {
        middleware.lists.failNext("listCreate", code);
        list.initialize();
        EXPECT_THAT(journal(), testing::Contains("log 3 Replicated List FmActiveAlarmList2 listCreate failed: " +
                                                 std::to_string(code)));
    }
}

TEST_F(AlarmListRecoveryTest, aWalkThatDoesNotBeginRecoversNothing)
{
    plant(withId("A", 4));
    middleware.journal.show({Topic::Trace});
    middleware.lists.failNext("listGetFrontRef", -1);
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> Try to get interface ZorvMwSpiReplicatedList", "trace 8 FM  << ",
                            "listCreate FmActiveAlarmList2 1000 -> -3", "listIsEmpty FmActiveAlarmList -> -2",
                            "listGetFrontRef FmActiveAlarmList2 -> -1", "trace 8 FM listGetFrontRef, -1",
                            "log 6 Active Alarm List recovered, 0", "log 4 Failed to copy Active AlarmData List"));
    EXPECT_THAT(contentsOf(list), IsEmpty());
    expectIterationsClosed(0);
}

TEST_F(AlarmListRecoveryTest, aWalkThatBreaksOffKeepsWhatWasRead)
{
    for (const char* dn : {"A", "B", "C"}) {
        plant(withId(dn, 4));
    }
    middleware.journal.show({Topic::Trace});
    middleware.lists.failAt("listGetNextItemFront", 3, -1);
    list.initialize();

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> Try to get interface ZorvMwSpiReplicatedList", "trace 8 FM  << ",
                            "listCreate FmActiveAlarmList2 1000 -> -3", "listIsEmpty FmActiveAlarmList -> -2",
                            "listGetFrontRef FmActiveAlarmList2 -> 0", "trace 8 FM listGetFrontRef, 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> 0", "trace 8 FM listGetNextItemFront, 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> 0", "trace 8 FM listGetNextItemFront, 0",
                            "listGetNextItemFront FmActiveAlarmList2 -> -1", "trace 8 FM listGetNextItemFront, -1",
                            "log 3 Retval from listGetNextItemFront: -1", "listGetFinalize FmActiveAlarmList2 -> 0",
                            "trace 8 FM Response from listGetFinalize of list FmActiveAlarmList2: 0",
                            "log 3 Caught exception during alarm list retrieval: 'Retval from listGetNextItemFront: "
                            "-1'",
                            "log 6 Active Alarm List recovered, 2", "log 4 Failed to copy Active AlarmData List"));
    EXPECT_THAT(contentsOf(list), ElementsAre("A 4", "B 4"));
    expectIterationsClosed(1);
}

TEST_F(AlarmListRecoveryTest, aFailedFinalizeIsTracedAndNotRepeated)
{
    plant(withId("A", 4));
    middleware.journal.show({Topic::Trace});
    middleware.lists.failNext("listGetFinalize", -1);
    list.initialize();

    const ZorvFakes::Journal::Entries entries = journal();
    ASSERT_LE(3u, entries.size());
    EXPECT_THAT(ZorvFakes::Journal::Entries(entries.end() - 3, entries.end()),
                ElementsAre("listGetFinalize FmActiveAlarmList2 -> -1",
                            "trace 8 FM Response from listGetFinalize of list FmActiveAlarmList2: -1",
                            "log 6 Active Alarm List recovered, 1"));
    expectIterationsClosed(1);
}

TEST_F(AlarmListRecoveryTest, anAbsentServiceIsAFailingOne)
{
    middleware.portal.withdraw("ZorvMwSpiReplicatedList");
    list.initialize();
    EXPECT_THAT(journal(),
                ElementsAre("log 3 Replicated List FmActiveAlarmList2 listCreate failed: -1",
                            "log 6 Active Alarm List recovered, 0", "log 4 Failed to copy Active AlarmData List"));

    Alarm* alarm = list.createAlarm(anAlarm("A"));
    list.saveAlarm(*alarm);
    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to push back alarm to replicated list! retval=-1 '" +
                                       alarm->toString() + "'"));
    EXPECT_EQ(-1, list.deleteAlarm(*alarm));
    EXPECT_THAT(journal(), ElementsAre("log 4 Retval from listEraseItem: -1"));
    EXPECT_THAT(contentsOf(list), IsEmpty());
}

TEST_F(AlarmListRecoveryTest, aServiceThatComesLaterIsFoundAtTheNextStart)
{
    middleware.portal.withdraw("ZorvMwSpiReplicatedList");
    list.initialize();
    plant(withId("A", 4));
    middleware.offerAll();
    list.initialize();

    EXPECT_THAT(contentsOf(list), ElementsAre("A 4"));
}

TEST_F(AlarmListRecoveryTest, beforeItsStartTheListWorksInMemory)
{
    Alarm* alarm = list.createAlarm(anAlarm("A"));
    list.saveAlarm(*alarm);

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to push back alarm to replicated list! retval=-1 '" +
                                       alarm->toString() + "'"));
    EXPECT_EQ(alarm, list.findAlarm(anAlarm("A")));
}

}  // namespace
}  // namespace ZorvFm
