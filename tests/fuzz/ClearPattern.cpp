/// A clear's DN against the list of active alarms: it finds the alarms of exactly this DN, or else those whose DN it matches
/// as a pattern, in the order of the list. A pattern that is refused is told, and finds none.
#include <regex.h>

#include <algorithm>
#include <array>

#include "AlarmList.hpp"
#include "FmWorld.hpp"
#include "FuzzTarget.hpp"
#include "InputBytes.hpp"
#include "RegularExpression.hpp"
#include "StoredAlarmChecks.hpp"

using namespace ZorvFuzz;
using ZorvFm::AlarmData;
using ZorvFm::AlarmList;

namespace {

const std::array<const char*, 5> dns = {"ManagedElement=1,Slot=2,Port=4", "ManagedElement=1,Slot=2",
                                        "ManagedElement=1,Slot=2,Port=4", "A=(b)*[c]{2}", ""};

AlarmData alarmAt(const std::string& dn)
{
    AlarmData alarm;
    alarm.dn = dn;
    alarm.majorType = 32473;
    return alarm;
}

/// One alarm for each DN, and one of another type that nothing may find.
AlarmList& activeAlarms()
{
    static AlarmList list(plainConfig());
    static const bool isFilled = [] {
        for (const char* dn : dns) {
            list.createAlarm(alarmAt(dn));
        }
        AlarmData other = alarmAt(dns[0]);
        other.minorType = 1;
        return list.createAlarm(other) != nullptr;
    }();
    require(isFilled, "there are alarms");
    return list;
}

std::string expectedOf(const std::string& dn)
{
    const bool isExact = std::find(dns.begin(), dns.end(), dn) != dns.end();
    const Zorv::RegularExpression expression(dn, REG_EXTENDED | REG_NOSUB);
    std::string found;
    for (const char* candidate : dns) {
        if (isExact ? candidate == dn : expression.match(candidate)) {
            found += std::string(candidate) + "\n";
        }
    }
    require(isExact || expression.isExpressionValid() || found.empty(), "a refused pattern finds nothing");
    return found;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FmWorld& world = FmWorld::instance();
    const std::string dn = InputBytes(data, size).text();  // as a notification brings it
    std::list<Alarm*> alarms;
    activeAlarms().findAlarms(alarmAt(dn), alarms);
    const auto logs = world.takeLogs();
    std::string found;
    for (const Alarm* alarm : alarms) {
        found += alarm->dn + "\n";
    }
    requireEqual(expectedOf(dn), found, "a clear finds the alarms it is for");
    require(logs.empty() || found.empty(), "what is told has found nothing");
    return 0;
}
