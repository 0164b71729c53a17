/// The life of a node's alarm handling under virtual time, second by second, among the node's own lists and logs: nothing
/// grows beyond its bounds, numbers go beyond 32 bits, local times are right around the changes of the clocks, and the
/// heartbeat is on time.
///
/// How long it lives is settable, ZORV_TEST_DAYS=730, and so is its course: ZORV_TEST_SEED.

#include <algorithm>
#include <cstring>
#include <future>
#include <iostream>
#include <set>

#include "CentralEuropeanTime.hpp"
#include "DailyLoad.hpp"
#include "FmTest.hpp"
#include "FromEnvironment.hpp"
#include "Middleware.hpp"
#include "NbiAlarmList.hpp"
#include "ProcessFigures.hpp"
#include "Status.hpp"
#include "TemporaryDirectory.hpp"
#include "TimeZone.hpp"
#include "YaltOamSpiCmEvent_1.h"
#include "YaltOamSpiNotificationFm_2.h"
#include "ZorvFmComponent.hpp"
#include "ZorvMwSpiLog_1.h"
#include "ZorvOamApiFmHeartbeat_3.h"
#include "ZorvOamApiFmNotification_3.h"
#include "services/log/LogService.hpp"
#include "services/replicatedlist/ReplicatedListTable.hpp"
#include "stores/StateStore.hpp"

namespace ZorvTest {

namespace {

constexpr std::uint64_t nanoseconds = 1000000000;
constexpr std::uint64_t day = 86400;
constexpr std::uint64_t heartbeatInterval = 60;
constexpr std::uint64_t firstNumber = (std::uint64_t{1} << 32U) - 100;
constexpr std::uint64_t silentTime = 60;  // s, of a toggling alarm
constexpr std::uint64_t logSize = 20000;  // bytes, of one file
constexpr std::uint64_t logFiles = 3;     // the present one and two kept
constexpr std::uint64_t longestRecord = 1000;
constexpr std::size_t mostGrowth = 64000;  // bytes

const char* const filters =
    "<ZorvFmComponent><transientRaiseAlarmFilterTime>2</transientRaiseAlarmFilterTime>"
    "<transientCeaseAlarmFilterTime>2</transientCeaseAlarmFilterTime>"
    "<alarmToggleTriggerCount>3</alarmToggleTriggerCount><alarmToggleWindowSize>120</alarmToggleWindowSize>"
    "<alarmToggleSilentTimeout>60</alarmToggleSilentTimeout></ZorvFmComponent>";

/// Midnights, universal time.
constexpr std::uint64_t springOf2026 = 1774569600;  // 27 March, two days before the clocks are put forward
constexpr std::uint64_t autumnOf2026 = 1792713600;  // 23 October, two days before they are put back

ZorvFakes::FmAlarmTypeSpec alarmTypeOf(std::uint32_t minorType, bool isStateful)
{
    ZorvFakes::FmAlarmTypeSpec type;
    type.minorType = minorType;
    type.isStateful = isStateful;
    return type;
}

}  // namespace

class LongLifeTest : public ZorvFm::FmTest {
protected:
    LongLifeTest()
    {
        current = this;
        middleware.portal.offer("ZorvMwReplicatedListService", "ZorvMwSpiReplicatedList", "1",
                                ZorvNode::ReplicatedListTable::table());
        middleware.portal.offer("ZorvMwLogService", "ZorvMwSpiLog", "1", &logTable);
        middleware.journal.showOnly({});
        ZorvFakes::FakeTrace::setLevels(0);
        middleware.fmModel.plant(heartbeatInterval);
        middleware.fmModel.plantType("1", "alarm", alarmTypeOf(DailyLoad::alarmType, true));
        middleware.fmModel.plantType("1", "alert", alarmTypeOf(DailyLoad::alertType, false));
        plantStatus();
        follow(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3, [this](const void*) { noteHeartbeat(); });
        follow(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3, [this](const void* value) {
            noteReport(*static_cast<const ZorvOamApiFmNotificationEventValue_3*>(value));
        });
    }

    ~LongLifeTest() override { current = nullptr; }

    void live(std::uint64_t firstMidnight)
    {
        begin = firstMidnight;
        end = begin + days * day;
        load = std::make_unique<DailyLoad>(begin, seed);
        middleware.clock.turnOn(begin * nanoseconds, begin * nanoseconds);
        middleware.clock.onSelect([this](int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval*) {
            return wait(count, readable, writable, failed);
        });
        component.initialize(folder.write("fm.xml", filters).c_str());
        const auto begun = std::chrono::steady_clock::now();
        component.start(ZORV_STATE_CHANGE_ACTIVATE);
        ended.get_future().wait();
        const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - begun;
        component.stop(ZORV_STATE_CHANGE_DEACTIVATE);
        std::cout << "ZORV_TEST_SEED=" << seed << " days=" << days << " seconds=" << duration.count()
                  << " heartbeats=" << heartbeats << " reports=" << reports << " lastNumber=" << lastNumber
                  << " kilobytes=" << mostAtFirst / 1024 << " then " << mostAtLast / 1024
                  << " latestHeartbeat=" << latestHeartbeat << std::endl;
    }

    void expectBounds() const
    {
        EXPECT_GE(heartbeats, days * day / (heartbeatInterval + 1));
        EXPECT_LE(latestHeartbeat, 1U);
        EXPECT_GT(lastNumber, std::uint64_t{1} << 32U);
        EXPECT_LE(mostAtLast, mostAtFirst + mostGrowth);
        EXPECT_EQ(descriptorsAtFirst, mostDescriptors);
        EXPECT_EQ(threadsAtFirst, mostThreads);
        EXPECT_LE(mostLogSpace, 2 * logFiles * (logSize + longestRecord));
        EXPECT_LE(mostItems, DailyLoad::mostActive + 1);
    }

    /// As the applications left them.
    void expectAlarms() const
    {
        const auto& expected = load->getActive();
        EXPECT_EQ(std::set<std::string>(expected.begin(), expected.end()), active);
    }

    const std::uint64_t seed = fromEnvironment("ZORV_TEST_SEED", 1);
    const std::uint64_t days = fromEnvironment("ZORV_TEST_DAYS", LIFE_DAYS);

private:
    void follow(const char* eventType, const std::function<void(const void*)>& note)
    {
        middleware.router.setRenderer(eventType, [note](const void* value) {
            note(value);
            return std::string();
        });
        middleware.router.addConsumer(eventType);
    }

    void plantStatus()
    {
        const std::string list = "FmStatusSection";
        ZorvMwSpiListNameT listName{static_cast<std::uint16_t>(list.size() + 1), {}};
        std::memcpy(listName.value, list.data(), list.size());
        const ZorvFm::StatusSection section{firstNumber, firstNumber, 0, 0, 0};
        ZorvMwSpiListNameT itemName{};
        lists.create(listName, sizeof(section));
        lists.pushBack(listName, itemName, &section);
        lastNumber = firstNumber;
        lastAlert = firstNumber;
    }

    // --- on the worker's thread

    /// One of the worker's waits: a second, unless something happens at its beginning.
    int wait(int count, fd_set* readable, fd_set* writable, fd_set* failed)
    {
        const std::uint64_t now = middleware.clock.realTime() / nanoseconds;
        if (now >= end) {
            ended.set_value();
            return ZorvFakes::VirtualClock::realSelect(count, readable, writable, failed, nullptr);
        }
        if (now != happened) {
            happened = now;
            if (letHappen(now)) {
                return 1;  // the component's callbacks have filled its pipe
            }
        }
        middleware.clock.advance(std::chrono::seconds(1));
        FD_ZERO(readable);
        return 0;
    }

    bool letHappen(std::uint64_t now)
    {
        if ((now - begin) % day == day / 2) {
            takeFigures(now);
        }
        // In the last minutes nothing begins that would not be over at the end.
        std::vector<Occurrence> all = now + 2 * silentTime < end ? load->at(now) : std::vector<Occurrence>();
        for (const Occurrence& occurrence : all) {
            YaltOamSpiNotificationFmStruct_2 notification{occurrence.dn.c_str(),
                                                          1,
                                                          occurrence.minorType,
                                                          middleware.clock.realTime() + now % 1000 * 1000000,
                                                          "no light",
                                                          occurrence.isRaise ? 4 : 0};
            middleware.router.fire(YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2, &notification);
        }
        if ((now - begin) % day == 0) {
            YaltOamSpiCmEvent_Notification_1T change{};
            middleware.router.fire(YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1, &change);
            return true;
        }
        return !all.empty();
    }

    void takeFigures(std::uint64_t now)
    {
        std::vector<ZorvFm::AlarmData> visible;
        ZorvFm::NbiAlarmList::getAlarms(visible);
        EXPECT_LE(visible.size(), DailyLoad::mostActive + 1);
        for (const auto& list : store.getLists().describeAll()) {
            mostItems = std::max(mostItems, list.numberOfItems);
        }
        mostLogSpace = std::max(mostLogSpace, bytesIn(logFolder.path()));
        descriptorsAtFirst = descriptorsAtFirst == 0 ? openDescriptors() : descriptorsAtFirst;
        threadsAtFirst = threadsAtFirst == 0 ? runningThreads() : threadsAtFirst;
        mostDescriptors = std::max(mostDescriptors, openDescriptors());
        mostThreads = std::max(mostThreads, runningThreads());
        const std::uint64_t thirds = 3 * (now - begin) / (end - begin);
        std::size_t& most = thirds < 2 ? mostAtFirst : mostAtLast;
        most = std::max(most, allocatedBytes());
    }

    void noteHeartbeat()
    {
        const std::uint64_t now = middleware.clock.monotonic() / nanoseconds;
        if (heartbeats > 0) {
            const std::uint64_t late = now - lastHeartbeat - heartbeatInterval;
            EXPECT_GE(now, lastHeartbeat + heartbeatInterval);
            latestHeartbeat = std::max(latestHeartbeat, late);
        }
        lastHeartbeat = now;
        ++heartbeats;
    }

    void noteReport(const ZorvOamApiFmNotificationEventValue_3& report)
    {
        ++reports;
        std::uint64_t& last = report.stateful ? lastNumber : lastAlert;
        EXPECT_EQ(last + 1, report.seqNo);
        last = report.seqNo;
        const std::string dn = report.alarm->dn;
        if (report.stateful && report.alarm->severity != 0) {
            active.insert(dn);
        } else {
            active.erase(dn);
        }
        const std::string tag = report.stateful ? "Alarm" : "Alert";
        EXPECT_EQ("<FmLogRecord>\n   <LogTimestamp>" + localText(middleware.clock.realTime()) +
                      "</LogTimestamp>\n   <" + tag + ">" + (report.stateful ? "1;" : "0;") +
                      localText(report.alarm->eventTime) + ";" + dn + ";1;",
                  lastRecord.substr(0, lastRecord.find(";1;") + 3));
    }

    ZorvReturnT write(const char* name, std::int32_t level, const char* text)
    {
        lastRecord = std::string(name) == ZORV_LOG_ALARM ? text : lastRecord;
        return logs.write(name, level, text);
    }

    static ZorvReturnT getLogLevel(const char* name, const std::int32_t** level)
    {
        return current->logs.getLevel(name, level);
    }

    static ZorvReturnT writeLog(const char* name, std::int32_t level, const char* text)
    {
        return current->write(name, level, text);
    }

    static inline LongLifeTest* current = nullptr;
    static constexpr ZorvMwSpiLog_1T logTable = {getLogLevel, writeLog};

    const TemporaryDirectory folder;
    const TemporaryDirectory logFolder;
    const ZorvFm::TimeZone zone{"CET-1CEST,M3.5.0,M10.5.0/3"};
    ZorvNode::LogService logs{logFolder.path(), ZORV_LOG_INFORMATION, {logSize, logFiles - 1}};
    ZorvNode::StateStore store{{ZorvNode::StoreKind::memory, {}, {}, {}}, {}, [](std::int32_t, const std::string&) {}};
    ZorvNode::ReplicatedListService lists{store.getLists()};
    const ZorvNode::ReplicatedListTable listTable{lists};
    ZorvFm::ZorvFmComponent& component = ZorvFm::ZorvFmComponent::instance();
    std::promise<void> ended;

    // The worker's, until it has ended.
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::uint64_t happened = 0;
    std::unique_ptr<DailyLoad> load;
    std::set<std::string> active;
    std::string lastRecord;
    std::uint64_t lastNumber = 0;
    std::uint64_t lastAlert = 0;
    std::uint64_t lastHeartbeat = 0;
    std::uint64_t latestHeartbeat = 0;
    std::uint64_t heartbeats = 0;
    std::uint64_t reports = 0;
    std::size_t mostAtFirst = 0;
    std::size_t mostAtLast = 0;
    std::size_t mostItems = 0;
    std::size_t mostLogSpace = 0;
    std::size_t descriptorsAtFirst = 0;
    std::size_t mostDescriptors = 0;
    std::size_t threadsAtFirst = 0;
    std::size_t mostThreads = 0;
};

TEST_F(LongLifeTest, throughTheBeginningOfSummerTime)
{
    live(springOf2026);

    expectBounds();
    expectAlarms();
}

TEST_F(LongLifeTest, throughItsEnd)
{
    live(autumnOf2026);

    expectBounds();
    expectAlarms();
}

}  // namespace ZorvTest
