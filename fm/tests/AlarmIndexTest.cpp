#include "AlarmIndex.hpp"

#include <algorithm>
#include <deque>
#include <vector>

#include "AlarmSamples.hpp"
#include "Dice.hpp"
#include "FmTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFm {
namespace {

template <class ChainT>
std::vector<const Alarm*> inOrder(const ChainT& alarms)
{
    std::vector<const Alarm*> all;
    for (const Alarm* alarm : alarms) {
        all.push_back(alarm);
    }
    EXPECT_EQ(all.size(), alarms.size());
    return all;
}

std::vector<const Alarm*> inOrder(const AlarmIndex::ChangingT& alarms)
{
    std::vector<const Alarm*> all;
    for (const auto& [position, alarm] : alarms) {
        all.push_back(alarm);
    }
    return all;
}

std::string toText(const AlarmSummary& summary)
{
    return std::to_string(summary.total) + ": " + std::to_string(summary.critical) + " " +
           std::to_string(summary.major) + " " + std::to_string(summary.minor) + " " + std::to_string(summary.warning);
}

class AlarmIndexTest : public FmTest {
protected:
    AlarmIndexTest() { middleware.journal.showOnly({}); }

    Alarm& add(const AlarmData& data, int state = AlarmState::ACTIVE)
    {
        Alarm& alarm = alarms.emplace_back(alarmInState(state, data));
        index.add(alarm);
        return alarm;
    }

    std::list<Alarm*> findAll(const AlarmData& identity) const
    {
        std::list<Alarm*> found;
        index.findAll(identity, found);
        return found;
    }

    std::deque<Alarm> alarms;  // outlives the index
    AlarmIndex index;
};

TEST_F(AlarmIndexTest, beginsEmpty)
{
    EXPECT_THAT(index.getAlarms(), IsEmpty());
    EXPECT_THAT(index.getAlarmsOfType(32473, 7), IsEmpty());
    EXPECT_THAT(index.getChangingAlarms(), IsEmpty());
    EXPECT_EQ("0: 0 0 0 0", toText(index.getSummary()));
    EXPECT_EQ(nullptr, index.find(fullAlarm()));
    EXPECT_FALSE(index.contains(alarmInState(AlarmState::ACTIVE)));
}

TEST_F(AlarmIndexTest, keepsTheOrderOfArrival)
{
    Alarm& second = add(anAlarm("B"));
    Alarm& first = add(anAlarm("A"));
    Alarm& third = add(anAlarm("C", 1, 1));

    EXPECT_THAT(inOrder(index.getAlarms()), ElementsAre(&second, &first, &third));

    index.remove(second);
    index.add(second);
    EXPECT_THAT(inOrder(index.getAlarms()), ElementsAre(&first, &third, &second));
}

TEST_F(AlarmIndexTest, findsByTheWholeIdentity)
{
    Alarm& alarm = add(anAlarm("A", 1, 2));
    add(anAlarm("A", 2, 1));
    add(anAlarm("A", 1, 1));
    add(anAlarm("B", 1, 2));

    EXPECT_EQ(&alarm, index.find(anAlarm("A", 1, 2, "another text")));
    EXPECT_EQ(nullptr, index.find(anAlarm("AA", 1, 2)));
    EXPECT_EQ(nullptr, index.find(anAlarm("a", 1, 2)));
    EXPECT_EQ(nullptr, index.find(anAlarm("B", 2, 1)));
}

TEST_F(AlarmIndexTest, majorAndMinorTypeAreNotMixedUp)
{
    Alarm& one = add(anAlarm("A", 0, UINT32_MAX));
    Alarm& other = add(anAlarm("A", UINT32_MAX, 0));

    EXPECT_EQ(&one, index.find(anAlarm("A", 0, UINT32_MAX)));
    EXPECT_EQ(&other, index.find(anAlarm("A", UINT32_MAX, 0)));
    EXPECT_THAT(inOrder(index.getAlarmsOfType(0, UINT32_MAX)), ElementsAre(&one));
}

TEST_F(AlarmIndexTest, typesAreToldApartByEachBit)
{
    add(anAlarm("A", 0, 0));
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1U) {
        add(anAlarm("A", bit, 0));
        add(anAlarm("A", 0, bit));
    }

    for (const Alarm& alarm : alarms) {
        EXPECT_THAT(inOrder(index.getAlarmsOfType(alarm.majorType, alarm.minorType)), ElementsAre(&alarm));
    }
}

TEST_F(AlarmIndexTest, knowsTwins)
{
    Alarm& first = add(anAlarm("A", 1, 1, "first"));
    add(anAlarm("B", 1, 1));
    Alarm& second = add(anAlarm("A", 1, 1, "second"));
    EXPECT_EQ(&first, index.find(anAlarm("A", 1, 1)));
    EXPECT_THAT(findAll(anAlarm("A", 1, 1)), ElementsAre(&first, &second));

    index.remove(first);
    EXPECT_EQ(&second, index.find(anAlarm("A", 1, 1)));
    index.add(first);
    EXPECT_EQ(&second, index.find(anAlarm("A", 1, 1)));
    EXPECT_THAT(findAll(anAlarm("A", 1, 1)), ElementsAre(&second, &first));
}

TEST_F(AlarmIndexTest, findAllAppends)
{
    Alarm& alarm = add(anAlarm("A"));
    std::list<Alarm*> found = {nullptr};
    index.findAll(anAlarm("A"), found);
    index.findAll(anAlarm("B"), found);
    index.findAll(anAlarm("A", 1, 1), found);

    EXPECT_THAT(found, ElementsAre(nullptr, &alarm));
}

TEST_F(AlarmIndexTest, theAlarmsOfATypeComeAndGo)
{
    Alarm& first = add(anAlarm("B", 1, 1));
    add(anAlarm("A", 1, 2));
    Alarm& second = add(anAlarm("A", 1, 1));
    EXPECT_THAT(inOrder(index.getAlarmsOfType(1, 1)), ElementsAre(&first, &second));

    index.remove(first);
    EXPECT_THAT(inOrder(index.getAlarmsOfType(1, 1)), ElementsAre(&second));
    index.remove(second);
    EXPECT_THAT(index.getAlarmsOfType(1, 1), IsEmpty());
}

TEST_F(AlarmIndexTest, containsTheVeryObjectOnly)
{
    Alarm& alarm = add(anAlarm("A"));
    Alarm copy(alarm);
    EXPECT_TRUE(index.contains(alarm));
    EXPECT_FALSE(index.contains(copy));

    copy.place = alarm.place;
    EXPECT_FALSE(index.contains(copy));

    index.remove(alarm);
    EXPECT_FALSE(index.contains(alarm));
}

TEST_F(AlarmIndexTest, alarmsThatATickMayChangeAreKnownByState)
{
    std::vector<const Alarm*> changing;
    for (int state = AlarmState::NEW; state <= AlarmState::CEASED; ++state) {
        const Alarm& alarm = add(anAlarm("A"), state);
        if (alarm.getState().canChangeInTick()) {
            changing.push_back(&alarm);
        }
    }

    EXPECT_EQ(4u, changing.size());
    EXPECT_EQ(changing, inOrder(index.getChangingAlarms()));
}

TEST_F(AlarmIndexTest, changesCountWhenTheyAreNoted)
{
    Alarm& alarm = add(anAlarm("A"), AlarmState::NEW);
    alarm.raise();
    EXPECT_THAT(index.getChangingAlarms(), IsEmpty());
    index.update(alarm);
    EXPECT_THAT(inOrder(index.getChangingAlarms()), ElementsAre(&alarm));
    EXPECT_EQ("0: 0 0 0 0", toText(index.getSummary()));

    alarm.tick(0);
    index.update(alarm);
    EXPECT_THAT(index.getChangingAlarms(), IsEmpty());
    EXPECT_EQ("1: 0 1 0 0", toText(index.getSummary()));

    alarm.severity = YALT_FM_SEVERITY_WARNING;
    EXPECT_EQ("1: 0 1 0 0", toText(index.getSummary()));
    index.update(alarm);
    EXPECT_EQ("1: 0 0 0 1", toText(index.getSummary()));

    alarm.severity = YALT_FM_SEVERITY_CRITICAL;
    index.remove(alarm);
    EXPECT_EQ("0: 0 0 0 0", toText(index.getSummary()));
    EXPECT_THAT(index.getChangingAlarms(), IsEmpty());
}

struct SummaryRow {
    std::int32_t severity;
    const char* summary;
};

TEST_F(AlarmIndexTest, summaryBySeverity)
{
    const SummaryRow rows[] = {{0, "1: 0 0 0 0"}, {1, "1: 1 0 0 0"},  {2, "1: 0 0 0 1"},
                               {3, "1: 0 0 1 0"}, {4, "1: 0 1 0 0"},  {5, "1: 1 0 0 0"},
                               {6, "1: 1 0 0 0"}, {-1, "1: 1 0 0 0"}, {INT32_MAX, "1: 1 0 0 0"}};
    for (const SummaryRow& row : rows) {
        AlarmData data = anAlarm("A");
        data.severity = row.severity;
        Alarm& alarm = add(data);
        EXPECT_EQ(row.summary, toText(index.getSummary())) << row.severity;
        index.remove(alarm);
        EXPECT_EQ("0: 0 0 0 0", toText(index.getSummary())) << row.severity;
    }
}

TEST_F(AlarmIndexTest, summaryHasVisibleAlarmsOnly)
{
    for (int state = AlarmState::NEW; state <= AlarmState::CEASED; ++state) {
        add(anAlarm("A"), state);
    }

    EXPECT_EQ("4: 0 4 0 0", toText(index.getSummary()));
}

// --- Against a list that is searched from its front

class AlarmIndexRandomTest : public AlarmIndexTest {
protected:
    AlarmData randomIdentity()
    {
        static const char* const names[] = {"", "A", "B", "AB"};
        static const std::uint32_t numbers[] = {0, 1, UINT32_MAX};
        return anAlarm(names[dice.roll(4)], numbers[dice.roll(3)], numbers[dice.roll(3)]);
    }

    void step()
    {
        const std::uint64_t choice = dice.roll(8);
        if (choice < 2 || plain.empty()) {
            plain.push_back(&add(randomIdentity(), static_cast<int>(dice.roll(AlarmState::CEASED + 1))));
            return;
        }
        const auto place = plain.begin() + static_cast<std::ptrdiff_t>(dice.roll(plain.size()));
        Alarm& alarm = **place;
        if (choice < 4) {
            plain.erase(place);
            index.remove(alarm);
        } else {
            change(alarm);
            index.update(alarm);
        }
    }

    void change(Alarm& alarm)
    {
        switch (dice.roll(4)) {
        case 0:
            alarm.raise();
            break;
        case 1:
            alarm.clear();
            break;
        case 2:
            alarm.tick(100000000000);
            break;
        default:
            alarm.severity = static_cast<std::int32_t>(dice.roll(7));
            break;
        }
    }

    template <class ConditionT>
    std::vector<const Alarm*> those(ConditionT condition) const
    {
        std::vector<const Alarm*> some;
        std::copy_if(plain.begin(), plain.end(), std::back_inserter(some), condition);
        return some;
    }

    void compareIdentity(const AlarmData& identity) const
    {
        const std::list<Alarm*> found = findAll(identity);
        const auto twins = those([&](const Alarm* alarm) { return *alarm == identity; });
        ASSERT_EQ(twins, std::vector<const Alarm*>(found.begin(), found.end()));
        ASSERT_EQ(twins.empty() ? nullptr : twins.front(), index.find(identity));
        ASSERT_EQ(those([&](const Alarm* alarm) {
                      return alarm->majorType == identity.majorType && alarm->minorType == identity.minorType;
                  }),
                  inOrder(index.getAlarmsOfType(identity.majorType, identity.minorType)));
    }

    void compare()
    {
        ASSERT_EQ(those([](const Alarm*) { return true; }), inOrder(index.getAlarms()));
        ASSERT_EQ(those([](const Alarm* alarm) { return alarm->getState().canChangeInTick(); }),
                  inOrder(index.getChangingAlarms()));
        for (const Alarm& alarm : alarms) {
            ASSERT_EQ(std::count(plain.begin(), plain.end(), &alarm), index.contains(alarm));
        }
        ASSERT_NO_FATAL_FAILURE(compareIdentity(randomIdentity()));
        ASSERT_EQ(toText(summary()), toText(index.getSummary()));
    }

    AlarmSummary summary() const
    {
        const auto visible = [&](std::initializer_list<std::int32_t> severities) {
            return static_cast<std::uint32_t>(std::count_if(plain.begin(), plain.end(), [&](const Alarm* alarm) {
                return alarm->isVisibleInNbi() &&
                       std::find(severities.begin(), severities.end(), alarm->severity) != severities.end();
            }));
        };
        return {visible({0, 1, 2, 3, 4, 5, 6}), visible({1, 5, 6}), visible({4}), visible({3}), visible({2})};
    }

    Dice dice;
    std::vector<Alarm*> plain;
};

TEST_F(AlarmIndexRandomTest, answersLikeAPlainList)
{
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE("seed " + std::to_string(dice.getSeed()) + ", step " + std::to_string(i));
        step();
        ASSERT_NO_FATAL_FAILURE(compare());
    }
}

}  // namespace
}  // namespace ZorvFm
