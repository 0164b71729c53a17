#include "files/LineText.hpp"

#include <Poco/NumberFormatter.h>

namespace ZorvInput {

namespace {

/// Bytes of the control character that begins at position; 0 when there is none.
std::size_t controlLength(const std::string& text, std::size_t position)
{
    const auto at = [&](std::size_t offset) {
        return position + offset < text.size() ? static_cast<unsigned char>(text[position + offset]) : 0U;
    };
    if (at(0) < 0x20 || at(0) == 0x7F) {
        return 1;
    }
    if (at(0) == 0xC2 && at(1) >= 0x80 && at(1) < 0xA0) {
        return 2;
    }
    const bool isLineEnd = at(0) == 0xE2 && at(1) == 0x80 && (at(2) == 0xA8 || at(2) == 0xA9);
    return isLineEnd ? 3 : 0;
}

/// Looks at every byte, so that the compiler can take many at a time.
bool mayHoldControl(const std::string& text)
{
    bool found = false;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        found |= (byte < 0x20) | (byte == 0x7F) | (byte == 0xC2) | (byte == 0xE2);
    }
    return found;
}

std::string escaped(char character)
{
    switch (character) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return "\\x" +
               Poco::NumberFormatter::formatHex(static_cast<unsigned>(static_cast<unsigned char>(character)), 2);
    }
}

}  // namespace

/// Most texts are lines as they are.
std::string toLineText(const std::string& text)
{
    if (!mayHoldControl(text)) {
        return text;
    }
    std::string line;
    line.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        std::size_t control = controlLength(text, position);
        if (control == 0) {
            line += text[position++];
        }
        for (; control > 0; --control) {
            line += escaped(text[position++]);
        }
    }
    return line;
}

}  // namespace ZorvInput
