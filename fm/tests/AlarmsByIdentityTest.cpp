#include "AlarmsByIdentity.hpp"

#include <algorithm>
#include <deque>
#include <vector>

#include "AlarmSamples.hpp"
#include "Dice.hpp"
#include "FmTest.hpp"

using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

namespace ZorvFm {
namespace {

class AlarmsByIdentityTest : public FmTest {
protected:
    AlarmsByIdentityTest() { middleware.journal.showOnly({}); }

    Alarm& add(const AlarmData& data)
    {
        Alarm& alarm = alarms.emplace_back(alarmInState(AlarmState::ACTIVE, data));
        byIdentity.add(alarm);
        return alarm;
    }

    std::vector<const Alarm*> find(const AlarmData& identity) const
    {
        std::vector<const Alarm*> found;
        byIdentity.each(identity, [&](const Alarm& alarm) { found.push_back(&alarm); });
        return found;
    }

    std::deque<Alarm> alarms;
    AlarmsByIdentity byIdentity;
};

TEST_F(AlarmsByIdentityTest, findsNothingAmongNone)
{
    EXPECT_THAT(find(anAlarm("A")), IsEmpty());
}

TEST_F(AlarmsByIdentityTest, findsByTheWholeIdentityAndNothingElse)
{
    Alarm& alarm = add(anAlarm("A", 1, 2));
    add(anAlarm("A", 2, 1));
    add(anAlarm("A", 1, 1));
    add(anAlarm("B", 1, 2));

    EXPECT_THAT(find(anAlarm("A", 1, 2, "another text")), UnorderedElementsAre(&alarm));
    EXPECT_THAT(find(anAlarm("B", 2, 1)), IsEmpty());
}

/// Two types that the sum of the hash does not tell apart.
TEST_F(AlarmsByIdentityTest, identitiesOfTheSameHashAreToldApart)
{
    Alarm& one = add(anAlarm("A", 0, 0));
    Alarm& other = add(anAlarm("A", 1346530022, 1795967550));
    ASSERT_EQ(one.place.identityHash, other.place.identityHash);

    EXPECT_THAT(find(one), UnorderedElementsAre(&one));
    EXPECT_THAT(find(other), UnorderedElementsAre(&other));
}

TEST_F(AlarmsByIdentityTest, findsAllAlarmsOfAnIdentity)
{
    Alarm& first = add(anAlarm("A"));
    Alarm& second = add(anAlarm("A"));
    Alarm& third = add(anAlarm("A"));
    EXPECT_THAT(find(anAlarm("A")), UnorderedElementsAre(&first, &second, &third));

    byIdentity.remove(second);
    EXPECT_THAT(find(anAlarm("A")), UnorderedElementsAre(&first, &third));
}

TEST_F(AlarmsByIdentityTest, findsEachAlarmWhateverTheirNumber)
{
    for (int number = 1; number <= 70; ++number) {
        add(anAlarm("Port=" + std::to_string(number)));
        for (const Alarm& alarm : alarms) {
            ASSERT_THAT(find(alarm), UnorderedElementsAre(&alarm)) << number;
        }
    }
}

TEST_F(AlarmsByIdentityTest, whatIsRemovedIsNotFoundAndCanComeBack)
{
    for (int number = 0; number < 70; ++number) {
        add(anAlarm("Port=" + std::to_string(number)));
    }
    for (Alarm& alarm : alarms) {
        byIdentity.remove(alarm);
        ASSERT_THAT(find(alarm), IsEmpty());
    }
    for (Alarm& alarm : alarms) {
        byIdentity.add(alarm);
        ASSERT_THAT(find(alarm), UnorderedElementsAre(&alarm));
    }
}

TEST_F(AlarmsByIdentityTest, answersLikeAPlainListOnRandomHistories)
{
    Dice dice;
    SCOPED_TRACE("seed " + std::to_string(dice.getSeed()));
    std::vector<Alarm*> plain;
    const auto randomIdentity = [&] {
        return anAlarm("Port=" + std::to_string(dice.roll(300)), static_cast<std::uint32_t>(dice.roll(2)), 7);
    };
    for (int i = 0; i < 3000; ++i) {
        if (plain.empty() || dice.roll(3) != 0) {
            plain.push_back(&add(randomIdentity()));
        } else {
            const auto place = plain.begin() + static_cast<std::ptrdiff_t>(dice.roll(plain.size()));
            byIdentity.remove(**place);
            plain.erase(place);
        }
        const AlarmData identity = randomIdentity();
        std::vector<const Alarm*> expected;
        std::copy_if(plain.begin(), plain.end(), std::back_inserter(expected),
                     [&](const Alarm* alarm) { return *alarm == identity; });
        ASSERT_THAT(find(identity), UnorderedElementsAreArray(expected)) << i;
    }
}

}  // namespace
}  // namespace ZorvFm
