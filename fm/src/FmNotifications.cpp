#include "FmNotifications.hpp"

#include <cstdlib>
#include <cstring>
#include <new>
#include <sstream>

#include "AlarmData.hpp"
#include "Status.hpp"

namespace ZorvFm {
namespace {

char* copyOf(const std::string& text)
{
    char* copy = ::strdup(text.c_str());
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

void fillPairs(FmAlarmBlock& block, const AdditionalInfoT& info)
{
    if (info.empty()) {
        return;
    }
    block.additionalInfo = new ZorvOamApiFmAdditionalInfoPair[info.size()];
    for (const auto& [name, value] : info) {
        ZorvOamApiFmAdditionalInfoPair& pair = block.additionalInfo[block.numberOfPairs++];
        pair.name = copyOf(name);
        pair.value = copyOf(value);
    }
}

FmAlarmBlock* makeBlock(const AlarmData& data)
{
    auto* block = new FmAlarmBlock{};
    block->dn = copyOf(data.dn);
    block->majorType = data.majorType;
    block->minorType = data.minorType;
    block->additionalText = copyOf(data.getAdditionalText());
    block->eventTime = data.eventTime;
    block->severity = data.severity;
    fillPairs(*block, data.getAdditionalInfo());
    return block;
}

void releaseBlock(FmAlarmBlock* block)
{
    std::free(block->dn);
    std::free(block->additionalText);
    for (std::uint32_t i = 0; i < block->numberOfPairs; ++i) {
        std::free(block->additionalInfo[i].name);
        std::free(block->additionalInfo[i].value);
    }
    if (block->numberOfPairs != 0) {
        delete[] block->additionalInfo;
        block->additionalInfo = nullptr;
    }
    delete block;
}

/// What both versions of the value have in common.
template <class ValueT>
void fillAlarm(ValueT& value, const AlarmData& data)
{
    value.alarm = makeBlock(data);
    value.stateful = data.stateful;
    value.seqNo = data.seqNo;
    value.eventType = static_cast<std::uint32_t>(data.eventType);
    value.probableCause = data.probableCause;
    value.specificProblem = copyOf(data.specificProblem);
    value.originalEventTime = data.originalEventTime;
    value.originalAdditionalText = copyOf(data.originalAdditionalText);
    value.originalSeverity = data.originalSeverity;
}

template <class ValueT>
void releaseAlarm(ValueT& value)
{
    releaseBlock(value.alarm);
    std::free(value.originalAdditionalText);
    std::free(value.specificProblem);
}

/// A null text puts the stream into its failure state, and the rest is not written.
template <class ValueT>
std::string alarmToString(const ValueT& value, const char* numberName, std::uint64_t number)
{
    const FmAlarmBlock& alarm = *value.alarm;
    std::ostringstream text;
    text << "{dn=" << static_cast<const char*>(alarm.dn);
    text << ";majorType=" << alarm.majorType << ";minorType=" << alarm.minorType;
    text << ";additionalText=" << static_cast<const char*>(alarm.additionalText);
    text << ";severity=" << alarm.severity << ";eventTime=" << alarm.eventTime << "}";
    text << ";stateful=" << value.stateful << ";seqNo=" << value.seqNo;
    text << ";eventType=" << value.eventType << ";probableCause=" << value.probableCause;
    text << ";specificProblem=" << static_cast<const char*>(value.specificProblem);
    text << numberName << number << ";originalEventTime=" << value.originalEventTime;
    text << ";originalAdditionalText=" << static_cast<const char*>(value.originalAdditionalText);
    text << ";originalSeverity=" << value.originalSeverity;
    text << ";additionalInfoNoOfPairs=" << alarm.numberOfPairs;
    for (std::uint32_t i = 0; i < alarm.numberOfPairs; ++i) {
        text << ";" << static_cast<const char*>(alarm.additionalInfo[i].name);
        text << ";" << static_cast<const char*>(alarm.additionalInfo[i].value);
    }
    text << ";";
    return text.str();
}

template <class ValueT>
void fillHeartbeat(ValueT& value, const StatusSection& status)
{
    value.lastStatefulTimestamp = status.lastStatefulTimestamp;
    value.lastStatefulSeqNo = status.lastStatefulSeqNo;
    value.lastStatelessTimestamp = status.lastStatelessTimestamp;
    value.lastStatelessSeqNo = status.lastStatelessSeqNo;
}

template <class ValueT>
std::string heartbeatToString(const ValueT& value)
{
    std::ostringstream text;
    text << ";lastStatefulTimestamp=" << value.lastStatefulTimestamp;
    text << ";lastStatefulSeqNo=" << value.lastStatefulSeqNo;
    text << ";lastStatelessTimestamp=" << value.lastStatelessTimestamp;
    text << ";lastStatelessSeqNo=" << value.lastStatelessSeqNo << ";";
    return text.str();
}

}  // namespace

AlarmNotification::AlarmNotification(const AlarmData& data) : ZorvOamApiFmNotificationEventValue_3{}
{
    fillAlarm(*this, data);
    alarmId = data.alarmId;
}

AlarmNotification::~AlarmNotification()
{
    releaseAlarm(*this);
}

std::string AlarmNotification::toString() const
{
    return alarmToString(*this, ";alarmId=", alarmId);
}

AlarmNotificationV2::AlarmNotificationV2(const AlarmData& data) : ZorvOamApiFmNotificationEventValue_2{}
{
    fillAlarm(*this, data);
    originalSeqNo = data.originalSeqNo;
}

AlarmNotificationV2::~AlarmNotificationV2()
{
    releaseAlarm(*this);
}

std::string AlarmNotificationV2::toString() const
{
    return alarmToString(*this, ";originalSeqNo=", originalSeqNo);
}

HeartbeatNotification::HeartbeatNotification(const StatusSection& status) : ZorvOamApiFmHeartbeatEventValue_3{}
{
    fillHeartbeat(*this, status);
}

std::string HeartbeatNotification::toString() const
{
    return heartbeatToString(*this);
}

HeartbeatNotificationV2::HeartbeatNotificationV2(const StatusSection& status) : ZorvOamApiFmHeartbeatEventValue_2{}
{
    fillHeartbeat(*this, status);
}

std::string HeartbeatNotificationV2::toString() const
{
    return heartbeatToString(*this);
}

}  // namespace ZorvFm
