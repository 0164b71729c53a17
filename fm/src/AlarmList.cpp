#include "AlarmList.hpp"

#include <regex.h>

#include <algorithm>
#include <cassert>
#include <optional>

#include "AlarmListWalk.hpp"
#include "FmConfig.hpp"
#include "ListFormatMigration.hpp"
#include "Logging.hpp"
#include "RegularExpression.hpp"

namespace ZorvFm {

AlarmList::AlarmList(const FmConfig& componentConfig)
    : currentList("FmActiveAlarmList2"),
      legacyList("FmActiveAlarmList"),
      config(componentConfig)
{
}

AlarmList::~AlarmList()
{
    clearAlarms();
}

void AlarmList::initialize()
{
    const Lock lock(*this);
    clearAlarms();
    currentList.open();
    legacyList.openLike(currentList);
    createReplicatedList(currentList);
    bool legacyIsEmpty = false;
    if (legacyList.isEmpty(legacyIsEmpty, false) == ZORV_RETURN_OK && !legacyIsEmpty &&
        migrateToNewRlFormat(currentList, legacyList, config) != 0) {
        ZORV_ERROR("Migration from old replicated list to new format failed");
    }
    RecoveredT recovered;
    recoverAlarms(currentList, recovered);
    for (std::unique_ptr<Alarm>& alarm : recovered) {
        assignAlarmId(*alarm);  // one that a damaged item has lost; the others keep theirs
        index.add(*alarm);
        static_cast<void>(alarm.release());
    }
}

/// An existing list is as good as a new one: it has survived a restart.
void AlarmList::createReplicatedList(const ReplicatedList& list)
{
    const ZorvReturnT result = list.create(storedAlarmSize);
    if (result == ZORV_RETURN_NO_RESOURCES) {
        ZORV_ERROR("Replicated List %s listCreate reports no resources ( %d )", list.getName(), result);
    } else if (result != ZORV_RETURN_OK && result != ZORV_RETURN_EXISTS) {
        ZORV_ERROR("Replicated List %s listCreate failed: %d", list.getName(), result);
    }
}

void AlarmList::recoverAlarms(const ReplicatedList& list, RecoveredT& recovered)
{
    bool complete = false;
    try {
        AlarmListWalk walk(list);
        ZorvMwSpiListNameT itemName{};
        StoredAlarmT data{};
        while (walk.next(itemName, data)) {
            auto alarm = std::make_unique<Alarm>(config);
            alarm->deserialize_v2(fromStoredAlarm(data));
            alarm->itemName = itemName;
            highestAlarmId = std::max(highestAlarmId, alarm->alarmId);
            recovered.push_back(std::move(alarm));
        }
        complete = walk.isOpen();
    } catch (const std::exception& e) {
        ZORV_ERROR("Caught exception during alarm list retrieval: '%s'", e.what());
    }
    ZORV_INFORMATION("Active Alarm List recovered, %d", static_cast<int>(recovered.size()));
    if (!complete) {
        ZORV_WARNING("Failed to copy Active AlarmData List");
    }
}

Alarm* AlarmList::createAlarm(const AlarmData& data)
{
    const Lock lock(*this);
    auto alarm = std::make_unique<Alarm>(config);
    alarm->init(data);
    assignAlarmId(*alarm);
    index.add(*alarm);
    ZORV_TRACE("Added alarm to active alarm list: '%s', listSize :%d", alarm->toString().c_str(),
               static_cast<int>(index.getAlarms().size()));
    return alarm.release();
}

void AlarmList::assignAlarmId(Alarm& alarm)
{
    const Lock lock(*this);
    if (alarm.alarmId == 0) {
        alarm.alarmId = ++highestAlarmId;
    } else {
        highestAlarmId = std::max(highestAlarmId, alarm.alarmId);
    }
}

void AlarmList::saveAlarm(Alarm& alarm)
{
    saveAlarm(alarm, currentList);
}

void AlarmList::saveAlarm(Alarm& alarm, const ReplicatedList& list)
{
    // The assertion's text is known outside, its blanks are not to be tidied.
    // clang-format off
    assert(alarm.alarmId>0);
    // clang-format on
    const Lock lock(*this);
    if (AlarmIndex::contains(alarm)) {
        index.update(alarm);
    }
    const StoredAlarmT data = toStoredAlarm(alarm.serialize_v2());
    if (alarm.itemName.length == 0) {
        ZorvMwSpiListNameT itemName{};
        const ZorvReturnT result = list.pushBack(itemName, data.data());
        ZORV_TRACE("listPushBack retval=%d ", result);
        if (result == ZORV_RETURN_OK) {
            alarm.itemName = itemName;
        } else {
            ZORV_ERROR("Failed to push back alarm to replicated list! retval=%d '%s'", result,
                       alarm.toString().c_str());
        }
    } else {
        const ZorvReturnT result = list.replace(alarm.itemName, data.data());
        ZORV_TRACE("listReplaceItem retval=%d ", result);
        if (result != ZORV_RETURN_OK) {
            ZORV_ERROR("Failed to save alarm in replicated list! retval=%d '%s'", result, alarm.toString().c_str());
        }
    }
}

Alarm* AlarmList::findAlarm(const AlarmData& identity)
{
    const Lock lock(*this);
    return index.find(identity);
}

void AlarmList::findAlarms(const AlarmData& pattern, std::list<Alarm*>& found)
{
    const Lock lock(*this);
    std::list<Alarm*> matching;
    index.findAll(pattern, matching);
    if (matching.empty()) {
        findMatching(pattern, matching);
    }
    ZORV_TRACE("Found %d alarms", static_cast<int>(matching.size()));
    found.splice(found.end(), matching);
}

void AlarmList::findMatching(const AlarmData& pattern, std::list<Alarm*>& found) const
{
    std::optional<Zorv::RegularExpression> expression;  // compiled when the first candidate turns up
    for (Alarm* const alarm : index.getAlarmsOfType(pattern.majorType, pattern.minorType)) {
        ZORV_TRACE("majorType and minorType match found. Using DN as regular expression...");
        if (!expression) {
            expression.emplace(pattern.dn, REG_EXTENDED | REG_NOSUB);
        }
        if (!expression->isExpressionValid()) {
            ZORV_ERROR("DnUtil::doRegexp, regcomp failed for DN: %s :%s", pattern.dn.c_str(),
                       expression->getErrorText().c_str());
        } else if (expression->match(alarm->dn)) {
            found.push_back(alarm);
        }
    }
}

ZorvReturnT AlarmList::deleteAlarm(const Alarm& alarm)
{
    const Lock lock(*this);
    ZORV_TRACE(" >> eraseAlarm alarms, size: %d, %s", static_cast<int>(index.getAlarms().size()),
               alarm.toString().c_str());
    const ZorvReturnT result = currentList.erase(alarm.itemName);
    if (result != ZORV_RETURN_OK) {
        ZORV_WARNING("Retval from listEraseItem: %d", result);
    }
    Alarm* const found = AlarmIndex::contains(alarm) ? alarm.place.alarm : index.find(alarm);
    if (found == nullptr) {
        ZORV_ERROR("Alarm not found: %s", alarm.toString().c_str());
        return result;
    }
    index.remove(*found);
    delete found;
    return result;
}

void AlarmList::clearAlarms()
{
    while (!index.getAlarms().empty()) {
        Alarm* const alarm = *index.getAlarms().begin();
        index.remove(*alarm);
        delete alarm;
    }
}

void AlarmList::getAlarms(std::list<Alarm*>& copy)
{
    const Lock lock(*this);
    copy.clear();
    for (Alarm* const alarm : index.getAlarms()) {
        copy.push_back(alarm);
    }
}

void AlarmList::getChangingAlarms(std::vector<Alarm*>& copy)
{
    const Lock lock(*this);
    copy.clear();
    for (const auto& [position, alarm] : index.getChangingAlarms()) {
        copy.push_back(alarm);
    }
}

void AlarmList::getNbiAlarms(std::vector<AlarmData>& alarms)
{
    const Lock lock(*this);
    alarms.clear();
    alarms.reserve(index.getSummary().total);
    for (Alarm* const alarm : index.getAlarms()) {
        if (alarm->isVisibleInNbi()) {
            alarms.emplace_back(*alarm);
        }
    }
    ZORV_TRACE("Get NBI alarms, size: %d, suppression : %s", static_cast<int>(alarms.size()),
               suppressionOn ? "on" : "off");
}

AlarmSummary AlarmList::getSummary()
{
    const Lock lock(*this);
    return index.getSummary();
}

void AlarmList::traceInvisibleAlarms()
{
    const Lock lock(*this);
    for (Alarm* const alarm : index.getAlarms()) {
        if (!alarm->isVisibleInNbi()) {
            ZORV_TRACE("Alarm not visible :%s", alarm->toString().c_str());
        }
    }
}

void AlarmList::setSuppression(bool on)
{
    const Lock lock(*this);
    suppressionOn = on;
}

}  // namespace ZorvFm
