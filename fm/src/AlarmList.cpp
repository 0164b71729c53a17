#include "AlarmList.hpp"

#include <regex.h>

#include <algorithm>
#include <cassert>
#include <chrono>
#include <optional>
#include <thread>

#include "AlarmListWalk.hpp"
#include "FmConfig.hpp"
#include "ListFormatMigration.hpp"
#include "Logging.hpp"
#include "RegularExpression.hpp"

namespace ZorvFm {
namespace {

constexpr std::size_t shownAtOnce = 500;
constexpr std::chrono::microseconds pauseOfReader(50);

}  // namespace

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
    const MutexLockT lock(mutex);
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
        shown.noteChange(*alarm);
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
    const MutexLockT lock(mutex);
    auto alarm = std::make_unique<Alarm>(config);
    alarm->init(data);
    assignAlarmId(*alarm);
    index.add(*alarm);
    shown.noteChange(*alarm);
    ZORV_TRACE("Added alarm to active alarm list: '%s', listSize :%d", alarm->toString().c_str(),
               static_cast<int>(index.getAlarms().size()));
    return alarm.release();
}

void AlarmList::assignAlarmId(Alarm& alarm)
{
    const MutexLockT lock(mutex);
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
    const MutexLockT lock(mutex);
    if (AlarmIndex::contains(alarm)) {
        index.update(alarm);
        shown.noteChange(alarm);
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
    const MutexLockT lock(mutex);
    return index.find(identity);
}

void AlarmList::findAlarms(const AlarmData& pattern, std::list<Alarm*>& found)
{
    const MutexLockT lock(mutex);
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
    const MutexLockT lock(mutex);
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
    shown.noteRemoval(*found);
    index.remove(*found);
    delete found;
    return result;
}

void AlarmList::clearAlarms()
{
    while (!index.getAlarms().empty()) {
        Alarm* const alarm = *index.getAlarms().begin();
        shown.noteRemoval(*alarm);
        index.remove(*alarm);
        delete alarm;
    }
}

void AlarmList::getAlarms(std::list<Alarm*>& copy)
{
    const MutexLockT lock(mutex);
    copy.clear();
    for (Alarm* const alarm : index.getAlarms()) {
        copy.push_back(alarm);
    }
}

void AlarmList::getChangingAlarms(std::vector<Alarm*>& copy)
{
    const MutexLockT lock(mutex);
    copy.clear();
    for (const auto& [position, alarm] : index.getChangingAlarms()) {
        copy.push_back(alarm);
    }
}

void AlarmList::getNbiAlarms(std::vector<AlarmData>& alarms)
{
    const MutexLockT lock(mutex);
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

/// The lock is let go now and then: alarm handling does not wait for a reader of many alarms.
std::vector<AlarmChunkT> AlarmList::shareNbiAlarms()
{
    {
        const MutexLockT lock(mutex);
        shown.use(index.getAlarms());
    }
    for (;;) {
        {
            const MutexLockT lock(mutex);
            if (shown.refresh(shownAtOnce)) {
                ZORV_TRACE("Get NBI alarms, size: %d, suppression : %s", static_cast<int>(shown.size()),
                           suppressionOn ? "on" : "off");
                return shown.take();
            }
        }
        std::this_thread::sleep_for(pauseOfReader);
    }
}

AlarmSummary AlarmList::getSummary()
{
    const MutexLockT lock(mutex);
    return index.getSummary();
}

void AlarmList::traceInvisibleAlarms()
{
    const MutexLockT lock(mutex);
    for (Alarm* const alarm : index.getAlarms()) {
        if (!alarm->isVisibleInNbi()) {
            ZORV_TRACE("Alarm not visible :%s", alarm->toString().c_str());
        }
    }
}

void AlarmList::setSuppression(bool on)
{
    const MutexLockT lock(mutex);
    suppressionOn = on;
}

}  // namespace ZorvFm
