#include "ListFormatMigration.hpp"

#include "Alarm.hpp"
#include "AlarmListWalk.hpp"
#include "Logging.hpp"

namespace ZorvFm {
namespace {

/// An alarm of the earlier list is known by its original sequence number; the present format holds stateful alarms only.
ZorvReturnT moveItem(const ReplicatedList& newList, ZorvMwSpiListNameT& itemName, const StoredAlarmT& data,
                     const FmConfig& config)
{
    Alarm alarm(config);
    alarm.deserialize(fromStoredAlarm(data));
    alarm.alarmId = alarm.originalSeqNo;
    alarm.stateful = true;
    alarm.itemName = itemName;
    const ZorvReturnT result = newList.pushBack(itemName, toStoredAlarm(alarm.serialize_v2()).data());
    ZORV_TRACE("listPushBack, %d", result);
    return result;
}

/// True when every item was pushed.
bool moveItems(const ReplicatedList& newList, const ReplicatedList& legacyList, const FmConfig& config)
{
    AlarmListWalk walk(legacyList);
    ZorvMwSpiListNameT itemName{};
    StoredAlarmT data{};
    while (walk.next(itemName, data)) {
        if (moveItem(newList, itemName, data, config) != ZORV_RETURN_OK) {
            return false;
        }
    }
    return walk.isOpen();
}

bool migrate(const ReplicatedList& newList, const ReplicatedList& legacyList, const FmConfig& config)
{
    newList.attach();
    if (!moveItems(newList, legacyList, config)) {
        return false;
    }
    const ZorvReturnT result = legacyList.remove();
    ZORV_TRACE("listDelete, %d", result);
    return result == ZORV_RETURN_OK;
}

}  // namespace

int migrateToNewRlFormat(const ReplicatedList& newList, const ReplicatedList& legacyList, const FmConfig& config)
{
    try {
        if (migrate(newList, legacyList, config)) {
            return 0;
        }
        ZORV_WARNING("Failed to migrate replicated list to the new format");
    } catch (const std::exception& e) {
        ZORV_ERROR("Caught exception during alarm list migration: '%s'", e.what());
    }
    return -1;
}

}  // namespace ZorvFm
