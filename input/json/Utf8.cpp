#include "json/Utf8.hpp"

#include <Poco/UTF8Encoding.h>

namespace ZorvInput {

namespace {

const char* const replacement = "\xEF\xBF\xBD";

/// Bytes of the character at the position; 0 when there is none.
std::size_t characterLength(const unsigned char* bytes, std::size_t available)
{
    const std::size_t length = *bytes < 0x80 ? 1 : *bytes < 0xE0 ? 2 : *bytes < 0xF0 ? 3 : 4;
    return length <= available && Poco::UTF8Encoding::isLegal(bytes, static_cast<int>(length)) ? length : 0;
}

}  // namespace

bool isUtf8(const std::string& text)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t length = characterLength(bytes + position, text.size() - position);
        if (length == 0) {
            return false;
        }
        position += length;
    }
    return true;
}

std::string toUtf8(const std::string& text)
{
    std::string utf8;
    utf8.reserve(text.size());
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t length = characterLength(bytes + position, text.size() - position);
        if (length == 0) {
            utf8 += replacement;
            ++position;
        } else {
            utf8.append(text, position, length);
            position += length;
        }
    }
    return utf8;
}

}  // namespace ZorvInput
