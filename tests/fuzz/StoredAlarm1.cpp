/// The stored alarm of earlier releases: any item of the list is read; what was read is written as a well-formed text of
/// that format, and reads as the same alarm. The migration carries it over into the format of today.
#include "StoredAlarmChecks.hpp"

using namespace ZorvFuzz;

namespace {

template <void (Alarm::*reader)(const std::string& text)>
Alarm read(const std::string& text)
{
    Alarm alarm(plainConfig());
    (alarm.*reader)(text);
    return alarm;
}

constexpr std::size_t fixedFields = 17;

void checkRewriting(const Alarm& alarm)
{
    const std::string written = alarm.serialize();
    requireWellFormed(written, fixedFields + 2 * alarm.additionalInfo.size());
    Alarm again = read<&Alarm::deserialize>(written);
    require(FmWorld::instance().takeLogs().empty(), "a written text is read without a complaint");
    require(again.alarmId == alarm.originalSeqNo, "the id is the original sequence number");
    require(again.stateful == alarm.stateful, "stateful or not is kept");
    requireSame(alarm, again);
}

void checkMigration(const Alarm& alarm)
{
    Alarm migrated = read<&Alarm::deserialize_v2>(alarm.serialize_v2());
    require(FmWorld::instance().takeLogs().empty(), "a migrated text is read without a complaint");
    requireSame(alarm, migrated);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Alarm alarm = read<&Alarm::deserialize>(throughItem(textOf(data, size)));
    FmWorld::instance().takeLogs();
    checkRewriting(alarm);
    checkMigration(alarm);
    return 0;
}
