#include "FmMoImpl.hpp"

#include <malloc.h>

#include <atomic>
#include <set>
#include <thread>

#include "MoImplTest.hpp"

using testing::ElementsAre;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

/// The component as the middleware sees it: registered, started, reached through its tables.
class FmMoImplTest : public FmTest {
protected:
    FmMoImplTest()
    {
        component.open(*middleware.accessor(), "");
        journal();
    }

    ~FmMoImplTest() override
    {
        component.stop(ZORV_STATE_CHANGE_DEACTIVATE);
        component.close();
    }

    template <class TableT>
    const TableT& table(const char* name)
    {
        const void* found = nullptr;
        EXPECT_EQ(0, middleware.portal.getInterface("ZorvFmMoImplComponent", name, nullptr, &found));
        return *static_cast<const TableT*>(found);
    }

    const YaltOamSpiManagedObject_3T& objects() { return table<YaltOamSpiManagedObject_3T>("YaltOamSpiManagedObject"); }

    const YaltOamSpiTransactionalResource_1T& resource()
    {
        return table<YaltOamSpiTransactionalResource_1T>("YaltOamSpiTransactionalResource");
    }

    TestAlarms alarms;
    FmMoImpl& component = FmMoImpl::instance();
};

// --- Life-cycle

TEST_F(FmMoImplTest, initializeAndTerminateDoNothing)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    EXPECT_EQ(0, component.initialize("file.xml"));
    EXPECT_EQ(0, component.initialize(nullptr));
    EXPECT_EQ(0, component.terminate());

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> ", "trace 8 FM  << ", "trace 8 FM  >> ", "trace 8 FM  << ",
                                       "trace 8 FM  >> ", "trace 8 FM  << "));
}

TEST_F(FmMoImplTest, startFindsTheTransactionService)
{
    middleware.journal.show({Topic::Trace, Topic::Lookup});

    EXPECT_EQ(0, component.start(ZORV_STATE_CHANGE_SWITCH_OVER));

    EXPECT_THAT(journal(),
                ElementsAre("trace 8 FM  >> Reason: 4", "trace 8 FM  >> Try to get interface YaltOamSpiTransaction",
                            "getInterface YaltOamSpiTransactionService YaltOamSpiTransaction 1 -> 0",
                            "trace 8 FM  << "));
}

TEST_F(FmMoImplTest, withoutATransactionServiceTheStartFails)
{
    middleware.portal.withdraw("YaltOamSpiTransaction");

    EXPECT_EQ(-1, component.start(ZORV_STATE_CHANGE_ACTIVATE));

    EXPECT_THAT(journal(), ElementsAre("log 3 Failed to get interface YaltOamSpiTransaction"));
    EXPECT_EQ(-1, resource().join(1));
}

TEST_F(FmMoImplTest, theStartedComponentTakesPartInTransactions)
{
    component.start(ZORV_STATE_CHANGE_ACTIVATE);
    journal();
    const unsigned long txHandle = middleware.transactions.open();

    EXPECT_EQ(0, resource().join(txHandle));
    EXPECT_EQ(0, middleware.transactions.abortTransaction(txHandle));

    EXPECT_THAT(journal(), ElementsAre("registerParticipant -> 0", "abortTransaction -> 0"));
}

TEST_F(FmMoImplTest, theStoppedComponentTakesPartInNoTransaction)
{
    component.start(ZORV_STATE_CHANGE_ACTIVATE);
    middleware.journal.show({Topic::Trace});
    journal();

    EXPECT_EQ(0, component.stop(ZORV_STATE_CHANGE_FAIL_OVER));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Reason: 3", "trace 8 FM  << "));

    EXPECT_EQ(-1, resource().join(middleware.transactions.open()));
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> txHandle='1'", "log 3 Failed to registerParticipant"));
}

TEST_F(FmMoImplTest, canBeStartedAgain)
{
    component.start(ZORV_STATE_CHANGE_ACTIVATE);
    component.stop(ZORV_STATE_CHANGE_DEACTIVATE);

    EXPECT_EQ(0, component.start(ZORV_STATE_CHANGE_FAIL_OVER));

    EXPECT_EQ(0, resource().join(middleware.transactions.open()));
}

// --- The tables

TEST_F(FmMoImplTest, theTablesReachTheImplementer)
{
    alarms.set({alarmWithId(6, "six")});
    std::uint64_t iterator = 0;
    const char* name = nullptr;
    bool exists = false;
    std::uint64_t count = 1;
    YaltOamSpiMoAttributeResult_3T result{};
    YaltOamSpiMoAttributesResult_3T results{};
    const char* const names[] = {"fmAlarmId", nullptr};

    EXPECT_EQ(0, objects().newMoIterator(1, "", "FmAlarm", &iterator));
    EXPECT_EQ(0, objects().nextMo(iterator, &name));
    EXPECT_STREQ("FmAlarm=6", name);
    EXPECT_EQ(0, objects().finalizeMoIterator(iterator));
    EXPECT_EQ(0, objects().existsMo(1, name, &exists));
    EXPECT_TRUE(exists);
    EXPECT_EQ(0, objects().countMoChildren(1, name, "", &count));
    EXPECT_EQ(0U, count);
    EXPECT_EQ(0, objects().getMoAttribute(1, name, "additionalText", &result));
    EXPECT_STREQ("six", result.attribute->values[0].stringValue);
    EXPECT_EQ(0, objects().getMoAttributes(1, name, names, &results));
    EXPECT_EQ(1U, results.numberOfAttributes);
    EXPECT_EQ(-1, objects().setMoAttribute(1, name, "additionalText", nullptr));
    EXPECT_EQ(-1, objects().createMo(1, "", "FmAlarm", "1", nullptr, 0));
    EXPECT_EQ(-1, objects().deleteMo(1, name));
    EXPECT_EQ(-2, objects().action(1, name, "clear", nullptr, 0, &result));
    EXPECT_EQ(0, resource().prepare(1));
    EXPECT_EQ(0, resource().commit(1));
    EXPECT_EQ(0, resource().finish(1));
    EXPECT_EQ(-2, objects().nextMo(iterator, &name));
}

TEST_F(FmMoImplTest, theComponentHandsOutItsImplementer)
{
    alarms.set({alarmWithId(6)});
    bool exists = false;

    EXPECT_EQ(0, component.getAlarmMoImpl().existsMo(1, "FmAlarm=6", &exists));

    EXPECT_TRUE(exists);
    component.getAlarmMoImpl().finish(1);
}

// --- Many transactions

TEST_F(FmMoImplTest, finishedTransactionsLeaveNoMemoryBehind)
{
    alarms.set({alarmWithId(6, std::string(1000, 'x'))});
    const auto transact = [this](unsigned long txHandle) {
        std::uint64_t iterator = 0;
        const char* name = nullptr;
        YaltOamSpiMoAttributeResult_3T result{};
        objects().newMoIterator(txHandle, "", "FmAlarm", &iterator);
        objects().newMoIterator(txHandle, "", "FmAlarm", &iterator);
        objects().nextMo(iterator, &name);
        objects().getMoAttribute(txHandle, name, "additionalInfo", &result);
        (txHandle % 2 == 0 ? resource().finish : resource().abort)(txHandle);
    };
    transact(1);
    const std::size_t before = mallinfo2().uordblks;

    for (unsigned long txHandle = 2; txHandle < 1000; ++txHandle) {
        transact(txHandle);
    }

    EXPECT_LT(mallinfo2().uordblks, before + 50000);
}

TEST_F(FmMoImplTest, transactionsOnSeveralThreadsSeeOneStateEach)
{
    constexpr std::size_t numberOfAlarms = 20;
    const auto setGeneration = [this](int generation) {
        std::vector<AlarmData> state;
        for (std::uint64_t id = 1; id <= numberOfAlarms; ++id) {
            state.push_back(alarmWithId(id, "generation " + std::to_string(generation)));
        }
        alarms.set(state);
    };
    setGeneration(0);
    const YaltOamSpiManagedObject_3T& table = objects();
    const YaltOamSpiTransactionalResource_1T& participant = resource();
    std::atomic<int> wrong{0};

    const auto read = [&](unsigned long txHandle) {
        std::uint64_t iterator = 0;
        const char* name = nullptr;
        std::vector<std::string> texts;
        table.newMoIterator(txHandle, "", "FmAlarm", &iterator);
        while (table.nextMo(iterator, &name) == 0) {
            YaltOamSpiMoAttributeResult_3T result{};
            const YaltReturnT code = table.getMoAttribute(txHandle, name, "additionalText", &result);
            texts.emplace_back(code == 0 ? result.attribute->values[0].stringValue : "unreadable");
        }
        wrong += texts.size() == numberOfAlarms && std::set<std::string>(texts.begin(), texts.end()).size() == 1 &&
                         texts[0] != "unreadable"
                     ? 0
                     : 1;
        participant.finish(txHandle);
    };
    std::vector<std::thread> threads;
    for (unsigned long t = 1; t <= 4; ++t) {
        threads.emplace_back([&read, t] {
            for (unsigned long i = 0; i < 100; ++i) {
                read(1000 * t + i);
            }
        });
    }
    for (int generation = 1; generation < 200; ++generation) {
        setGeneration(generation);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(0, wrong);
}

}  // namespace
}  // namespace ZorvFm
