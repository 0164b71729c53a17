/// The paths of a notification.
#include "ReferenceModel.hpp"

#include <algorithm>

namespace ZorvFm {
namespace Reference {
namespace {

bool isSameInfo(InfoT one, InfoT other)
{
    std::sort(one.begin(), one.end());
    std::sort(other.begin(), other.end());
    return one == other;
}

}  // namespace

ReferenceModel::ReferenceModel(const Configuration& theConfiguration, const Consumers& theConsumers)
    : configuration(theConfiguration),
      consumers(theConsumers)
{
}

void ReferenceModel::setTime(std::uint64_t monotonic, std::uint64_t timeOfDay)
{
    now = monotonic;
    dayTime = timeOfDay;
}

void ReferenceModel::passTime(std::uint64_t nanoseconds)
{
    now += nanoseconds;
    dayTime += nanoseconds;
}

void ReferenceModel::setTypes(const std::vector<AlarmType>& modelTypes)
{
    types = modelTypes;
    typesRead.clear();
}

std::vector<std::string> ReferenceModel::takeJournal()
{
    std::vector<std::string> taken;
    taken.swap(journal);
    return taken;
}

/// 0 when none is due.
int ReferenceModel::nextFailure(Operation operation)
{
    std::list<int>& codes = failures[operation];
    if (codes.empty()) {
        return 0;
    }
    const int code = codes.front();
    codes.pop_front();
    return code;
}

void ReferenceModel::log(int level, const std::string& text)
{
    journal.push_back("log " + std::to_string(level) + " " + text);
}

void ReferenceModel::record(const ReferenceAlarm& alarm)
{
    journal.push_back("record 5 " + logRecord(alarm, dayTime));
}

// --- One notification

void ReferenceModel::notify(const Notification& notification)
{
    ReferenceAlarm data;
    if (notification.dn.empty()) {
        log(3, "Received notification contains no source DN: major " + std::to_string(notification.majorType) +
                   ", minor = " + std::to_string(notification.minorType));
    }
    data.dn = notification.dn;
    data.majorType = notification.majorType;
    data.minorType = notification.minorType;
    data.text = notification.text;
    data.originalText = notification.text;
    data.severity = notification.severity;
    data.originalSeverity = notification.severity;
    data.eventTime = notification.version == 1 || notification.eventTime == 0 ? now : notification.eventTime;
    data.originalEventTime = data.eventTime;
    if (notification.version == 4) {
        data.info = notification.info;
    }
    complete(data);
    if (!isIgnored(data)) {
        handle(data);
    }
}

const AlarmType* ReferenceModel::findType(const ReferenceAlarm& data) const
{
    for (const AlarmType& type : types) {
        if (type.majorType == data.majorType && type.minorType == data.minorType) {
            return &type;
        }
    }
    return nullptr;
}

/// In the notification's numbers; none also when the model's number means nothing.
std::optional<std::int32_t> ReferenceModel::configuredSeverity(const AlarmType& type)
{
    if (!type.configuredSeverity || *type.configuredSeverity < 3 || *type.configuredSeverity > 6) {
        return std::nullopt;
    }
    return 8 - *type.configuredSeverity;
}

void ReferenceModel::complete(ReferenceAlarm& data)
{
    const AlarmType* type = findType(data);
    if (type == nullptr) {
        log(4, "Could not find alarm (" + debugLine(data) + ")");
        data.specificProblem = "FM Unknown Alarm";
        data.stateful = false;
        if (data.severity == 0) {
            data.severity = 2;
            data.originalSeverity = 2;
            log(4, "Severity cleared for this unknown alarm is changed to warning: " + debugLine(data));
        }
        return;
    }
    data.stateful = type->stateful;
    data.eventType = type->eventType;
    data.specificProblem = type->specificProblem;
    data.probableCause = type->probableCause;
    const std::optional<std::int32_t> severity = configuredSeverity(*type);
    if (severity && data.severity != 0) {
        data.severity = *severity;
    }
    const std::pair<std::uint32_t, std::uint32_t> numbers(data.majorType, data.minorType);
    if (std::find(typesRead.begin(), typesRead.end(), numbers) == typesRead.end()) {
        typesRead.push_back(numbers);
        if (type->configuredSeverity && !severity) {
            log(4, "Wrong VESK severity value " +
                       std::to_string(static_cast<std::uint32_t>(*type->configuredSeverity)) +
                       " cannot be converted to SPI severity value");
        }
    }
}

/// True for a repetition that could only change a severity which the model fixes.
bool ReferenceModel::isIgnored(const ReferenceAlarm& data) const
{
    const AlarmType* type = findType(data);
    const ReferenceAlarm* alarm = find(data);
    return type != nullptr && alarm != nullptr && data.text == alarm->text && isSameInfo(data.info, alarm->info) &&
           data.severity != 0 && configuredSeverity(*type) && alarm->severity == *configuredSeverity(*type);
}

void ReferenceModel::handle(ReferenceAlarm& data)
{
    if (data.severity == 0) {
        clearPath(data);
    } else if (ReferenceAlarm* alarm = find(data)) {
        updatePath(data, *alarm);
    } else if (data.stateful) {
        raisePath(data);
    } else {
        alertPath(data);
    }
}

void ReferenceModel::raisePath(const ReferenceAlarm& data)
{
    ReferenceAlarm& alarm = alarms.emplace_back();
    init(alarm, data);
    assignId(alarm);
    raise(alarm);
    tickAlarm(alarm, now);
    store(alarm);
}

void ReferenceModel::clearPath(const ReferenceAlarm& data)
{
    for (ReferenceAlarm* alarm : findForClear(data)) {
        alarm->clearEventTime = data.eventTime;
        if (configuration.reuseTextAtClear) {
            alarm->textForClear = shownText(*alarm);
        } else {
            alarm->textForClear = data.text;
            alarm->info = data.info;
        }
        clear(*alarm);
        store(*alarm);
        tickAlarm(*alarm, now);
    }
}

void ReferenceModel::alertPath(ReferenceAlarm data)
{
    data.seqNo = status.lastStateless + 1;
    data.originalSeqNo = data.seqNo;
    data.dn = externalDn(data.dn);
    record(data);
    log(5, "Sending alert: " + debugLine(data));
    send(data);
    status.lastStateless += 1;
    status.timeOfStateless = data.eventTime;
    status.timeOfCheck = data.eventTime;
    statusIsStored = true;
}

void ReferenceModel::updatePath(const ReferenceAlarm& data, ReferenceAlarm& alarm)
{
    if (alarm.isVisible() && !alarm.isToggling()) {
        if (data.severity == alarm.severity && data.text == alarm.text && isSameInfo(data.info, alarm.info)) {
            log(5, "Dropping alarm: " + debugLine(data));
            status.timeOfCheck = data.eventTime;
            statusIsStored = true;
        } else {
            log(5, "Same alarm but new severity, additional text or additional info.");
            const std::int32_t previousSeverity = alarm.severity;
            alarm.eventTime = data.eventTime;
            alarm.severity = data.severity;
            alarm.text = data.text;
            alarm.info = data.info;
            report(alarm, previousSeverity);
        }
    }
    if (!alarm.isVisible() && !alarm.isToggling()) {
        init(alarm, data);
        assignId(alarm);
    }
    raise(alarm);
    tickAlarm(alarm, now);
    store(alarm);
}

}  // namespace Reference
}  // namespace ZorvFm
