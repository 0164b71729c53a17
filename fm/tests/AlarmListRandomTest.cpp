#include <regex.h>

#include <algorithm>
#include <list>
#include <string>
#include <vector>

#include "AlarmListTest.hpp"

namespace ZorvFm {
namespace {

constexpr const char* const names[] = {"", "A=1", "A=1,B=2", "A=1,B=22", "A=2,B=2", "A.1", "a=1\xff"};
constexpr const char* const patterns[] = {"B=2",   "^A=1",  "2$", "A=[12]", "",     ".*",   "nothing",
                                          "A=1,.", "A.1,B", "^$", "(",      "a{2}", "\xff", "[[:digit:]]$"};

/// Plays with a list, and beside it with a plain one that is searched from its front.
class AlarmListRandomTest : public AlarmListTest {
protected:
    struct Item {
        std::string name;
        std::string text;
    };

    AlarmListRandomTest() { middleware.journal.showOnly({}); }

    template <class T, std::size_t size>
    T oneOf(T const (&choices)[size])
    {
        return choices[dice.roll(size)];
    }

    AlarmData randomIdentity(const std::string& dn)
    {
        AlarmData data =
            anAlarm(dn, static_cast<std::uint32_t>(dice.roll(2)), static_cast<std::uint32_t>(dice.roll(2)));
        data.severity = static_cast<std::int32_t>(dice.roll(6));
        return data;
    }

    Alarm& anyAlarm() { return *plain[dice.roll(plain.size())]; }

    // --- Steps

    void create()
    {
        Alarm* alarm = list.createAlarm(randomIdentity(oneOf(names)));
        EXPECT_EQ(++lastId, alarm->alarmId);
        plain.push_back(alarm);
    }

    void change(Alarm& alarm)
    {
        const AlarmList::Lock lock(list, alarm);
        switch (dice.roll(3)) {
        case 0:
            alarm.raise();
            break;
        case 1:
            alarm.clear();
            break;
        default:
            alarm.tick(0);
            break;
        }
    }

    void save(Alarm& alarm)
    {
        const bool isNew = alarm.itemName.length == 0;
        list.saveAlarm(alarm);
        if (isNew) {
            store.push_back({alarm.itemName.value, ""});
        }
        const auto item =
            std::find_if(store.begin(), store.end(), [&](const Item& one) { return one.name == alarm.itemName.value; });
        if (item != store.end()) {
            item->text = alarm.serialize_v2();
        }
    }

    void removeItem(const Alarm& alarm)
    {
        const std::string name = alarm.itemName.value;
        store.erase(std::remove_if(store.begin(), store.end(), [&](const Item& one) { return one.name == name; }),
                    store.end());
    }

    void deleteVeryObject(Alarm& alarm)
    {
        removeItem(alarm);
        plain.erase(std::find(plain.begin(), plain.end(), &alarm));
        list.deleteAlarm(alarm);
    }

    /// Deletes by a copy: its item is erased, the first twin is removed.
    void deleteEqual(const Alarm& alarm)
    {
        const Alarm copy(alarm);
        removeItem(copy);
        plain.erase(std::find_if(plain.begin(), plain.end(), [&](const Alarm* one) { return *one == copy; }));
        list.deleteAlarm(copy);
    }

    /// What is stored comes back; what was never stored, or lost its item, does not.
    void restart()
    {
        list.initialize();
        std::list<Alarm*> recovered;
        list.getAlarms(recovered);
        plain.assign(recovered.begin(), recovered.end());
        ASSERT_EQ(store.size(), plain.size());
        for (std::size_t i = 0; i < plain.size(); ++i) {
            ASSERT_EQ(store[i].text, plain[i]->serialize_v2());
            ASSERT_EQ(store[i].name, plain[i]->itemName.value);
        }
    }

    void step()
    {
        const std::uint64_t choice = dice.roll(100);
        if (choice < 30 || plain.empty()) {
            create();
        } else if (choice < 75) {
            Alarm& alarm = anyAlarm();
            change(alarm);
            save(alarm);
        } else if (choice < 90) {
            deleteVeryObject(anyAlarm());
        } else if (choice < 98) {
            deleteEqual(anyAlarm());
        } else {
            restart();
        }
    }

    // --- Comparisons

    template <class ConditionT>
    std::vector<Alarm*> those(ConditionT condition) const
    {
        std::vector<Alarm*> some;
        std::copy_if(plain.begin(), plain.end(), std::back_inserter(some), condition);
        return some;
    }

    std::vector<Alarm*> foundByPlainSearch(const AlarmData& pattern) const
    {
        std::vector<Alarm*> found = those([&](const Alarm* alarm) { return *alarm == pattern; });
        if (!found.empty() || pattern.dn == "(") {
            return found;
        }
        regex_t expression;
        EXPECT_EQ(0, regcomp(&expression, pattern.dn.c_str(), REG_EXTENDED | REG_NOSUB));
        found = those([&](const Alarm* alarm) {
            return alarm->majorType == pattern.majorType && alarm->minorType == pattern.minorType &&
                   regexec(&expression, alarm->dn.c_str(), 0, nullptr, 0) == 0;
        });
        regfree(&expression);
        return found;
    }

    void compareSearches()
    {
        const AlarmData identity = randomIdentity(oneOf(names));
        const auto twins = those([&](const Alarm* alarm) { return *alarm == identity; });
        ASSERT_EQ(twins.empty() ? nullptr : twins.front(), list.findAlarm(identity));

        const AlarmData pattern = randomIdentity(dice.roll(3) == 0 ? oneOf(names) : oneOf(patterns));
        std::list<Alarm*> found;
        list.findAlarms(pattern, found);
        ASSERT_EQ(foundByPlainSearch(pattern), std::vector<Alarm*>(found.begin(), found.end())) << pattern.dn;
    }

    void compareLists()
    {
        std::list<Alarm*> all;
        list.getAlarms(all);
        ASSERT_EQ(plain, std::vector<Alarm*>(all.begin(), all.end()));

        std::vector<Alarm*> changing;
        list.getChangingAlarms(changing);
        ASSERT_EQ(those([](const Alarm* alarm) { return alarm->getState().canChangeInTick(); }), changing);

        const std::vector<AlarmData> visible = visibleAlarms();
        const auto expected = those([](const Alarm* alarm) { return alarm->isVisibleInNbi(); });
        ASSERT_EQ(expected.size(), visible.size());
        ASSERT_EQ(expected.size(), list.getSummary().total);
        for (std::size_t i = 0; i < visible.size(); ++i) {
            ASSERT_EQ(allFields(dataOf(*expected[i])), allFields(visible[i]));
        }
    }

    /// What a reader shares is what is visible now; what an earlier one shares stays as it was.
    void compareShared()
    {
        if (dice.roll(4) == 0) {
            const auto shared = list.shareNbiAlarms();
            ASSERT_EQ(textsOf(visibleAlarms()), textsOf(alarmsIn(shared)));
            readers.emplace_back(shared, textsOf(visibleAlarms()));
        }
        if (readers.size() > 5) {
            readers.erase(readers.begin() + static_cast<std::ptrdiff_t>(dice.roll(readers.size())));
        }
        for (const auto& [shared, texts] : readers) {
            ASSERT_EQ(texts, textsOf(alarmsIn(shared)));
        }
    }

    static std::vector<std::string> textsOf(const std::vector<AlarmData>& alarms)
    {
        std::vector<std::string> texts;
        for (const AlarmData& alarm : alarms) {
            texts.push_back(allFields(alarm));
        }
        return texts;
    }

    void compareStore() const
    {
        std::vector<std::string> texts;
        for (const Item& item : store) {
            texts.push_back(item.text);
        }
        ASSERT_EQ(texts, items());
    }

    Dice dice;
    std::vector<Alarm*> plain;
    std::vector<Item> store;
    std::uint64_t lastId = 0;
    std::vector<std::pair<std::vector<AlarmChunkT>, std::vector<std::string>>> readers;  // and what they saw
};

TEST_F(AlarmListRandomTest, answersLikeAPlainList)
{
    for (int i = 0; i < 2000; ++i) {
        SCOPED_TRACE("seed " + std::to_string(dice.getSeed()) + ", step " + std::to_string(i));
        ASSERT_NO_FATAL_FAILURE(step());
        ASSERT_NO_FATAL_FAILURE(compareSearches());
        ASSERT_NO_FATAL_FAILURE(compareLists());
        ASSERT_NO_FATAL_FAILURE(compareShared());
        ASSERT_NO_FATAL_FAILURE(compareStore());
    }
}

}  // namespace
}  // namespace ZorvFm
