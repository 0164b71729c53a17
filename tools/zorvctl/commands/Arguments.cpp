#include "commands/Arguments.hpp"

#include <Poco/NumberParser.h>
#include <Poco/String.h>
#include <Poco/StringTokenizer.h>
#include <re2/re2.h>

#include <limits>

#include "TimeText.hpp"
#include "files/InputError.hpp"
#include "notification/NotificationReader.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

bool areDigits(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

std::uint32_t parseTypeNumber(const std::string& text, const std::string& whole)
{
    Poco::UInt64 number = 0;
    if (!areDigits(text) || !Poco::NumberParser::tryParseUnsigned64(text, number) ||
        number > std::numeric_limits<std::uint32_t>::max()) {
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
    Poco::UInt64 time = 0;
    const bool isNumber = areDigits(text) && Poco::NumberParser::tryParseUnsigned64(text, time);
    return isNumber ? time : parseTime(text);
}

std::string parsePlace(const std::string& text)
{
    if (!re2::RE2::FullMatch(text, "[0-9]+[.][0-9]+|oldest")) {
        throw ValueError("not oldest or two sequence numbers like 12.3, STATEFUL.STATELESS", text);
    }
    return text;
}

}  // namespace ZorvCtl
