#include "ActiveAlarms.hpp"

#include <cstdio>
#include <stdexcept>

#include "ManyTypes.hpp"
#include "SkippedTime.hpp"

namespace ZorvBench {

namespace {

constexpr std::uint64_t stride = 7919;                    // a prime, so that it comes to every number
constexpr std::uint64_t firstTime = 1714543200000000000;  // ns
constexpr std::uint64_t timeBetween = 1000000;            // ns
const char* const texts[] = {"no light received for more than ten seconds",
                             "no light received for more than one minute"};

std::string dnOf(std::uint64_t number)
{
    char dn[64];
    std::snprintf(dn, sizeof(dn), "ManagedElement=1,Equipment=1,Slot=1,Port=%07u", static_cast<unsigned>(number));
    return dn;
}

}  // namespace

ActiveAlarms::ActiveAlarms(std::uint64_t number) : handler(config, connector, status), textOf(number)
{
    status.initialize();
    handler.initialize();
    for (std::uint64_t i = 0; i < number; ++i) {
        raise(i);
    }
    if (countActive() != number) {
        throw std::runtime_error("not all alarms have become active");
    }
}

std::uint64_t ActiveAlarms::countActive()
{
    std::uint32_t total = 0;
    std::uint32_t others = 0;
    handler.countAlarmSummaries(total, others, others, others, others);
    return total;
}

std::uint64_t ActiveAlarms::next()
{
    last = (last + stride) % size();
    return last;
}

void ActiveAlarms::raise(std::uint64_t number)
{
    handle(dnOf(number), number, YALT_FM_SEVERITY_MAJOR, number < size() && textOf[number]);
}

void ActiveAlarms::update(std::uint64_t number)
{
    textOf[number] = !textOf[number];
    raise(number);
}

void ActiveAlarms::clear(std::uint64_t number)
{
    handle(dnOf(number), number, YALT_FM_SEVERITY_CLEARED, false);
}

void ActiveAlarms::clearTen(std::uint64_t number)
{
    std::string pattern = dnOf(number);
    pattern.back() = '.';
    handle(pattern, number, YALT_FM_SEVERITY_CLEARED, false);
}

bool ActiveAlarms::lookUp(std::uint64_t number)
{
    return handler.isUpdateAlarm(notify(dnOf(number), number, YALT_FM_SEVERITY_MAJOR, textOf[number]));
}

void ActiveAlarms::tick()
{
    skipTime(std::chrono::seconds(1));
    handler.tickAllAlarms();
}

/// What router callback and worker do with a notification.
void ActiveAlarms::handle(const std::string& dn, std::uint64_t number, std::int32_t severity, bool isSecondText)
{
    ZorvFm::AlarmData data = notify(dn, number, severity, isSecondText);
    connector.updateAlarm(data);
    if (handler.isUpdateAlarm(data)) {
        handler.handleAlarmNotif(data);
    }
}

ZorvFm::AlarmData ActiveAlarms::notify(const std::string& dn, std::uint64_t number, std::int32_t severity,
                                       bool isSecondText)
{
    return ZorvFm::AlarmData(YaltOamSpiNotificationFmStruct_4{dn.c_str(),
                                                              majorTypeOfMany,
                                                              typeOfMany(number % size()),
                                                              firstTime + ++notifications * timeBetween,
                                                              texts[isSecondText ? 1 : 0],
                                                              severity,
                                                              {nullptr, 0}});
}

}  // namespace ZorvBench
