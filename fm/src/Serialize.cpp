#include "Serialize.hpp"

#include <Poco/Base64Decoder.h>

#include <array>
#include <charconv>
#include <iterator>
#include <limits>
#include <optional>
#include <sstream>

#include "ZorvException.hpp"

namespace ZorvFm {
namespace Serialize {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t bytesOfLine = 54;  // 72 characters
constexpr std::string_view lineBreak = "\r\n";
constexpr char padding = '=';
constexpr std::uint8_t foreign = 0xFF;

constexpr std::array<std::uint8_t, 256> makeValues()
{
    std::array<std::uint8_t, 256> values{};
    for (std::uint8_t& value : values) {
        value = foreign;
    }
    for (std::size_t i = 0; i < alphabet.size(); ++i) {
        values[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> valueOf = makeValues();

std::uint32_t byteAt(std::string_view bytes, std::size_t position)
{
    return position < bytes.size() ? static_cast<unsigned char>(bytes[position]) : 0U;
}

/// Up to three bytes as four characters.
void appendGroup(std::string& text, std::string_view bytes)
{
    const std::uint32_t bits = byteAt(bytes, 0) << 16U | byteAt(bytes, 1) << 8U | byteAt(bytes, 2);
    const char group[] = {alphabet[bits >> 18U], alphabet[bits >> 12U & 63U],
                          bytes.size() > 1 ? alphabet[bits >> 6U & 63U] : padding,
                          bytes.size() > 2 ? alphabet[bits & 63U] : padding};
    text.append(group, sizeof(group));
}

/// The text that the encoder writes, and nothing else: whole groups, with line breaks between them.
std::optional<std::string> fromWholeGroups(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    while (!text.empty()) {
        if (text.substr(0, lineBreak.size()) == lineBreak) {
            text.remove_prefix(lineBreak.size());
            continue;
        }
        if (text.size() < 4) {
            return std::nullopt;
        }
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const std::uint8_t value = valueOf[static_cast<unsigned char>(text[i])];
            if (value == foreign) {
                return std::nullopt;
            }
            bits = bits << 6U | value;
        }
        bytes += static_cast<char>(bits >> 16U);
        bytes += static_cast<char>(bits >> 8U & 0xFFU);
        bytes += static_cast<char>(bits & 0xFFU);
        text.remove_prefix(4);
    }
    return bytes;
}

/// Read through the stream, not through its buffer: the stream turns the decoder's exceptions into its end.
std::string fromAnything(std::string_view text)
{
    std::istringstream encoded{std::string(text)};
    Poco::Base64Decoder decoder(encoded);
    std::string bytes;
    char byte = 0;
    while (decoder.get(byte)) {
        bytes += byte;
    }
    return bytes;
}

/// A text of digits alone, so few that none can overflow.
template <class ValueT>
bool isShortNumber(std::string_view text)
{
    return !text.empty() && text.size() <= static_cast<std::size_t>(std::numeric_limits<ValueT>::digits10) &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

void appendBase64(std::string& text, std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, bytesOfLine);
        for (std::size_t i = 0; i < line.size(); i += 3) {
            appendGroup(text, line.substr(i, 3));
        }
        if (line.size() == bytesOfLine) {
            text.append(lineBreak);
        }
        bytes.remove_prefix(line.size());
    }
}

std::string toBase64(std::string_view bytes)
{
    std::string text;
    appendBase64(text, bytes);
    return text;
}

/// The library reads what is padded or foreign.
std::string fromBase64(std::string_view text)
{
    auto bytes = fromWholeGroups(text);
    return bytes ? *std::move(bytes) : fromAnything(text);
}

template <class ValueT>
void fromString(ValueT& value, std::string_view text, std::ios_base& (*manipulator)(std::ios_base&), const char* name)
{
    if (manipulator == std::dec && isShortNumber<ValueT>(text)) {
        std::from_chars(text.data(), text.data() + text.size(), value);
        return;
    }
    std::istringstream stream{std::string(text)};
    stream >> manipulator >> value;
    if (stream.fail()) {
        throw Zorv::ZorvException("Failed to retrieve %s", name);
    }
}

template void fromString<int>(int& value, std::string_view text, std::ios_base& (*manipulator)(std::ios_base&),
                              const char* name);
template void fromString<unsigned long long>(unsigned long long& value, std::string_view text,
                                             std::ios_base& (*manipulator)(std::ios_base&), const char* name);

}  // namespace Serialize
}  // namespace ZorvFm
