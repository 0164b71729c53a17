/// The stored status: any item is taken as five numbers; each recorded notification makes its number grow by exactly one
/// and leaves the other alone, in memory and in the list.
#include "Status.hpp"

#include <cstring>

#include "FmWorld.hpp"
#include "FuzzTarget.hpp"
#include "InputBytes.hpp"

using namespace ZorvFuzz;
using ZorvFm::Status;
using ZorvFm::StatusSection;

namespace {

constexpr const char* listName = "FmStatusSection";

std::string bytesOf(const StatusSection& section)
{
    std::string bytes(sizeof section, '\0');
    std::memcpy(bytes.data(), &section, sizeof section);
    return bytes;
}

/// A planted item is filled up with zeros, or cut.
StatusSection expectedOf(const std::string& item)
{
    StatusSection section;
    std::memcpy(&section, (item + std::string(sizeof section, '\0')).data(), sizeof section);
    return section;
}

void record(Status& status, StatusSection& expected, std::uint8_t kind, std::uint64_t time)
{
    expected.lastNotificationCheck = time;
    switch (kind % 3) {
    case 0:
        expected.lastStatefulTimestamp = time;
        ++expected.lastStatefulSeqNo;
        status.updateStateful(time);
        break;
    case 1:
        expected.lastStatelessTimestamp = time;
        ++expected.lastStatelessSeqNo;
        status.updateStateless(time);
        break;
    default:
        status.updateNotificationCheck(time);
        break;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FmWorld& world = FmWorld::instance();
    const std::string item = textOf(data, std::min(size, sizeof(StatusSection)));
    InputBytes recorded(data + item.size(), size - item.size());
    StatusSection expected = expectedOf(item);
    world.lists.plant(listName, item, sizeof(StatusSection));

    Status status;
    status.initialize();
    require(!status.isColdStart(), "a stored status makes no cold start");
    requireEqual(bytesOf(expected), bytesOf(status.get()), "the stored numbers are read");
    while (!recorded.isEmpty()) {
        const auto kind = recorded.number<std::uint8_t>();
        record(status, expected, kind, recorded.number<std::uint64_t>());
        requireEqual(bytesOf(expected), bytesOf(status.get()), "a number grows by one, the other stays");
        requireEqual(bytesOf(expected), world.lists.bytes(listName).at(0), "what is in memory is in the list");
    }
    require(status.getNextStatefulSeqNo() == expected.lastStatefulSeqNo + 1,
            "the next number is the last one plus one");

    ZorvFm::ReplicatedList list(listName);
    list.open();
    list.remove();
    world.takeLogs();
    return 0;
}
