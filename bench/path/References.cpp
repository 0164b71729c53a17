/// What the machine itself allows: the parts of an alarm's handling without the node around them.
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <deque>
#include <stdexcept>

#include "AlarmIndex.hpp"
#include "Figures.hpp"
#include "FmConfig.hpp"
#include "Scenarios.hpp"
#include "Status.hpp"
#include "StoredAlarm.hpp"
#include "stores/StateStore.hpp"

namespace ZorvBench {

namespace {

constexpr std::size_t appendSize = 512;
const char* const alarmList = "FmActiveAlarmList2";
const char* const statusList = "FmStatusSection";

/// Active alarms in memory.
class AlarmsInMemory {
public:
    explicit AlarmsInMemory(std::uint64_t number)
    {
        for (std::uint64_t i = 0; i < number; ++i) {
            ZorvFm::Alarm& alarm = alarms.emplace_back(config);
            alarm.dn = "ManagedElement=1,Equipment=1,Slot=" + std::to_string(i % 16) + ",Port=" + std::to_string(i);
            alarm.majorType = 32473;
            alarm.minorType = 101;
            alarm.additionalText = "no light received for more than ten seconds";
            alarm.severity = YALT_FM_SEVERITY_MAJOR;
            alarm.specificProblem = "Loss of Signal";
            alarm.eventTime = 1714543200000000000 + i;
            alarm.alarmId = i + 1;
            index.add(alarm);
        }
    }

    /// Calls use(stored form, log record) for each alarm, looked up by its identity.
    template <class UseT>
    void each(UseT use)
    {
        for (const ZorvFm::Alarm& identity : alarms) {
            const auto& found = static_cast<const ZorvFm::Alarm&>(*index.find(identity));
            use(ZorvFm::toStoredAlarm(found.serialize_v2()), found.toLogString());
        }
    }

private:
    const ZorvFm::FmConfig config;
    std::deque<ZorvFm::Alarm> alarms;
    ZorvFm::AlarmIndex index;
};

double perSecond(std::uint64_t number, ClockT::time_point begun)
{
    return static_cast<double>(number) / SecondsT(ClockT::now() - begun).count();
}

void measureWithoutAppends(AlarmsInMemory& alarms, std::uint64_t number)
{
    std::size_t bytes = 0;
    const auto begun = ClockT::now();
    alarms.each([&](const auto& stored, const std::string& record) { bytes += stored.size() + record.size(); });
    say("F0", perSecond(number, begun), "/s");
    if (bytes == 0) {
        throw std::runtime_error("nothing was formatted");
    }
}

void measureWithAppends(AlarmsInMemory& alarms, std::uint64_t number)
{
    const ZorvTest::TemporaryDirectory folder;
    const int file = ::open(folder.path("appended").c_str(), O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
    ZorvNode::RotatingFile log(folder.path("alarms.log"), {1000000000, 1});
    const auto begun = ClockT::now();
    alarms.each([&](const auto& stored, const std::string& record) {
        if (::write(file, stored.data(), appendSize) != static_cast<ssize_t>(appendSize) || !log.write(record)) {
            throw std::runtime_error("an append fails");
        }
    });
    say("F1", perSecond(number, begun), "/s");
    ::close(file);
}

}  // namespace

void measureMemoryReference(const Choice& choice)
{
    AlarmsInMemory alarms(choice.alarms);
    measureWithoutAppends(alarms, choice.alarms);
    measureWithAppends(alarms, choice.alarms);
}

/// A raise pushes the alarm and replaces the status; writing the alarm a second time finds it unchanged.
void measureStoreReference(const Choice& choice)
{
    const ZorvTest::TemporaryDirectory folder;
    ZorvNode::StoreSettings settings;
    settings.kind = choice.node.store == "memory" ? ZorvNode::StoreKind::memory : ZorvNode::StoreKind::sqlite;
    settings.directory = folder.path();
    ZorvNode::StateStore store(settings, {64, 1000000, 1U << 20U}, [](std::int32_t, const std::string&) {});
    ZorvNode::ListStorage& lists = store.getLists();
    ZorvFm::StatusSection status{};
    std::uint64_t statusNumber = 0;
    lists.create(statusList, sizeof(status));
    lists.pushBack(statusList, &status, statusNumber);
    lists.create(alarmList, ZorvFm::storedAlarmSize);
    AlarmsInMemory alarms(1);
    ZorvFm::StoredAlarmT data{};
    alarms.each([&](const auto& stored, const std::string&) { data = stored; });
    const auto begun = ClockT::now();
    for (std::uint64_t i = 0; i < choice.alarms; ++i) {
        ++status.lastStatefulSeqNo;
        ZorvNode::ListItem item;
        lists.findFrom(statusList, 0, item);
        lists.replace(statusList, statusNumber, &status);
        std::uint64_t number = 0;
        if (lists.pushBack(alarmList, data.data(), number) != ZORV_RETURN_OK) {
            throw std::runtime_error("the store refuses an item");
        }
        lists.replace(alarmList, number, data.data());
    }
    say(choice.node.store == "memory" ? "store in memory" : "S", perSecond(choice.alarms, begun), "/s");
}

}  // namespace ZorvBench
