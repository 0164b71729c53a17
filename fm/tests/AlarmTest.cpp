#include "Alarm.hpp"

#include <chrono>
#include <cstring>

#include "AlarmSamples.hpp"
#include "FmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

namespace ZorvFm {
namespace {

constexpr std::uint64_t second = 1000000000;
constexpr const char* remark = " The alarm is currently toggling.";

class AlarmTest : public FmTest {
protected:
    AlarmTest() { middleware.clock.turnOn(1000 * second); }

    int tick(Alarm& alarm) const { return alarm.tick(middleware.clock.monotonic()); }

    FmConfig config;
};

TEST_F(AlarmTest, aNewOneIsEmptyAndNowhere)
{
    const Alarm alarm(config);
    const ZorvMwSpiListNameT noName{};

    EXPECT_EQ(allFields(AlarmData()), allFields(alarm));
    EXPECT_EQ(AlarmState::NEW, alarm.getState().getState());
    EXPECT_EQ(0, std::memcmp(&noName, &alarm.itemName, sizeof noName));
    EXPECT_EQ(0u, alarm.place.position);
    EXPECT_FALSE(alarm.place.isCounted);
}

TEST_F(AlarmTest, aNewOneTogglesAsConfiguredAtItsBeginning)
{
    config.alarmToggleWindowSize = 60 * second;
    Alarm alarm(config);
    config.alarmToggleWindowSize = 0;
    alarm.raise();
    EXPECT_EQ(ALARM_ACTIVATED, tick(alarm));

    EXPECT_TRUE(alarm.isToggling());
}

// --- Copies

Alarm copyOf(const Alarm& source)
{
    return source;
}

TEST_F(AlarmTest, aCopyHasAllFields)
{
    const Alarm source = alarmInState(AlarmState::ACTIVE);
    const Alarm copy = copyOf(source);

    EXPECT_EQ(allFields(source), allFields(copy));
    EXPECT_EQ(source.toString(), copy.toString());
}

TEST_F(AlarmTest, aCopyHasAFilterStateOfItsOwn)
{
    Alarm source = alarmInState(AlarmState::ACTIVE);
    Alarm copy(source);
    copy.clear();
    EXPECT_EQ(ALARM_CLEARED, tick(copy));

    EXPECT_EQ(AlarmState::CEASED, copy.getState().getState());
    EXPECT_EQ(AlarmState::ACTIVE, source.getState().getState());
}

TEST_F(AlarmTest, aCopyOfATogglingAlarmSaysSoOnce)
{
    const Alarm source = alarmInState(AlarmState::ACTIVE_TOGGLING);
    const Alarm copy = copyOf(source);

    EXPECT_TRUE(copy.isToggling());
    EXPECT_EQ("Link down again", copy.getAdditionalTextBasic());
    EXPECT_EQ(std::string("Link down again") + remark, copy.getAdditionalText());
}

TEST_F(AlarmTest, aCopyIsNotInTheList)
{
    Alarm source = alarmInState(AlarmState::ACTIVE);
    source.place.position = 4;
    source.place.isCounted = true;
    const Alarm copy = copyOf(source);

    EXPECT_EQ(0u, copy.place.position);
    EXPECT_FALSE(copy.place.isCounted);
}

TEST_F(AlarmTest, theDataOfATogglingAlarmTakeTheRemarkAlong)
{
    const Alarm source = alarmInState(AlarmState::ACTIVE_TOGGLING);
    AlarmData expected = fullAlarm();
    expected.additionalText += remark;

    EXPECT_EQ(allFields(expected), allFields(dataOf(source)));
}

// --- First raise

TEST_F(AlarmTest, initTakesTheDataAsThoseOfAFirstRaise)
{
    Alarm alarm(config);
    alarm.init(fullAlarm());
    AlarmData expected = fullAlarm();
    expected.originalAdditionalText = expected.additionalText;
    expected.originalSeverity = expected.severity;
    expected.originalEventTime = expected.eventTime;
    expected.originalSeqNo = 0;
    expected.alarmId = 0;

    EXPECT_EQ(allFields(expected), allFields(alarm));
}

TEST_F(AlarmTest, initLeavesFilterStateAndStoredItem)
{
    for (int state = AlarmState::NEW; state <= AlarmState::CEASED; ++state) {
        Alarm alarm = alarmInState(state);
        alarm.itemName.length = 6;
        alarm.place.position = 4;
        alarm.init(AlarmData());

        EXPECT_EQ(state, alarm.getState().getState());
        EXPECT_EQ(6, alarm.itemName.length);
        EXPECT_EQ(4u, alarm.place.position);
    }
}

TEST_F(AlarmTest, initReplacesTheInformation)
{
    Alarm alarm = alarmInState(AlarmState::CEASED);
    AlarmData data;
    data.addAdditionalInfo("fan", "three");
    alarm.init(data);

    EXPECT_THAT(alarm.getAdditionalInfo(), ElementsAre(std::pair("fan", "three")));
}

TEST_F(AlarmTest, initTakesTextsAsTheSourceShowsThem)
{
    Alarm alarm(config);
    alarm.init(alarmInState(AlarmState::ACTIVE_TOGGLING));

    EXPECT_EQ(std::string("Link down again") + remark, alarm.additionalText);
    EXPECT_EQ(std::string("Link down again") + remark, alarm.originalAdditionalText);
}

// --- What is shown

struct ShownRow {
    int state;
    bool visible;
    bool toggling;
};

TEST_F(AlarmTest, whatEachStateShows)
{
    const ShownRow rows[] = {{0, false, false}, {1, false, false}, {2, true, false}, {3, true, true},
                             {4, true, true},   {5, true, false},  {6, false, false}};
    for (const ShownRow& row : rows) {
        SCOPED_TRACE(row.state);
        const Alarm alarm = alarmInState(row.state);

        ASSERT_EQ(row.state, alarm.getState().getState());
        EXPECT_EQ(row.visible, alarm.isVisibleInNbi());
        EXPECT_EQ(row.toggling, alarm.isToggling());
        EXPECT_EQ(std::string("Link down again") + (row.toggling ? remark : ""), alarm.getAdditionalText());
        EXPECT_EQ("Link down again", alarm.getAdditionalTextBasic());
        EXPECT_EQ("Link down", alarm.originalAdditionalText);
    }
}

TEST_F(AlarmTest, theRemarkFollowsAnEmptyTextToo)
{
    EXPECT_EQ(remark, alarmInState(AlarmState::ACTIVE_TOGGLING, AlarmData()).getAdditionalText());
}

TEST_F(AlarmTest, theRemarkIsNeverKept)
{
    Alarm alarm = alarmInState(AlarmState::ACTIVE_TOGGLING);
    alarm.setAdditionalText("Link flaps");

    EXPECT_EQ(std::string("Link flaps") + remark, alarm.getAdditionalText());
    EXPECT_EQ("Link flaps", alarm.additionalText);
}

TEST_F(AlarmTest, aTogglingAlarmComparesItsTextWithoutTheRemark)
{
    EXPECT_TRUE(alarmInState(AlarmState::ACTIVE_TOGGLING).isAdditionalTextEqual(fullAlarm()));
    EXPECT_TRUE(fullAlarm().isAdditionalTextEqual(alarmInState(AlarmState::ACTIVE_TOGGLING)));
}

TEST_F(AlarmTest, toStringEndsWithTheState)
{
    EXPECT_EQ(fullAlarm().toString() + "; state=2", alarmInState(AlarmState::ACTIVE).toString());
    EXPECT_EQ(AlarmData().toString() + "; state=0", Alarm(config).toString());
}

TEST_F(AlarmTest, allTextsOfATogglingAlarmSaySo)
{
    const Alarm alarm = alarmInState(AlarmState::CEASE_PENDING_TOGGLING);
    AlarmData shown = fullAlarm();
    shown.additionalText += remark;

    EXPECT_EQ(shown.toString() + "; state=4", alarm.toString());
    EXPECT_EQ(shown.toLogString(), alarm.toLogString());
}

// --- Histories

TEST_F(AlarmTest, withoutFiltersEveryTickHasSomethingToSay)
{
    Alarm alarm(config);
    alarm.raise();
    EXPECT_EQ(ALARM_ACTIVATED, tick(alarm));
    EXPECT_EQ(AlarmState::ACTIVE, alarm.getState().getState());
    alarm.clear();
    EXPECT_EQ(ALARM_CLEARED, tick(alarm));
    EXPECT_EQ(AlarmState::CEASED, alarm.getState().getState());
    EXPECT_EQ(ALARM_TO_DELETE, tick(alarm));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmTest, aTransientRaiseIsNeverReported)
{
    config.transientRaiseAlarmFilterTime = 5 * second;
    Alarm alarm(config);
    alarm.raise();
    EXPECT_EQ(ALARM_UNCHANGED, tick(alarm));
    middleware.clock.advance(2s);
    alarm.clear();
    EXPECT_EQ(AlarmState::CEASED, alarm.getState().getState());
    EXPECT_EQ(ALARM_TO_DELETE, tick(alarm));
}

TEST_F(AlarmTest, aThirdActivationWithinAMinuteToggles)
{
    config.alarmToggleWindowSize = 60 * second;
    config.alarmToggleTriggerCount = 3;
    config.alarmToggleSilentTimeout = 30 * second;
    Alarm alarm(config);
    alarm.init(fullAlarm());
    for (int i = 0; i < 2; ++i) {
        alarm.raise();
        EXPECT_EQ(ALARM_ACTIVATED, tick(alarm));
        EXPECT_EQ(AlarmState::ACTIVE, alarm.getState().getState());
        alarm.clear();
        EXPECT_EQ(ALARM_CLEARED, tick(alarm));
        middleware.clock.advance(10s);
    }
    alarm.raise();
    EXPECT_EQ(ALARM_ACTIVATED, tick(alarm));
    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, alarm.getState().getState());
    EXPECT_EQ("Link down again The alarm is currently toggling.", alarm.getAdditionalText());

    alarm.clear();
    middleware.clock.advance(29s);
    EXPECT_EQ(ALARM_UNCHANGED, tick(alarm));
    alarm.raise();
    EXPECT_EQ(AlarmState::ACTIVE_TOGGLING, alarm.getState().getState());
    middleware.clock.advance(60s);
    EXPECT_EQ(ALARM_UNCHANGED, tick(alarm));
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(AlarmTest, aSecondClearIsUnexpected)
{
    config.transientCeaseAlarmFilterTime = second;
    Alarm alarm(config);
    alarm.raise();
    tick(alarm);
    alarm.clear();
    alarm.clear();

    EXPECT_EQ(AlarmState::CEASE_PENDING, alarm.getState().getState());
    EXPECT_THAT(journal(), ElementsAre("log 4 Unexpected alarm cease in state 5"));
}

}  // namespace
}  // namespace ZorvFm
