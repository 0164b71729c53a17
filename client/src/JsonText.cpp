#include "JsonText.hpp"

#include <rapidjson/encodings.h>
#include <rapidjson/stream.h>

namespace ZorvClient {

namespace {

/// What the check copies to: the end of a string.
struct StringEnd {
    using Ch = char;

    void Put(char character) { text.push_back(character); }

    std::string& text;
};

bool isPlain(char character)
{
    return character >= ' ' && character != '"' && character != '\\';
}

void appendEscaped(std::string& json, char character)
{
    const char* const digits = "0123456789ABCDEF";
    json += '\\';
    if (character == '"' || character == '\\') {
        json += character;
    } else {
        json += "u00";
        json += digits[character / 16];
        json += digits[character % 16];
    }
}

}  // namespace

bool appendText(std::string& json, const char* text, std::size_t length)
{
    const char* const end = text + length;
    json += '"';
    while (text != end) {
        const char* const begin = text;
        while (text != end && isPlain(*text)) {
            ++text;
        }
        json.append(begin, text);
        if (text == end) {
            break;
        }
        if (static_cast<unsigned char>(*text) < 0x80) {
            appendEscaped(json, *text);
            ++text;
        } else {
            // The zero behind the text ends a character that has been cut off.
            rapidjson::StringStream source(text);
            StringEnd target{json};
            if (!rapidjson::UTF8<>::Validate(source, target)) {
                return false;
            }
            text += source.Tell();
        }
    }
    json += '"';
    return true;
}

}  // namespace ZorvClient
