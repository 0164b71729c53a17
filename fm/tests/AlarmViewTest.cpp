#include "AlarmView.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "Dice.hpp"

using testing::IsEmpty;

namespace ZorvFm {
namespace {

using PlainT = std::map<std::uint64_t, std::uint64_t>;  // id by position

AlarmData withId(std::uint64_t alarmId)
{
    AlarmData alarm;
    alarm.alarmId = alarmId;
    return alarm;
}

PlainT contentOf(const std::vector<AlarmChunkT>& chunks)
{
    PlainT content;
    std::uint64_t last = 0;
    for (const AlarmChunkT& chunk : chunks) {
        EXPECT_FALSE(chunk->empty());
        for (const ShownAlarm& shown : *chunk) {
            EXPECT_LT(last, shown.position);
            EXPECT_EQ(shown.alarmId, shown.data->alarmId);
            last = shown.position;
            content.emplace(shown.position, shown.alarmId);
        }
    }
    return content;
}

TEST(AlarmViewTest, beginsEmpty)
{
    AlarmView view;
    view.remove(1);

    EXPECT_THAT(view.take(), IsEmpty());
}

TEST(AlarmViewTest, showsTheLatest)
{
    AlarmView view;
    view.put(2, withId(20));
    view.put(1, withId(10));
    view.put(2, withId(21));

    EXPECT_EQ((PlainT{{1, 10}, {2, 21}}), contentOf(view.take()));
}

TEST(AlarmViewTest, whatWasTakenStaysAsItWas)
{
    AlarmView view;
    view.put(1, withId(10));
    view.put(2, withId(20));
    const auto taken = view.take();

    view.put(1, withId(11));
    view.remove(2);
    view.put(3, withId(30));

    EXPECT_EQ((PlainT{{1, 10}, {2, 20}}), contentOf(taken));
    EXPECT_EQ((PlainT{{1, 11}, {3, 30}}), contentOf(view.take()));
}

TEST(AlarmViewTest, whatDidNotChangeIsShared)
{
    AlarmView view;
    for (std::uint64_t position = 1; position <= 1000; ++position) {
        view.put(position, withId(position));
    }
    const auto before = view.take();
    view.put(1, withId(1001));
    const auto after = view.take();

    ASSERT_EQ(4U, before.size());
    ASSERT_EQ(4U, after.size());
    EXPECT_NE(before[0], after[0]);
    EXPECT_NE(before[0]->at(0).data, after[0]->at(0).data);
    EXPECT_EQ(before[0]->at(1).data, after[0]->at(1).data);
    EXPECT_EQ(before[1], after[1]);
    EXPECT_EQ(before[3], after[3]);
}

TEST(AlarmViewTest, theLastOneMayChangeHoweverManyThereAre)
{
    AlarmView view;
    PlainT last;
    for (std::uint64_t position = 1; position <= 600; ++position) {
        view.put(position, withId(position));
        view.put(position, withId(position + 1000));
        last.emplace(position, position + 1000);
    }

    EXPECT_EQ(last, contentOf(view.take()));
    EXPECT_EQ(last.size(), view.size());
}

TEST(AlarmViewTest, alarmsInTheMiddleMayAllGo)
{
    AlarmView view;
    PlainT left;
    for (std::uint64_t position = 1; position <= 1000; ++position) {
        view.put(position, withId(position));
    }
    for (std::uint64_t position = 1; position <= 1000; ++position) {
        if (position > 200 && position <= 900) {
            view.remove(position);
        } else {
            left.emplace(position, position);
        }
    }

    EXPECT_EQ(left, contentOf(view.take()));
    EXPECT_EQ(left.size(), view.size());
}

TEST(AlarmViewTest, isLikeAPlainMap)
{
    Dice dice;
    AlarmView view;
    PlainT plain;
    std::vector<std::pair<std::vector<AlarmChunkT>, PlainT>> readers;
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t position = 1 + dice.roll(2000);
        if (dice.roll(3) == 0) {
            view.remove(position);
            plain.erase(position);
        } else {
            view.put(position, withId(static_cast<std::uint64_t>(i)));
            plain[position] = static_cast<std::uint64_t>(i);
        }
        ASSERT_EQ(plain.size(), view.size()) << dice.getSeed();
        if (dice.roll(500) == 0) {
            readers.emplace_back(view.take(), plain);
        }
    }
    readers.emplace_back(view.take(), plain);
    for (const auto& [taken, content] : readers) {
        ASSERT_EQ(content, contentOf(taken)) << dice.getSeed();
    }
}

}  // namespace
}  // namespace ZorvFm
