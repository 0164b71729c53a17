#include "Serialize.hpp"

#include <Poco/Base64Decoder.h>

#include <algorithm>
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

std::uint32_t bitsOf(char byte)
{
    return static_cast<unsigned char>(byte);
}

/// Three bytes as four characters. @return behind them
char* encodeGroup(char* place, std::uint32_t bits)
{
    place[0] = alphabet[bits >> 18U];
    place[1] = alphabet[bits >> 12U & 63U];
    place[2] = alphabet[bits >> 6U & 63U];
    place[3] = alphabet[bits & 63U];
    return place + 4;
}

/// At most a line, without its end. @return behind it
char* encodeLine(char* place, std::string_view bytes)
{
    std::size_t i = 0;
    for (; i + 3 <= bytes.size(); i += 3) {
        place = encodeGroup(place, bitsOf(bytes[i]) << 16U | bitsOf(bytes[i + 1]) << 8U | bitsOf(bytes[i + 2]));
    }
    if (i == bytes.size()) {
        return place;
    }
    const bool areTwo = i + 2 == bytes.size();
    place = encodeGroup(place, bitsOf(bytes[i]) << 16U | (areTwo ? bitsOf(bytes[i + 1]) << 8U : 0U));
    place[-1] = padding;
    place[-2] = areTwo ? place[-2] : padding;
    return place;
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
    const std::size_t begin = text.size();
    text.resize(begin + (bytes.size() + 2) / 3 * 4 + bytes.size() / bytesOfLine * lineBreak.size());
    char* place = text.data() + begin;
    for (; bytes.size() >= bytesOfLine; bytes.remove_prefix(bytesOfLine)) {
        place = encodeLine(place, bytes.substr(0, bytesOfLine));
        place = std::copy(lineBreak.begin(), lineBreak.end(), place);
    }
    encodeLine(place, bytes);
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
