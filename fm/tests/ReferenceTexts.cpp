#include "ReferenceTexts.hpp"

#include <array>
#include <cstdio>
#include <ctime>

namespace ZorvFm {
namespace Reference {
namespace {

std::string number(std::uint64_t value)
{
    return std::to_string(value);
}

std::string signedNumber(std::int64_t value)
{
    return std::to_string(value);
}

std::string severityName(std::int32_t severity)
{
    switch (severity) {
    case 0:
        return "CLEARED";
    case 1:
        return "INDETERMINATE";
    case 2:
        return "WARNING";
    case 3:
        return "MINOR";
    case 4:
        return "MAJOR";
    case 5:
        return "CRITICAL";
    default:
        return "UNKNOWN";
    }
}

std::string eventTypeName(std::int32_t eventType)
{
    const std::vector<std::string> names = {"OTHER",
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
    return eventType >= 1 && eventType <= 11 ? names[static_cast<std::size_t>(eventType - 1)] : "UNKNOWN";
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator)
{
    std::string all;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        all += (i == 0 ? "" : separator) + parts[i];
    }
    return all;
}

std::string encodedForXml(const std::string& text)
{
    std::string encoded;
    for (const char c : text) {
        encoded += c == '&'    ? "&amp;"
                   : c == '"'  ? "&quot;"
                   : c == '\'' ? "&apos;"
                   : c == '<'  ? "&lt;"
                   : c == '>'  ? "&gt;"
                               : std::string(1, c);
    }
    return encoded;
}

/// With a line break after every 72 characters, unless padding ends them.
std::string base64(const std::string& bytes)
{
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string encoded;
    std::size_t inLine = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        encoded += alphabet[group >> 18 & 63];
        encoded += alphabet[group >> 12 & 63];
        encoded += i + 1 < bytes.size() ? alphabet[group >> 6 & 63] : '=';
        encoded += i + 2 < bytes.size() ? alphabet[group & 63] : '=';
        inLine += 4;
        if (inLine == 72 && i + 2 < bytes.size()) {
            encoded += "\r\n";
            inLine = 0;
        }
    }
    return encoded;
}

std::string quoted(const std::string& text)
{
    return "'" + text + "'";
}

std::string block(const ReferenceAlarm& alarm)
{
    std::vector<std::string> pairs;
    for (const auto& [name, value] : alarm.info) {
        pairs.push_back(quoted(name) + "=" + quoted(value));
    }
    return "{dn=" + quoted(alarm.dn) + " majorType=" + number(alarm.majorType) +
           " minorType=" + number(alarm.minorType) + " eventTime=" + number(alarm.eventTime) +
           " additionalText=" + quoted(shownText(alarm)) + " severity=" + signedNumber(alarm.severity) +
           " additionalInfo=" + (pairs.empty() ? "null" : "[" + joined(pairs, ",") + "]") + "}";
}

std::string notification(const ReferenceAlarm& alarm, const std::string& version, unsigned long consumer,
                         const std::string& identity)
{
    return "notify ZorvOamApiFmNotificationEventType_" + version + " consumer=" + number(consumer) + " filter=[] " +
           block(alarm) + " stateful=" + (alarm.stateful ? "true" : "false") + " seqNo=" + number(alarm.seqNo) +
           " eventType=" + number(static_cast<std::uint32_t>(alarm.eventType)) +
           " probableCause=" + number(alarm.probableCause) + " specificProblem=" + quoted(alarm.specificProblem) + " " +
           identity + " originalEventTime=" + number(alarm.originalEventTime) +
           " originalAdditionalText=" + quoted(alarm.originalText) +
           " originalSeverity=" + signedNumber(alarm.originalSeverity) + " -> 0";
}

}  // namespace

std::string shownText(const ReferenceAlarm& alarm)
{
    return alarm.text + (alarm.isToggling() ? " The alarm is currently toggling." : "");
}

std::string debugLine(const ReferenceAlarm& alarm)
{
    std::vector<std::string> parts = {"dn=" + alarm.dn,
                                      "majorType=" + number(alarm.majorType),
                                      "minorType=" + number(alarm.minorType),
                                      "additionalText=" + shownText(alarm),
                                      "severity=" + signedNumber(alarm.severity),
                                      "specificProblem=" + alarm.specificProblem,
                                      "seqNo=" + number(alarm.seqNo),
                                      "eventTime=" + number(alarm.eventTime),
                                      std::string("stateful=") + (alarm.stateful ? "1" : "0"),
                                      "eventType=" + signedNumber(alarm.eventType),
                                      "probableCause=" + number(alarm.probableCause),
                                      "originalSeqNo=" + number(alarm.originalSeqNo),
                                      "originalAdditionalText=" + alarm.originalText,
                                      "originalSeverity=" + signedNumber(alarm.originalSeverity),
                                      "originalEventTime=" + number(alarm.originalEventTime),
                                      "alarmId=" + number(alarm.alarmId),
                                      "additionalInfoSize=" + number(alarm.info.size())};
    for (const auto& [name, value] : alarm.info) {
        parts.push_back(name);
        parts.push_back(value);
    }
    return joined(parts, "; ");
}

std::string debugLineWithState(const ReferenceAlarm& alarm)
{
    return debugLine(alarm) + "; state=" + signedNumber(alarm.state);
}

std::string timeText(std::uint64_t nanoseconds)
{
    const auto seconds = static_cast<std::time_t>(nanoseconds / 1000000000);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03d+00:00", parts.tm_year + 1900,
                  parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec,
                  static_cast<int>(nanoseconds / 1000000 % 1000));
    return text.data();
}

std::string logRecord(const ReferenceAlarm& alarm, std::uint64_t timeOfDay)
{
    std::vector<std::string> items = {alarm.stateful ? "1" : "0",
                                      timeText(alarm.eventTime),
                                      alarm.dn,
                                      number(alarm.majorType),
                                      number(alarm.minorType),
                                      alarm.specificProblem,
                                      number(alarm.probableCause),
                                      severityName(alarm.severity),
                                      shownText(alarm),
                                      number(alarm.seqNo),
                                      eventTypeName(alarm.eventType),
                                      timeText(alarm.originalEventTime),
                                      severityName(alarm.originalSeverity),
                                      alarm.originalText,
                                      number(alarm.originalSeqNo),
                                      number(alarm.info.size())};
    for (const auto& [name, value] : alarm.info) {
        items.push_back(name);
        items.push_back(value);
    }
    const std::string tag = alarm.stateful ? "Alarm" : "Alert";
    return "<FmLogRecord>\n   <LogTimestamp>" + timeText(timeOfDay) + "</LogTimestamp>\n   <" + tag + ">" +
           encodedForXml(joined(items, ";")) + "</" + tag + ">\n</FmLogRecord>";
}

std::string storedText(const ReferenceAlarm& alarm)
{
    std::vector<std::string> fields = {base64(alarm.dn),
                                       number(alarm.majorType),
                                       number(alarm.minorType),
                                       base64(shownText(alarm)),
                                       base64(alarm.textForClear),
                                       signedNumber(alarm.severity),
                                       base64(alarm.specificProblem),
                                       number(alarm.seqNo),
                                       number(alarm.eventTime),
                                       number(static_cast<std::uint32_t>(alarm.eventType)),
                                       number(alarm.probableCause),
                                       number(alarm.originalSeqNo),
                                       base64(alarm.originalText),
                                       signedNumber(alarm.originalSeverity),
                                       number(alarm.originalEventTime),
                                       signedNumber(alarm.state),
                                       number(alarm.clearEventTime),
                                       number(alarm.alarmId),
                                       number(alarm.info.size())};
    for (const auto& [name, value] : alarm.info) {
        fields.push_back(base64(name));
        fields.push_back(base64(value));
    }
    return joined(fields, ";");
}

std::string notification3(const ReferenceAlarm& alarm, unsigned long consumer)
{
    return notification(alarm, "3", consumer, "alarmId=" + number(alarm.alarmId));
}

std::string notification2(const ReferenceAlarm& alarm, unsigned long consumer)
{
    return notification(alarm, "2", consumer, "originalSeqNo=" + number(alarm.originalSeqNo));
}

}  // namespace Reference
}  // namespace ZorvFm
