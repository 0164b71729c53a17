/// The text forms of an alarm: the debug line and the alarm log record.
#include <array>
#include <charconv>
#include <ctime>
#include <limits>
#include <utility>

#include "AlarmData.hpp"
#include "LocalTime.hpp"
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

constexpr std::array<bool, 256> makeSpecials()
{
    std::array<bool, 256> specials{};
    for (const char character : {'&', '"', '\'', '<', '>'}) {
        specials[static_cast<unsigned char>(character)] = true;
    }
    return specials;
}

constexpr std::array<bool, 256> isSpecial = makeSpecials();

const char* entityOf(char character)
{
    switch (character) {
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    case '<':
        return "&lt;";
    default:
        return "&gt;";
    }
}

void appendXml(std::string& encoded, std::string_view text)
{
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isSpecial[static_cast<unsigned char>(text[i])]) {
            encoded.append(text, begin, i - begin).append(entityOf(text[i]));
            begin = i + 1;
        }
    }
    encoded.append(text, begin);
}

/// Puts the fields of a log record behind each other, encoded.
class RecordWriter {
public:
    explicit RecordWriter(std::string& logRecord) : record(logRecord) {}

    RecordWriter& field(std::string_view text)
    {
        appendXml(separated(), text);
        return *this;
    }

    RecordWriter& field(std::uint64_t number)
    {
        char digits[std::numeric_limits<std::uint64_t>::digits10 + 1];
        const char* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
        separated().append(digits, static_cast<std::size_t>(end - digits));
        return *this;
    }

    RecordWriter& time(std::uint64_t nanos)
    {
        Zorv::appendLocalTime(separated(), nanos);
        return *this;
    }

private:
    std::string& separated()
    {
        if (!std::exchange(isFirst, false)) {
            record += ';';
        }
        return record;
    }

    std::string& record;
    bool isFirst = true;
};

}  // namespace

std::string AlarmData::xmlEncode(std::string_view text)
{
    std::string encoded;
    encoded.reserve(text.size());
    appendXml(encoded, text);
    return encoded;
}

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

void AlarmData::appendLogBody(std::string& record) const
{
    const AdditionalInfoT info = getAdditionalInfo();
    RecordWriter writer(record);
    writer.field(stateful ? "1" : "0").time(eventTime).field(dn).field(majorType).field(minorType);
    writer.field(specificProblem).field(probableCause).field(getSeverity()).field(getAdditionalText()).field(seqNo);
    writer.field(getEventType()).time(originalEventTime).field(getOriginalSeverity()).field(originalAdditionalText);
    writer.field(originalSeqNo).field(info.size());
    for (const auto& [name, value] : info) {
        writer.field(name).field(value);
    }
}

std::string AlarmData::toLogString() const
{
    constexpr std::size_t usualSize = 512;
    const std::string_view tag = stateful ? "Alarm" : "Alert";
    std::string record;
    record.reserve(usualSize);
    record.append("<FmLogRecord>\n   <LogTimestamp>");
    Zorv::appendLocalTime(record, timeOfDay());
    record.append("</LogTimestamp>\n   <").append(tag).append(">");
    appendLogBody(record);
    record.append("</").append(tag).append(">\n</FmLogRecord>");
    return record;
}

}  // namespace ZorvFm
