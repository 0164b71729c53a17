#include "FmNotifications.hpp"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "AlarmData.hpp"
#include "Status.hpp"

namespace ZorvFm {
namespace {

/// Texts behind each other in one piece of memory.
class TextCopier {
public:
    explicit TextCopier(char* memory) : place(memory) {}

    char* copy(std::string_view text)
    {
        char* const begin = place;
        place = std::copy(text.begin(), text.end(), begin);
        *place++ = '\0';
        return begin;
    }

private:
    char* place;
};

std::size_t sizeOfTexts(const AlarmData& data, std::string_view additionalText, const AdditionalInfoT& info)
{
    std::size_t size =
        data.dn.size() + additionalText.size() + data.specificProblem.size() + data.originalAdditionalText.size() + 4;
    for (const auto& [name, value] : info) {
        size += name.size() + value.size() + 2;
    }
    return size;
}

void fillPairs(NotificationMemory& memory, const AdditionalInfoT& info, TextCopier& texts)
{
    if (info.empty()) {
        return;
    }
    memory.pairs.reset(new ZorvOamApiFmAdditionalInfoPair[info.size()]);
    memory.block.additionalInfo = memory.pairs.get();
    for (const auto& [name, value] : info) {
        ZorvOamApiFmAdditionalInfoPair& pair = memory.block.additionalInfo[memory.block.numberOfPairs++];
        pair.name = texts.copy(name);
        pair.value = texts.copy(value);
    }
}

/// What both versions of the value have in common.
template <class ValueT>
void fillAlarm(ValueT& value, NotificationMemory& memory, const AlarmData& data)
{
    const std::string additionalText = data.getAdditionalText();
    const AdditionalInfoT info = data.getAdditionalInfo();
    memory.texts.reset(new char[sizeOfTexts(data, additionalText, info)]);
    TextCopier texts(memory.texts.get());
    FmAlarmBlock& block = memory.block;
    block.dn = texts.copy(data.dn);
    block.majorType = data.majorType;
    block.minorType = data.minorType;
    block.additionalText = texts.copy(additionalText);
    block.eventTime = data.eventTime;
    block.severity = data.severity;
    fillPairs(memory, info, texts);
    value.alarm = &block;
    value.stateful = data.stateful;
    value.seqNo = data.seqNo;
    value.eventType = static_cast<std::uint32_t>(data.eventType);
    value.probableCause = data.probableCause;
    value.specificProblem = texts.copy(data.specificProblem);
    value.originalEventTime = data.originalEventTime;
    value.originalAdditionalText = texts.copy(data.originalAdditionalText);
    value.originalSeverity = data.originalSeverity;
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
    fillAlarm(*this, memory, data);
    alarmId = data.alarmId;
}

std::string AlarmNotification::toString() const
{
    return alarmToString(*this, ";alarmId=", alarmId);
}

AlarmNotificationV2::AlarmNotificationV2(const AlarmData& data) : ZorvOamApiFmNotificationEventValue_2{}
{
    fillAlarm(*this, memory, data);
    originalSeqNo = data.originalSeqNo;
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
