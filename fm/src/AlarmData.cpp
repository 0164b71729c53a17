#include "AlarmData.hpp"

#include <algorithm>
#include <array>
#include <vector>

#include "LocalTime.hpp"
#include "Logging.hpp"
#include "Timer.hpp"

namespace ZorvFm {
namespace {

constexpr std::uint32_t defaultProbableCause = 418;

std::string textOf(const char* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

/// A notification without a time gets the monotonic clock's, which is the time that the filters use.
std::uint64_t timeOrNow(std::uint64_t time)
{
    return time != 0 ? time : Timer::getTimeNowNano();
}

std::vector<std::pair<std::string, std::string>> sorted(const AdditionalInfoT& info)
{
    std::vector<std::pair<std::string, std::string>> pairs(info.begin(), info.end());
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

}  // namespace

AlarmData::AlarmData(const YaltOamSpiNotificationFmStruct& notification)
{
    fill(notification, Timer::getTimeNowNano());
}

AlarmData::AlarmData(const YaltOamSpiNotificationFmStruct_2& notification)
{
    fill(notification, timeOrNow(notification.eventTime));
}

AlarmData::AlarmData(const YaltOamSpiNotificationFmStruct_4& notification)
{
    fill(notification, timeOrNow(notification.eventTime));
    setAdditionalInfo(notification.additionalInfo);
}

AlarmData::AlarmData(const AlarmData& other)
{
    assign(other);
}

AlarmData& AlarmData::operator=(const AlarmData& other)
{
    assign(other);
    return *this;
}

/// What the alarm model knows is filled in later, by the model connector.
template <class NotificationT>
void AlarmData::fill(const NotificationT& notification, std::uint64_t time)
{
    dn = textOf(notification.dn);
    if (dn.empty()) {
        ZORV_LOG_AND_TRACE(ZORV_LOG_ERROR, "Received notification contains no source DN: major %u, minor = %u",
                           notification.majorType, notification.minorType);
    }
    additionalText = textOf(notification.additionalText);
    originalAdditionalText = additionalText;
    majorType = notification.majorType;
    minorType = notification.minorType;
    severity = notification.severity;
    originalSeverity = notification.severity;
    eventTime = time;
    originalEventTime = time;
    eventType = 1;
    probableCause = defaultProbableCause;
}

void AlarmData::assign(const AlarmData& other)
{
    if (this == &other) {
        return;
    }
    dn = other.dn;
    majorType = other.majorType;
    minorType = other.minorType;
    originalAdditionalText = other.originalAdditionalText;
    severity = other.severity;
    originalSeverity = other.originalSeverity;
    eventTime = other.eventTime;
    originalEventTime = other.originalEventTime;
    clearEventTime = other.clearEventTime;
    hasConfiguredSeverity = other.hasConfiguredSeverity;
    configuredSeverity = other.configuredSeverity;
    seqNo = other.seqNo;
    originalSeqNo = other.originalSeqNo;
    alarmId = other.alarmId;
    stateful = other.stateful;
    eventType = other.eventType;
    probableCause = other.probableCause;
    specificProblem = other.specificProblem;
    additionalInfo = other.getAdditionalInfo();
    additionalText = other.getAdditionalText();
    additionalTextForClear = other.additionalTextForClear;
}

bool AlarmData::operator==(const AlarmData& other) const
{
    return majorType == other.majorType && minorType == other.minorType && dn == other.dn;
}

bool AlarmData::isAdditionalInfoEqual(const AlarmData& other) const
{
    const AdditionalInfoT own = getAdditionalInfo();
    const AdditionalInfoT others = other.getAdditionalInfo();
    return own == others || (own.size() == others.size() && sorted(own) == sorted(others));
}

void AlarmData::addAdditionalInfo(const std::string& name, const std::string& value)
{
    additionalInfo.emplace_back(name, value);
}

void AlarmData::setAdditionalInfo(const YaltOamSpiFmAdditionalInfoContainer& container)
{
    if (container.entries == nullptr) {
        return;
    }
    for (std::uint32_t i = 0; i < container.numberOfEntries; ++i) {
        addAdditionalInfo(textOf(container.entries[i].name), textOf(container.entries[i].value));
    }
}

const char* AlarmData::getSeverity(std::int32_t severity)
{
    static constexpr std::array<const char*, 6> names = {"CLEARED", "INDETERMINATE", "WARNING",
                                                         "MINOR",   "MAJOR",         "CRITICAL"};
    const auto index = static_cast<std::size_t>(severity);
    return severity >= 0 && index < names.size() ? names[index] : "UNKNOWN";
}

const char* AlarmData::getEventType() const
{
    static constexpr std::array<const char*, 12> names = {"UNKNOWN",
                                                          "OTHER",
                                                          "COMMUNICATIONSALARM",
                                                          "QUALITYOFSERVICEALARM",
                                                          "PROCESSINGERRORALARM",
                                                          "EQUIPMENTALARM",
                                                          "ENVIRONMENTALALARM",
                                                          "INTEGRITYVIOLATION",
                                                          "OPERATIONALVIOLATION",
                                                          "PHYSICALVIOLATION",
                                                          "SECURITYSERVICEORMECHANISMVIOLATION",
                                                          "TIMEDOMAINVIOLATION"};
    const auto index = static_cast<std::size_t>(eventType);
    return eventType >= 0 && index < names.size() ? names[index] : "UNKNOWN";
}

std::string AlarmData::formatTimeStr(std::uint64_t nanos)
{
    return Zorv::localTimeText(nanos);
}

}  // namespace ZorvFm
