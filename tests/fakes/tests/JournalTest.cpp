#include "Journal.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ZorvFakes {
namespace {

class JournalTest : public testing::Test {
protected:
    Journal journal;
};

TEST_F(JournalTest, takeGivesTheEntriesInOrderAndEmpties)
{
    journal.record(Topic::Log, "first");
    journal.record(Topic::List, "second");

    EXPECT_THAT(journal.entries(), ElementsAre("first", "second"));
    EXPECT_THAT(journal.take(), ElementsAre("first", "second"));
    EXPECT_THAT(journal.take(), IsEmpty());
}

TEST_F(JournalTest, showsEverythingButTracesLookUpsAndDoneValuesAtFirst)
{
    for (const Topic topic : {Topic::Trace, Topic::Lookup, Topic::Done}) {
        journal.record(topic, "hidden");
    }
    for (const Topic topic : {Topic::Portal, Topic::Log, Topic::Record, Topic::Router, Topic::List, Topic::Model,
                              Topic::Transaction, Topic::Clock}) {
        journal.record(topic, "shown");
    }

    EXPECT_EQ(Journal::Entries(8, "shown"), journal.take());
}

TEST_F(JournalTest, topicsAreShownAndHiddenOneByOne)
{
    journal.show({Topic::Trace});
    journal.hide({Topic::Log});
    journal.record(Topic::Trace, "trace");
    journal.record(Topic::Log, "log");
    journal.showOnly({Topic::Log});
    journal.record(Topic::Trace, "trace again");
    journal.record(Topic::Log, "log again");

    EXPECT_THAT(journal.take(), ElementsAre("trace", "log again"));
}

TEST_F(JournalTest, waitsForWhatAnotherThreadDoes)
{
    std::promise<void> looked;
    std::thread writer([&] {
        looked.get_future().wait();
        journal.record(Topic::Log, "before");
        journal.record(Topic::Log, "awaited");
    });
    int looks = 0;
    const auto began = std::chrono::steady_clock::now();

    EXPECT_TRUE(journal.waitFor([&](const Journal::Entries& all) {
        if (++looks == 1) {
            looked.set_value();
        }
        return all.size() == 2;
    }));

    EXPECT_LT(std::chrono::steady_clock::now() - began, Journal::patience);
    writer.join();
}

TEST_F(JournalTest, oneEntryIsAwaitedWhole)
{
    journal.record(Topic::Log, "first");
    journal.record(Topic::Log, "awaited");

    EXPECT_TRUE(journal.waitForEntry("awaited"));
}

TEST_F(JournalTest, waitsNoLongerThanItsBound)
{
    journal.record(Topic::Log, "awaited or not");

    EXPECT_FALSE(journal.waitForEntry("awaited", std::chrono::milliseconds(1)));
    EXPECT_FALSE(
        journal.waitFor([](const Journal::Entries& all) { return all.size() == 2; }, std::chrono::milliseconds(1)));
}

}  // namespace
}  // namespace ZorvFakes
