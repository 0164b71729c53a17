/// The stored alarm of today: any item of the list is read; what was read is written as a well-formed text, and that text
/// reads as the same alarm, without a complaint.
#include "StoredAlarmChecks.hpp"

using namespace ZorvFuzz;

namespace {

Alarm read(const std::string& text)
{
    Alarm alarm(plainConfig());
    alarm.deserialize_v2(text);
    return alarm;
}

constexpr std::size_t fixedFields = 19;

/// The last of the fixed fields.
std::string writtenCount(const std::string& written)
{
    std::size_t begin = 0;
    for (std::size_t index = 1; index < fixedFields; ++index) {
        begin = written.find(';', begin) + 1;
    }
    return written.substr(begin, written.find(';', begin) - begin);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FmWorld& world = FmWorld::instance();
    const Alarm alarm = read(throughItem(textOf(data, size)));
    world.takeLogs();

    const std::string written = alarm.serialize_v2();
    requireWellFormed(written, fixedFields + 2 * alarm.additionalInfo.size());
    require(writtenCount(written) == std::to_string(alarm.additionalInfo.size()), "the pairs are counted");
    Alarm again = read(written);
    require(world.takeLogs().empty(), "a written text is read without a complaint");
    require(again.stateful, "a stored alarm is stateful");
    require(again.alarmId == alarm.alarmId, "the id is kept");
    require(again.getAdditionalTextForClear() == alarm.getAdditionalTextForClear(), "the text for the clear is kept");
    requireSame(alarm, again);

    read(throughItem(written)).toString();  // as it is cut
    world.takeLogs();
    return 0;
}
