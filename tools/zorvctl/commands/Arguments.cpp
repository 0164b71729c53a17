#include "commands/Arguments.hpp"

#include <Poco/NumberParser.h>
#include <Poco/String.h>
#include <Poco/StringTokenizer.h>
#include <re2/re2.h>

#include <limits>

#include "TimeText.hpp"
#include "files/InputError.hpp"
#include "files/Number.hpp"
#include "notification/NotificationReader.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

std::uint32_t parseTypeNumber(const std::string& text, const std::string& whole)
{
    std::uint64_t number = 0;
    if (!parseUnsigned(text, number) || number > std::numeric_limits<std::uint32_t>::max()) {
        throw ValueError("not a type like 32473/101, numbers from 0 to 4294967295", whole);
    }
    return static_cast<std::uint32_t>(number);
}

}  // namespace

AlarmType parseType(const std::string& text)
{
    const std::size_t slash = text.find('/');
    AlarmType type;
    type.major = parseTypeNumber(text.substr(0, slash), text);
    if (slash != std::string::npos) {
        type.minor = parseTypeNumber(text.substr(slash + 1), text);
    }
    return type;
}

AlarmType parseFullType(const std::string& text)
{
    const AlarmType type = parseType(text);
    if (!type.minor) {
        throw ValueError("not a type like 32473/101, with both numbers", text);
    }
    return type;
}

std::int32_t parseSeverity(const std::string& text)
{
    std::int32_t severity = 0;
    if (!findSeverity(Poco::toUpper(text), severity) && !Poco::NumberParser::tryParse(text, severity)) {
        throw ValueError("not critical, major, minor, warning, indeterminate, cleared or a 32-bit number", text);
    }
    return severity;
}

std::string parseSeverityNames(const std::string& text)
{
    std::string names;
    for (const std::string& name : Poco::StringTokenizer(text, ",", Poco::StringTokenizer::TOK_TRIM)) {
        names += (names.empty() ? "" : ",") + severityText(parseSeverity(name));
    }
    return names;
}

std::pair<std::string, std::string> parsePair(const std::string& text)
{
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw ValueError("not NAME=VALUE", text);
    }
    return {text.substr(0, sign), text.substr(sign + 1)};
}

std::uint64_t parseEventTime(const std::string& text)
{
    std::uint64_t time = 0;
    return parseUnsigned(text, time) ? time : parseTime(text);
}

std::string parseAlarmId(const std::string& text)
{
    std::uint64_t number = 0;
    if (!parseUnsigned(text, number)) {
        throw ValueError("not the id of an alarm, a number", text);
    }
    return text;
}

std::string parseName(const std::string& text)
{
    if (text.empty() || text.find('/') != std::string::npos) {
        throw ValueError("not a name", text);
    }
    return text;
}

std::string parsePlace(const std::string& text)
{
    if (!re2::RE2::FullMatch(text, "[0-9]+[.][0-9]+|oldest")) {
        throw ValueError("not oldest or two sequence numbers like 12.3, STATEFUL.STATELESS", text);
    }
    return text;
}

}  // namespace ZorvCtl
