#include "FmAlarmHandler.hpp"

#include <cstdlib>

#include "FmComponentManager.hpp"
#include "FmConfig.hpp"
#include "FmEventProducer.hpp"
#include "Logging.hpp"
#include "MOConnector.hpp"
#include "MeIdTranslator.hpp"
#include "Status.hpp"
#include "Timer.hpp"

namespace ZorvFm {
namespace {

constexpr std::uint64_t tickPause = 500000000;  // ns

std::uint64_t lastTickRound = 0;  // monotonic time in ns

void traceContents(const AlarmData& data, const Alarm& alarm)
{
    ZORV_TRACE("new severity = %d, old severity = %d", data.severity, alarm.severity);
    ZORV_TRACE("new additionalText = %s, old additionalText = %s", data.getAdditionalText().c_str(),
               alarm.getAdditionalText().c_str());
    ZORV_TRACE("new additionalInfo = %s, old additionalInfo = %s", data.additionalInfoToString().c_str(),
               alarm.additionalInfoToString().c_str());
}

bool hasEqualContents(const AlarmData& data, const Alarm& alarm)
{
    return data.severity == alarm.severity && alarm.isAdditionalTextEqual(data) && alarm.isAdditionalInfoEqual(data);
}

}  // namespace

const std::uint64_t FmAlarmHandler::_NO_ALARM_SEQ_NUMBER_TO_WRITE = ~std::uint64_t{0};

FmAlarmHandler::FmAlarmHandler(const FmConfig& componentConfig, MOConnector& modelConnector, Status& statusRecord)
    : config(componentConfig),
      connector(modelConnector),
      status(statusRecord),
      alarmList(componentConfig)
{
}

void FmAlarmHandler::initialize()
{
    alarmList.initialize();
    takePendingFromStatus();
    saveVeskFmAttributes();
}

void FmAlarmHandler::takePendingFromStatus()
{
    seqNoToWrite = status.get().lastStatefulSeqNo;
    lastChangedToWrite = AlarmData::formatTimeStr(status.get().lastStatefulTimestamp);
}

bool FmAlarmHandler::isUpdateAlarm(const AlarmData& data)
{
    const AlarmData* type = connector.findAlarmType(data);
    if (type == nullptr) {
        return true;
    }
    const Alarm* alarm = alarmList.findAlarm(data);
    if (alarm == nullptr || !alarm->isAdditionalTextEqual(data) || !alarm->isAdditionalInfoEqual(data) ||
        data.severity == YALT_FM_SEVERITY_CLEARED || !type->hasConfiguredSeverity) {
        return true;
    }
    return !alarm->isSevEqualConfiguredSev(type->configuredSeverity);
}

void FmAlarmHandler::handleAlarmNotif(AlarmData& data)
{
    ZORV_TRACE(" >> Alarm received: '%s'", data.toString().c_str());
    if (data.severity == YALT_FM_SEVERITY_CLEARED) {
        handleAlarmNotifClear(data);
    } else if (Alarm* found = alarmList.findAlarm(data)) {
        handleAlarmNotifUpdate(data, *found);
    } else if (data.stateful) {
        handleAlarmNotifRaise(data);
    } else {
        handleAlarmNotifStateless(data);
    }
    ZORV_TRACE(" << ");
}

void FmAlarmHandler::handleAlarmNotifRaise(AlarmData& data)
{
    raiseTickSave(*alarmList.createAlarm(data));
}

void FmAlarmHandler::raiseTickSave(Alarm& alarm)
{
    {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.raise();
    }
    tickAlarm(alarm, Timer::getTimeNowNano());
    alarmList.saveAlarm(alarm);
}

void FmAlarmHandler::handleAlarmNotifClear(AlarmData& data)
{
    std::list<Alarm*> alarms;
    alarmList.findAlarms(data, alarms);
    for (Alarm* alarm : alarms) {
        {
            const AlarmList::Lock lock(alarmList, *alarm);
            takeClear(data, *alarm);
            alarm->clear();
        }
        alarmList.saveAlarm(*alarm);
        tickAlarm(*alarm, Timer::getTimeNowNano());
    }
}

void FmAlarmHandler::takeClear(const AlarmData& data, Alarm& alarm)
{
    alarm.clearEventTime = data.eventTime;
    if (config.reuseAdditionalTextFromAalAtClear) {
        alarm.setAdditionalTextForClear(alarm.getAdditionalText());
    } else {
        alarm.setAdditionalTextForClear(data.getAdditionalText());
        alarm.setAdditionalInfo(data.getAdditionalInfo());
    }
}

/// An alert has no filter and no entry in the list.
void FmAlarmHandler::handleAlarmNotifStateless(AlarmData& data)
{
    data.seqNo = status.getNextStatelessSeqNo();
    data.originalSeqNo = data.seqNo;
    data.dn = convertToExternalMeRdn(data.dn);
    logAlarm(data);
    ZORV_NOTICE("Sending alert: %s", data.toString().c_str());
    FmEventProducer::instance().sendNotification(data);
    status.updateStateless(data.eventTime);
}

void FmAlarmHandler::handleAlarmNotifUpdate(AlarmData& data, Alarm& alarm)
{
    if (alarm.isToggling()) {
        ZORV_TRACE("Update on toggling alarm, ignoring alarm: %s", data.toString().c_str());
    } else if (!alarm.isVisibleInNbi()) {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.init(data);
        alarmList.assignAlarmId(alarm);
    } else if (hasEqualContents(data, alarm)) {
        ZORV_NOTICE("Dropping alarm: %s", data.toString().c_str());
        status.updateNotificationCheck(data.eventTime);
    } else {
        updateContents(data, alarm);
    }
    raiseTickSave(alarm);
}

void FmAlarmHandler::updateContents(AlarmData& data, Alarm& alarm)
{
    ZORV_NOTICE("Same alarm but new severity, additional text or additional info.");
    traceContents(data, alarm);
    const std::int32_t previousSeverity = alarm.severity;
    {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.eventTime = data.eventTime;
        alarm.severity = data.severity;
        alarm.setAdditionalText(data.getAdditionalText());
        alarm.setAdditionalInfo(data.getAdditionalInfo());
    }
    reportAlarm(alarm, previousSeverity);
}

void FmAlarmHandler::tickAlarm(Alarm& alarm, std::uint64_t now)
{
    int result = ALARM_UNCHANGED;
    {
        const AlarmList::Lock lock(alarmList, alarm);
        result = alarm.tick(now);
    }
    switch (result) {
    case ALARM_UNCHANGED:
        break;
    case ALARM_ACTIVATED:
        ZORV_TRACE("tickAlarm ALARM_ACTIVATED %s", alarm.toString().c_str());
        reportAlarm(alarm, YALT_FM_SEVERITY_CLEARED);
        alarmList.saveAlarm(alarm);
        break;
    case ALARM_CLEARED:
        ZORV_TRACE("tickAlarm ALARM_CLEARED %s", alarm.toString().c_str());
        endAlarm(alarm);
        break;
    case ALARM_TO_DELETE:
        ZORV_TRACE("tickAlarm ALARM_TO_DELETE %s", alarm.toString().c_str());
        alarmList.deleteAlarm(alarm);
        break;
    default:
        std::abort();
    }
}

/// The alarm is reported as cleared and stays in the list until its toggling history has aged.
void FmAlarmHandler::endAlarm(Alarm& alarm)
{
    const std::int32_t previousSeverity = alarm.severity;
    {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.severity = YALT_FM_SEVERITY_CLEARED;
        alarm.eventTime = alarm.clearEventTime;
        alarm.setAdditionalText(alarm.getAdditionalTextForClear());
    }
    reportAlarm(alarm, previousSeverity);
    {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.seqNo = 0;
        alarm.originalSeqNo = 0;
        alarm.originalEventTime = 0;
    }
    alarmList.saveAlarm(alarm);
}

/// While alarms are suppressed, only what is or was critical is sent; everything is logged.
void FmAlarmHandler::reportAlarm(Alarm& alarm, std::int32_t previousSeverity)
{
    AlarmData report(static_cast<const AlarmData&>(alarm));
    report.dn = convertToExternalMeRdn(alarm.dn);
    if (!suppressionOn || previousSeverity == YALT_FM_SEVERITY_CRITICAL ||
        alarm.severity == YALT_FM_SEVERITY_CRITICAL) {
        sendAlarm(alarm, report);
        return;
    }
    ZORV_NOTICE("Suppressing alarm: %s", report.toString().c_str());
    {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.seqNo = 0;
    }
    takePendingFromStatus();
    logAlarm(report);
}

void FmAlarmHandler::sendAlarm(Alarm& alarm, AlarmData& report)
{
    const std::uint64_t seqNo = status.getNextStatefulSeqNo();
    {
        const AlarmList::Lock lock(alarmList, alarm);
        alarm.seqNo = seqNo;
        if (alarm.originalSeqNo == 0) {
            alarm.originalSeqNo = seqNo;
        }
    }
    report.seqNo = alarm.seqNo;
    report.originalSeqNo = alarm.originalSeqNo;
    status.updateStateful(alarm.eventTime);
    seqNoToWrite = seqNo;
    lastChangedToWrite = alarm.getEventTimeStr();
    logAlarm(report);
    ZORV_NOTICE("Sending alarm: %s", report.toString().c_str());
    FmEventProducer::instance().sendNotification(report);
}

/// Alarms that a tick cannot change are not visited.
void FmAlarmHandler::tickAllAlarms()
{
    const std::uint64_t now = Timer::getTimeNowNano();
    if (now < lastTickRound + tickPause) {
        return;
    }
    lastTickRound = now;
    std::vector<Alarm*> alarms;
    alarmList.getChangingAlarms(alarms);
    for (Alarm* alarm : alarms) {
        tickAlarm(*alarm, now);
    }
}

void FmAlarmHandler::suppressAlarm(const ZorvOamSpiFmAlarmSuppressType_1& type)
{
    const bool wasOn = suppressionOn;
    suppressionOn = type == ZORV_FM_ALARM_SUPPRESS_ON;
    alarmList.setSuppression(suppressionOn);
    if (wasOn && !suppressionOn) {
        FmEventProducer::instance().sendAlarmListRebuilt();
    }
}

void FmAlarmHandler::saveVeskFmAttributes()
{
    if (seqNoToWrite == _NO_ALARM_SEQ_NUMBER_TO_WRITE) {
        return;
    }
    std::uint32_t total = 0;
    std::uint32_t critical = 0;
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t warning = 0;
    countAlarmSummaries(total, critical, major, minor, warning);
    if (connector.updateVeskAttributes(seqNoToWrite, lastChangedToWrite, total, critical, major, minor, warning) ==
        ZORV_RETURN_OK) {
        seqNoToWrite = _NO_ALARM_SEQ_NUMBER_TO_WRITE;
    } else {
        ZORV_WARNING("Did not succeed writing alarm sequence number to database, will try again later");
    }
}

void FmAlarmHandler::countAlarmSummaries(std::uint32_t& total, std::uint32_t& critical, std::uint32_t& major,
                                         std::uint32_t& minor, std::uint32_t& warning)
{
    if (Zorv::Logging::traceAdmits(YALT_TRACE_DETAILED)) {
        alarmList.traceInvisibleAlarms();
    }
    const AlarmSummary summary = alarmList.getSummary();
    total = summary.total;
    critical = summary.critical;
    major = summary.major;
    minor = summary.minor;
    warning = summary.warning;
}

void FmAlarmHandler::logAlarm(const AlarmData& alarm)
{
    const auto* log = static_cast<const ZorvMwSpiLog_1T*>(
        FmComponentManager::instance().getInterface({nullptr, "ZorvMwSpiLog", "1"}));
    if (log == nullptr) {
        ZORV_ERROR("ZorvMwSpiLog interface missing; failed to log alarm");
        return;
    }
    log->write(ZORV_LOG_ALARM, ZORV_LOG_NOTICE, alarm.toLogString().c_str());
}

std::string FmAlarmHandler::convertToExternalMeRdn(const std::string& dn)
{
    return Zorv::MeIdTranslator::instance().toExternalDn(dn);
}

}  // namespace ZorvFm
