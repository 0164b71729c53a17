/// The stored text of an alarm, in the format of today (2) and of the earlier list (1).
///
/// A line of fields separated by ";", free texts in Base64 so that they never contain the separator. Neither reader tells
/// its caller about a failure: a damaged item becomes an alarm with what could be read.
#include <Poco/Exception.h>

#include <charconv>
#include <limits>
#include <utility>
#include <vector>

#include "Alarm.hpp"
#include "Logging.hpp"
#include "Serialize.hpp"

namespace ZorvFm {
namespace {

constexpr char separator = ';';
constexpr std::size_t usualSize = 512;
constexpr std::size_t infoIndexFormat1 = 17;
constexpr std::size_t infoIndexFormat2 = 19;

/// Puts fields together.
class FieldWriter {
public:
    FieldWriter() { data.reserve(usualSize); }

    FieldWriter& text(std::string_view bytes)
    {
        Serialize::appendBase64(separated(), bytes);
        return *this;
    }

    template <class NumberT>
    FieldWriter& number(NumberT value)
    {
        char digits[std::numeric_limits<NumberT>::digits10 + 2];
        const char* const end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        separated().append(digits, static_cast<std::size_t>(end - digits));
        return *this;
    }

    FieldWriter& pairs(const AdditionalInfoT& info)
    {
        for (const auto& [name, value] : info) {
            text(name).text(value);
        }
        return *this;
    }

    std::string take() { return std::move(data); }

private:
    std::string& separated()
    {
        if (!std::exchange(first, false)) {
            data += separator;
        }
        return data;
    }

    std::string data;
    bool first = true;
};

/// Takes fields apart; no text has none. An index beyond the last field throws Poco::RangeException.
class FieldReader {
public:
    explicit FieldReader(std::string_view data)
    {
        std::size_t end = data.empty() ? std::string_view::npos : data.find(separator);
        for (; end != std::string_view::npos; end = data.find(separator)) {
            fields.push_back(data.substr(0, end));
            data.remove_prefix(end + 1);
        }
        if (!data.empty() || !fields.empty()) {
            fields.push_back(data);
        }
    }

    std::size_t count() const { return fields.size(); }

    std::string text(std::size_t index) const { return Serialize::fromBase64(field(index)); }

    int signedNumber(std::size_t index, const char* name) const
    {
        int value = 0;
        Serialize::fromString(value, field(index), std::dec, name);
        return value;
    }

    unsigned long long number(std::size_t index, const char* name) const
    {
        unsigned long long value = 0;
        Serialize::fromString(value, field(index), std::dec, name);
        return value;
    }

    std::uint32_t number32(std::size_t index, const char* name) const
    {
        return static_cast<std::uint32_t>(number(index, name));
    }

    int state(std::size_t index) const
    {
        return field(index).empty() ? static_cast<int>(AlarmState::ACTIVE) : signedNumber(index, "_state");
    }

    std::pair<std::string, std::string> pair(std::size_t nameIndex) const
    {
        return {text(nameIndex), text(nameIndex + 1)};
    }

private:
    std::string_view field(std::size_t index) const
    {
        if (index >= fields.size()) {
            throw Poco::RangeException();
        }
        return fields[index];
    }

    std::vector<std::string_view> fields;
};

bool isFieldCountOfFormat1(std::size_t count)
{
    return count == 11 || (count >= 15 && count <= 17) || (count > 17 && count % 2 == 1);
}

/// Both readers' answer to a field that cannot be read.
template <class ReadT>
void readOrLog(const std::string& data, ReadT read)
{
    try {
        read();
    } catch (const std::exception& e) {
        ZORV_LOG_AND_TRACE(ZORV_LOG_ERROR, "Failed to deserialize alarm: %s, data :%s", e.what(), data.c_str());
    }
}

/// The first 15 fields of format 1.
FieldWriter writeFormat1Head(const Alarm& alarm)
{
    FieldWriter writer;
    writer.text(alarm.dn).number(alarm.majorType).number(alarm.minorType).text(alarm.getAdditionalText());
    writer.number(alarm.severity).text(alarm.specificProblem).number(alarm.seqNo).number(alarm.eventTime);
    writer.number(alarm.stateful ? 1 : 0).number(static_cast<std::uint32_t>(alarm.eventType));
    writer.number(alarm.probableCause).number(alarm.originalSeqNo).text(alarm.originalAdditionalText);
    writer.number(alarm.originalSeverity).number(alarm.originalEventTime);
    return writer;
}

}  // namespace

std::string Alarm::serialize_v2() const
{
    FieldWriter writer;
    const AdditionalInfoT info = getAdditionalInfo();
    const std::string storedText = getAdditionalText();  // as shown, the remark on toggling included
    writer.text(dn).number(majorType).number(minorType).text(storedText).text(getAdditionalTextForClear());
    writer.number(severity).text(specificProblem).number(seqNo).number(eventTime);
    writer.number(static_cast<std::uint32_t>(eventType)).number(probableCause).number(originalSeqNo);
    writer.text(originalAdditionalText).number(originalSeverity).number(originalEventTime);
    writer.number(state.getState()).number(clearEventTime).number(alarmId).number(info.size()).pairs(info);
    return writer.take();
}

void Alarm::deserialize_v2(const std::string& data)
{
    const FieldReader fields(data);
    additionalInfo.clear();
    additionalTextForClear.clear();
    stateful = true;
    readOrLog(data, [&] {
        dn = fields.text(0);
        majorType = fields.number32(1, "majorType");
        minorType = fields.number32(2, "minorType");
        additionalText = fields.text(3);
        additionalTextForClear = fields.text(4);
        severity = fields.signedNumber(5, "Severity");
        specificProblem = fields.text(6);
        seqNo = fields.number(7, "Sequence number");
        eventTime = fields.number(8, "eventTime");
        eventType = static_cast<std::int32_t>(fields.number32(9, "eventType"));
        probableCause = fields.number32(10, "probableCause");
        originalSeqNo = fields.number(11, "originalSeqNo");
        originalAdditionalText = fields.text(12);
        originalSeverity = fields.signedNumber(13, "originalSeverity");
        originalEventTime = fields.number(14, "originalEventTime");
        state.setState(fields.state(15));
        clearEventTime = fields.number(16, "clearEventTime");
        alarmId = fields.number(17, "alarmId");
        const int pairs = fields.signedNumber(18, "additionalInfoSize");
        std::size_t nameIndex = infoIndexFormat2;
        for (int i = 0; i < pairs && nameIndex < fields.count(); ++i, nameIndex += 2) {
            additionalInfo.push_back(fields.pair(nameIndex));
        }
    });
}

std::string Alarm::serialize() const
{
    FieldWriter writer = writeFormat1Head(*this);
    return writer.number(state.getState()).number(clearEventTime).pairs(getAdditionalInfo()).take();
}

std::string Alarm::serializeOldForTest() const
{
    return writeFormat1Head(*this).take();
}

void Alarm::deserialize(const std::string& data)
{
    const FieldReader fields(data);
    additionalInfo.clear();
    const std::size_t count = fields.count();
    if (!isFieldCountOfFormat1(count)) {
        ZORV_LOG_AND_TRACE(ZORV_LOG_ERROR, "Corrupt data from replicated list, size %d", static_cast<int>(count));
        return;
    }
    readOrLog(data, [&] {
        dn = fields.text(0);
        majorType = fields.number32(1, "majorType");
        minorType = fields.number32(2, "minorType");
        additionalText = fields.text(3);
        severity = fields.signedNumber(4, "Severity");
        specificProblem = fields.text(5);
        seqNo = fields.number(6, "Sequence number");
        eventTime = fields.number(7, "eventTime");
        stateful = fields.number(8, "stateful") != 0;
        eventType = static_cast<std::int32_t>(fields.number32(9, "eventType"));
        probableCause = fields.number32(10, "probableCause");
        if (count == 11) {
            originalSeqNo = seqNo;
            originalAdditionalText = additionalText;
            originalSeverity = severity;
            originalEventTime = eventTime;
        } else {
            originalSeqNo = fields.number(11, "originalSeqNo");
            originalAdditionalText = fields.text(12);
            originalSeverity = fields.signedNumber(13, "originalSeverity");
            originalEventTime = fields.number(14, "originalEventTime");
        }
        alarmId = originalSeqNo;  // the identity of that time
        state.setState(count < 16 ? static_cast<int>(AlarmState::ACTIVE) : fields.state(15));
        if (count >= infoIndexFormat1) {
            clearEventTime = fields.number(16, "clearEventTime");
        }
        for (std::size_t nameIndex = infoIndexFormat1; nameIndex < count; nameIndex += 2) {
            additionalInfo.push_back(fields.pair(nameIndex));
        }
    });
}

}  // namespace ZorvFm
