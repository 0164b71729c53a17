#include "Serialize.hpp"

#include <Poco/Base64Decoder.h>
#include <Poco/Base64Encoder.h>
#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <string>

#include "Dice.hpp"
#include "ZorvException.hpp"

namespace ZorvFm {
namespace Serialize {
namespace {

/// What the reader of a number has to say about a text it cannot read.
template <class ValueT>
std::string failure(const std::string& text, const char* name)
{
    ValueT value = 0;
    try {
        fromString(value, text, std::dec, name);
    } catch (const Zorv::ZorvException& e) {
        return e.what();
    }
    return "read " + std::to_string(value);
}

template <class ValueT>
ValueT read(const std::string& text, std::ios_base& (*manipulator)(std::ios_base&) = std::dec)
{
    ValueT value = 99;
    fromString(value, text, manipulator, "number");
    return value;
}

using Unsigned = unsigned long long;

// --- Base64

TEST(Base64Test, knownPairs)
{
    const std::pair<const char*, const char*> pairs[] = {{"", ""},
                                                         {"f", "Zg=="},
                                                         {"fo", "Zm8="},
                                                         {"foo", "Zm9v"},
                                                         {"foob", "Zm9vYg=="},
                                                         {"fooba", "Zm9vYmE="},
                                                         {"foobar", "Zm9vYmFy"},
                                                         {"\xfb\xff\xbf", "+/+/"}};
    for (const auto& [bytes, text] : pairs) {
        EXPECT_EQ(text, toBase64(bytes));
        EXPECT_EQ(bytes, fromBase64(text));
    }
}

TEST(Base64Test, aLineEndsAfter72Characters)
{
    const std::string line = "YWFh";  // of 3 bytes
    std::string fullLine;
    for (int i = 0; i < 18; ++i) {
        fullLine += line;
    }

    EXPECT_EQ(fullLine.substr(4), toBase64(std::string(51, 'a')));
    EXPECT_EQ(fullLine + "\r\n", toBase64(std::string(54, 'a')));
    EXPECT_EQ(fullLine + "\r\nYQ==", toBase64(std::string(55, 'a')));
    EXPECT_EQ(fullLine + "\r\n" + fullLine + "\r\n", toBase64(std::string(108, 'a')));
}

TEST(Base64Test, linesAreReadAsOne)
{
    EXPECT_EQ(std::string(100, 'a'), fromBase64(toBase64(std::string(100, 'a'))));
    EXPECT_EQ("foobar", fromBase64("Zm9v\r\nYmFy"));
    EXPECT_EQ("foobar", fromBase64("Zm\r\n9v\nYmFy\r\n"));
}

TEST(Base64Test, anyBytesComeBack)
{
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        bytes += static_cast<char>(value);
    }

    EXPECT_EQ(bytes, fromBase64(toBase64(bytes)));
}

TEST(Base64Test, aHugeTextComesBack)
{
    const std::string bytes(1000000, '\xff');

    EXPECT_EQ(bytes, fromBase64(toBase64(bytes)));
}

TEST(Base64Test, neverHoldsTheSeparatorOfFields)
{
    EXPECT_EQ(std::string::npos, toBase64(std::string(1000, ';')).find(';'));
}

std::string encodedByTheLibrary(const std::string& bytes)
{
    std::ostringstream text;
    Poco::Base64Encoder encoder(text);
    encoder << bytes;
    encoder.close();
    return text.str();
}

std::string decodedByTheLibrary(const std::string& text)
{
    std::istringstream encoded(text);
    Poco::Base64Decoder decoder(encoded);
    std::string bytes;
    char byte = 0;
    while (decoder.get(byte)) {
        bytes += byte;
    }
    return bytes;
}

std::string randomBytes(Dice& dice, std::size_t size, const std::string& from)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += from.empty() ? static_cast<char>(dice.roll(256)) : from[dice.roll(from.size())];
    }
    return bytes;
}

TEST(Base64Test, isWhatTheLibraryWrites)
{
    Dice dice(1);
    for (std::size_t size = 0; size < 700; ++size) {
        const std::string bytes = randomBytes(dice, size, "");
        ASSERT_EQ(encodedByTheLibrary(bytes), toBase64(bytes)) << size;
        ASSERT_EQ(bytes, fromBase64(toBase64(bytes))) << size;
    }
}

TEST(Base64Test, isReadAsTheLibraryReads)
{
    Dice dice(2);
    for (int i = 0; i < 30000; ++i) {
        std::string text = randomBytes(dice, dice.roll(20), dice.roll(2) == 0 ? "AZaz09+/=\r\n" : "AZaz09+/");
        if (dice.roll(3) == 0) {
            text = toBase64(randomBytes(dice, dice.roll(100), ""));
        }
        if (!text.empty() && dice.roll(3) == 0) {
            text[dice.roll(text.size())] = randomBytes(dice, 1, "")[0];
        }
        if (!text.empty() && dice.roll(4) == 0) {
            text.insert(dice.roll(text.size()), dice.roll(2) == 0 ? "\r\n" : "\n");
        }
        ASSERT_EQ(decodedByTheLibrary(text), fromBase64(text)) << text;
    }
}

TEST(Base64Test, foreignCharactersEndTheReading)
{
    EXPECT_EQ("foo", fromBase64("Zm9v!mFy"));
    EXPECT_EQ("foo", fromBase64("Zm9v\xff"));
    EXPECT_EQ("", fromBase64("*"));
}

TEST(Base64Test, anUnfinishedGroupIsLost)
{
    EXPECT_EQ("foo", fromBase64("Zm9vYm"));
    EXPECT_EQ("foo", fromBase64("Zm9vY"));
}

TEST(Base64Test, randomBytesComeBack)
{
    Dice dice;
    for (int i = 0; i < 500; ++i) {
        const std::string bytes = dice.bytes(300);
        ASSERT_EQ(bytes, fromBase64(toBase64(bytes))) << "seed " << dice.getSeed();
    }
}

// --- Numbers

TEST(FromStringTest, readsNumbers)
{
    EXPECT_EQ(0, read<int>("0"));
    EXPECT_EQ(12, read<int>("12"));
    EXPECT_EQ(-12, read<int>("-12"));
    EXPECT_EQ(12u, read<Unsigned>("12"));
}

TEST(FromStringTest, readsTheEndsOfTheRanges)
{
    EXPECT_EQ(INT_MAX, read<int>("2147483647"));
    EXPECT_EQ(INT_MIN, read<int>("-2147483648"));
    EXPECT_EQ(ULLONG_MAX, read<Unsigned>("18446744073709551615"));
}

TEST(FromStringTest, ignoresWhatFollows)
{
    EXPECT_EQ(12, read<int>("12x"));
    EXPECT_EQ(12, read<int>("12 13"));
    EXPECT_EQ(12u, read<Unsigned>("12.5"));
    EXPECT_EQ(0u, read<Unsigned>("0x10"));
}

TEST(FromStringTest, isDecimalWithLeadingZerosToo)
{
    EXPECT_EQ(12, read<int>("012"));
    EXPECT_EQ(12u, read<Unsigned>("00012"));
}

TEST(FromStringTest, skipsBlanksAndPlus)
{
    EXPECT_EQ(12, read<int>(" \t\n12"));
    EXPECT_EQ(12, read<int>("+12"));
}

TEST(FromStringTest, followsTheManipulator)
{
    EXPECT_EQ(255, read<int>("ff", std::hex));
    EXPECT_EQ(8u, read<Unsigned>("10", std::oct));
}

template <class ValueT>
void expectReadAsTheLibraryReads(const std::string& text)
{
    ValueT expected = 0;
    std::istringstream stream(text);
    stream >> expected;
    EXPECT_EQ(stream.fail() ? "Failed to retrieve it" : "read " + std::to_string(expected), failure<ValueT>(text, "it"))
        << text;
}

TEST(FromStringTest, isReadAsTheLibraryReads)
{
    Dice dice(3);
    for (int i = 0; i < 20000; ++i) {
        const std::string text =
            randomBytes(dice, dice.roll(23), dice.roll(3) == 0 ? "0123456789+- x.,\t" : "0123456789");
        expectReadAsTheLibraryReads<int>(text);
        expectReadAsTheLibraryReads<Unsigned>(text);
    }
}

TEST(FromStringTest, anUnsignedNumberWrapsBelowZero)
{
    EXPECT_EQ(ULLONG_MAX, read<Unsigned>("-1"));
}

TEST(FromStringTest, tellsWhatItCouldNotRead)
{
    EXPECT_EQ("Failed to retrieve majorType", failure<Unsigned>("", "majorType"));
    EXPECT_EQ("Failed to retrieve Sequence number", failure<Unsigned>("x12", "Sequence number"));
    EXPECT_EQ("Failed to retrieve Severity", failure<int>("", "Severity"));
    EXPECT_EQ("Failed to retrieve Severity", failure<int>(" ", "Severity"));
    EXPECT_EQ("Failed to retrieve Severity", failure<int>("-", "Severity"));
}

TEST(FromStringTest, refusesWhatIsTooLarge)
{
    EXPECT_EQ("Failed to retrieve Severity", failure<int>("2147483648", "Severity"));
    EXPECT_EQ("Failed to retrieve Severity", failure<int>("-2147483649", "Severity"));
    EXPECT_EQ("Failed to retrieve seqNo", failure<Unsigned>("18446744073709551616", "seqNo"));
}

TEST(FromStringTest, theNameIsNoFormat)
{
    EXPECT_EQ("Failed to retrieve %s%n", failure<int>("", "%s%n"));
}

}  // namespace
}  // namespace Serialize
}  // namespace ZorvFm
