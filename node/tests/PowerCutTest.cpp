/// The power of a disk is cut at any point of a run: the store opens, and holds what it held at some earlier point.

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>

#include "FaultyDisk.hpp"
#include "FromEnvironment.hpp"
#include "ListText.hpp"
#include "LogRecorder.hpp"
#include "TemporaryDirectory.hpp"
#include "stores/SqliteListStorage.hpp"

namespace ZorvNode {

namespace {

constexpr std::uint32_t itemSize = 700;

/// What a change has left behind, and how many steps of the disk there were by then.
struct Moment {
    std::string lists;
    std::size_t steps;
};

}  // namespace

class PowerCutTest : public ::testing::TestWithParam<Durability> {
protected:
    struct Store {
        Store(const std::string& file, const LogSinkT& log, Durability durability)
            : database(file, storeSchema(), settingsFor(durability), log),
              lists(database, {})
        {
        }

        static DatabaseSettings settingsFor(Durability durability)
        {
            DatabaseSettings settings;
            settings.durability = durability;
            settings.checkpoints.pages = 8;
            settings.checkpoints.urgentPages = 16;
            settings.checkpoints.pause = std::chrono::milliseconds(0);
            return settings;
        }

        Database database;
        SqliteListStorage lists;
    };

    PowerCutTest() { Store(directory.write("zorv.db", ""), log.sink(), GetParam()); }

    /// Without what only makes the items large.
    static std::string textOf(ListStorage& lists)
    {
        std::string text = toText(lists, "alarms") + "; " + toText(lists, "status");
        text.erase(std::remove(text.begin(), text.end(), '.'), text.end());
        return text;
    }

    void change(ListStorage& lists, unsigned step)
    {
        std::string data = std::to_string(step);
        data.resize(itemSize, '.');
        ListItem item;
        const bool isThere = lists.findFrom("alarms", step / 2, item) == ZORV_RETURN_OK;
        if (step == 1) {
            lists.create("alarms", itemSize);
        } else if (step == 2) {
            lists.create("status", 4);
        } else if (step == 3) {
            push(lists, "status", "0000");
        } else if (step % 3 == 0 && isThere) {
            lists.replace("alarms", item.number, data.data());
        } else if (step % 5 == 0 && isThere) {
            lists.erase("alarms", item.number);
        } else {
            push(lists, "alarms", data);
        }
    }

    /// A run on a faulty disk, moment by moment.
    void run(const FaultyDisk& disk, unsigned changes)
    {
        Store store(directory.path("zorv.db"), log.sink(), GetParam());
        moments.push_back({textOf(store.lists), disk.getNumberOfSteps()});
        for (unsigned step = 1; step <= changes; ++step) {
            change(store.lists, step);
            moments.push_back({textOf(store.lists), disk.getNumberOfSteps()});
        }
    }

    /// What a store in this file holds, or why it cannot be opened.
    std::string contentsOf(const std::string& file)
    {
        try {
            Store store(file, log.sink(), GetParam());
            return textOf(store.lists);
        } catch (const StoreError& e) {
            return e.what();
        }
    }

    /// What a store may hold whose power was cut after so many steps of the disk.
    std::vector<std::string> allowedAfter(const FaultyDisk& disk, std::size_t steps) const
    {
        const std::size_t safe = GetParam() == Durability::power ? steps : disk.lastSyncOfLog(steps);
        std::vector<std::string> allowed;
        for (std::size_t moment = completeBy(safe); moment <= completeBy(steps) + 1 && moment < moments.size();
             ++moment) {
            allowed.push_back(moments[moment].lists);
        }
        return allowed;
    }

    /// The last moment that was complete by then.
    std::size_t completeBy(std::size_t steps) const
    {
        std::size_t moment = 0;
        for (std::size_t index = 0; index < moments.size() && moments[index].steps <= steps; ++index) {
            moment = index;
        }
        return moment;
    }

    const ZorvTest::TemporaryDirectory directory;
    LogRecorder log;
    std::vector<Moment> moments;
};

TEST_P(PowerCutTest, atAnyPointLeavesAnEarlierMoment)
{
    const auto cuts = ZorvTest::fromEnvironment("ZORV_TEST_POWER_CUTS", 250);
    const std::map<std::string, std::string> before = {{"zorv.db", directory.read("zorv.db")}};
    FaultyDisk disk;
    run(disk, 60);
    disk.release();
    std::mt19937 dice(static_cast<unsigned>(ZorvTest::fromEnvironment("ZORV_TEST_SEED", 17)));

    for (std::size_t cut = 0; cut < cuts; ++cut) {
        const std::size_t steps = dice() % (disk.getNumberOfSteps() + 1);
        const ZorvTest::TemporaryDirectory after;
        disk.cutPower(steps, before, dice, after.path(""));
        ASSERT_THAT(allowedAfter(disk, steps), ::testing::Contains(contentsOf(after.path("zorv.db"))))
            << "cut " << cut << " after step " << steps;
    }
}

INSTANTIATE_TEST_SUITE_P(With, PowerCutTest, ::testing::Values(Durability::process, Durability::power),
                         [](const auto& run) {
                             return std::string(run.param == Durability::power ? "power" : "process");
                         });

}  // namespace ZorvNode
