/// The text forms of an alarm: the debug line and the alarm log record.
#include <ctime>

#include "AlarmData.hpp"
#include "Logging.hpp"

namespace ZorvFm {
namespace {

std::uint64_t timeOfDay()
{
    timespec now{};
    if (clock_gettime(CLOCK_REALTIME, &now) != 0) {
        ZORV_LOG_AND_TRACE(ZORV_LOG_WARNING, "Failed to retrieve system time");
        return 0;
    }
    return static_cast<std::uint64_t>(now.tv_sec) * 1000000000 + static_cast<std::uint64_t>(now.tv_nsec);
}

/// Number of pairs, then each pair's name and value, everything separated.
std::string pairsToString(const AdditionalInfoT& info, const char* separator)
{
    std::string text = std::to_string(info.size());
    for (const auto& [name, value] : info) {
        text.append(separator).append(name).append(separator).append(value);
    }
    return text;
}

}  // namespace

std::string AlarmData::toString() const
{
    std::string text;
    text.append("dn=").append(dn);
    text.append("; majorType=").append(std::to_string(majorType));
    text.append("; minorType=").append(std::to_string(minorType));
    text.append("; additionalText=").append(getAdditionalText());
    text.append("; severity=").append(std::to_string(severity));
    text.append("; specificProblem=").append(specificProblem);
    text.append("; seqNo=").append(std::to_string(seqNo));
    text.append("; eventTime=").append(std::to_string(eventTime));
    text.append("; stateful=").append(stateful ? "1" : "0");
    text.append("; eventType=").append(std::to_string(eventType));
    text.append("; probableCause=").append(std::to_string(probableCause));
    text.append("; originalSeqNo=").append(std::to_string(originalSeqNo));
    text.append("; originalAdditionalText=").append(originalAdditionalText);
    text.append("; originalSeverity=").append(std::to_string(originalSeverity));
    text.append("; originalEventTime=").append(std::to_string(originalEventTime));
    text.append("; alarmId=").append(std::to_string(alarmId));
    text.append("; additionalInfoSize=").append(pairsToString(getAdditionalInfo(), "; "));
    return text;
}

std::string AlarmData::additionalInfoToString() const
{
    const AdditionalInfoT info = getAdditionalInfo();
    std::string text = "AdditionalInfoSize=" + std::to_string(info.size()) + "; ";
    for (const auto& [name, value] : info) {
        text.append(name).append(" : ").append(value).append(", ");
    }
    return text;
}

std::string AlarmData::toLogBody() const
{
    std::string body = stateful ? "1" : "0";
    body.append(";").append(getEventTimeStr());
    body.append(";").append(dn);
    body.append(";").append(std::to_string(majorType));
    body.append(";").append(std::to_string(minorType));
    body.append(";").append(specificProblem);
    body.append(";").append(std::to_string(probableCause));
    body.append(";").append(getSeverity());
    body.append(";").append(getAdditionalText());
    body.append(";").append(std::to_string(seqNo));
    body.append(";").append(getEventType());
    body.append(";").append(getOriginalEventTimeStr());
    body.append(";").append(getOriginalSeverity());
    body.append(";").append(originalAdditionalText);
    body.append(";").append(std::to_string(originalSeqNo));
    body.append(";").append(pairsToString(getAdditionalInfo(), ";"));
    return body;
}

std::string AlarmData::toLogString() const
{
    const std::string timestamp = formatTimeStr(timeOfDay());
    const std::string tag = stateful ? "Alarm" : "Alert";
    std::string record = "<FmLogRecord>";
    record.append("\n   <LogTimestamp>").append(timestamp).append("</LogTimestamp>");
    record.append("\n   <").append(tag).append(">");
    record.append(xmlEncode(toLogBody()));
    record.append("</").append(tag).append(">");
    record.append("\n</FmLogRecord>");
    return record;
}

}  // namespace ZorvFm
