#include "json/Json.hpp"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cctype>
#include <cmath>

#include "files/InputError.hpp"

namespace ZorvInput {

namespace {

constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

ValueError notJson(std::size_t position, std::string reason)
{
    reason.erase(reason.find_last_not_of('.') + 1);
    return ValueError("not JSON: at byte " + std::to_string(position) + ": " + reason);
}

/// Whether an escape for half of a character stands there: the first half from 8 to b, the second one from c to f.
bool isHalf(const std::string& text, std::size_t position, char low, char high)
{
    const std::string head = text.substr(position, 4);
    const int digit = head.size() == 4 ? std::tolower(static_cast<unsigned char>(head[3])) : 0;
    return (head.compare(0, 3, "\\ud") == 0 || head.compare(0, 3, "\\uD") == 0) && digit >= low && digit <= high;
}

/// The end of the escape that begins there. The library makes sure that a second half follows the first, but takes a
/// second one alone.
std::size_t endOfEscape(const std::string& text, std::size_t position)
{
    constexpr std::size_t bothHalves = 12;
    if (isHalf(text, position, 'c', 'f')) {
        throw notJson(position, rapidjson::GetParseError_En(rapidjson::kParseErrorStringUnicodeSurrogateInvalid));
    }
    return position + (isHalf(text, position, '8', 'b') ? bothHalves : 2);
}

/// Brackets outside texts, counted before anything is built from them.
bool isDeeperThan(const std::string& text, unsigned deepest)
{
    unsigned depth = 0;
    bool inText = false;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char character = text[position];
        if (inText && character == '\\') {
            position = endOfEscape(text, position) - 1;
        } else if (inText) {
            inText = character != '"';
        } else if (character == '"') {
            inText = true;
        } else if (character == '[' || character == '{') {
            if (++depth > deepest) {
                return true;
            }
        } else if ((character == ']' || character == '}') && depth > 0) {
            --depth;
        }
    }
    return false;
}

/// The library takes numbers just above the largest one for infinity, which is no JSON.
bool isFinite(const JsonT& value)
{
    if (value.IsArray()) {
        return std::all_of(value.Begin(), value.End(), isFinite);
    }
    if (value.IsObject()) {
        return std::all_of(value.MemberBegin(), value.MemberEnd(),
                           [](const JsonT::Member& member) { return isFinite(member.value); });
    }
    return !value.IsDouble() || std::isfinite(value.GetDouble());
}

}  // namespace

void parseJson(const std::string& text, unsigned deepest, JsonDocumentT& document)
{
    if (isDeeperThan(text, deepest)) {
        throw ValueError("JSON deeper than " + std::to_string(deepest) + " levels");
    }
    const std::size_t null = text.find('\0');  // would end the text for the library
    if (null != std::string::npos) {
        throw notJson(null, rapidjson::GetParseError_En(rapidjson::kParseErrorValueInvalid));
    }
    document.Parse<parseFlags>(text.data(), text.size());
    if (document.HasParseError()) {
        throw notJson(document.GetErrorOffset(), rapidjson::GetParseError_En(document.GetParseError()));
    }
    if (!isFinite(document)) {
        throw ValueError("not JSON: a number is too large");
    }
}

std::string jsonText(const JsonT& value)
{
    if (value.IsString()) {
        return {value.GetString(), value.GetStringLength()};
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace ZorvInput
