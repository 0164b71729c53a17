#include "ToInt.hpp"

#include <gtest/gtest.h>

#include <string>

namespace Zorv {
namespace {

constexpr uint32_t untouched = 4711;

/// The exception's text, or "none" with the number.
template <class NumberT>
std::string outcome(const std::string& text)
{
    NumberT number = untouched;
    try {
        return toInt(text, number) ? std::to_string(number) : "false";
    } catch (const std::exception& e) {
        return number == untouched ? e.what() : "the target was changed";
    }
}

constexpr const char* invalidString = "Invalid string exception";
constexpr const char* valueRange = "Value range exception";
constexpr const char* unsignedExpected = "UnsignedInt Expected Exception";

TEST(ToIntTest, readsDecimalNumbers)
{
    EXPECT_EQ("0", outcome<uint32_t>("0"));
    EXPECT_EQ("42", outcome<uint32_t>("42"));
    EXPECT_EQ("42", outcome<uint64_t>("42"));
    EXPECT_EQ("10", outcome<uint32_t>("010"));
}

TEST(ToIntTest, readsUpToTheLargestValueOfTheType)
{
    EXPECT_EQ("4294967295", outcome<uint32_t>("4294967295"));
    EXPECT_EQ("4294967296", outcome<uint64_t>("4294967296"));
    EXPECT_EQ("18446744073709551615", outcome<uint64_t>("18446744073709551615"));
}

TEST(ToIntTest, refusesValuesAboveTheType)
{
    EXPECT_EQ(valueRange, outcome<uint32_t>("4294967296"));
    EXPECT_EQ(valueRange, outcome<uint32_t>("18446744073709551616"));
    EXPECT_EQ(valueRange, outcome<uint64_t>("18446744073709551616"));
    EXPECT_EQ(valueRange, outcome<uint64_t>(std::string(1000, '9')));
}

TEST(ToIntTest, refusesEmptyTextAndLeadingWhiteSpace)
{
    EXPECT_EQ(invalidString, outcome<uint32_t>(""));
    for (const char* blank : {" ", "\t", "\n", "\v", "\f", "\r"}) {
        EXPECT_EQ(invalidString, outcome<uint32_t>(std::string(blank) + "5"));
        EXPECT_EQ(invalidString, outcome<uint64_t>(std::string(blank) + "-5"));
    }
}

TEST(ToIntTest, refusesNegativeNumbers)
{
    EXPECT_EQ(unsignedExpected, outcome<uint32_t>("-5"));
    EXPECT_EQ(unsignedExpected, outcome<uint64_t>("-0"));
    EXPECT_EQ(unsignedExpected, outcome<uint64_t>("-"));
    EXPECT_EQ(unsignedExpected, outcome<uint32_t>("-99999999999999999999x"));
}

TEST(ToIntTest, refusesCharactersThatRemain)
{
    EXPECT_EQ(invalidString, outcome<uint32_t>("12x"));
    EXPECT_EQ(invalidString, outcome<uint64_t>("12 "));
    EXPECT_EQ(invalidString, outcome<uint64_t>("0x10"));
    EXPECT_EQ(invalidString, outcome<uint32_t>("abc"));
    EXPECT_EQ(invalidString, outcome<uint32_t>("1.5"));
    EXPECT_EQ(invalidString, outcome<uint32_t>(std::string("5\0", 2)));
}

TEST(ToIntTest, aValueOutOfRangeIsReportedBeforeCharactersThatRemain)
{
    EXPECT_EQ(valueRange, outcome<uint32_t>("4294967296x"));
    EXPECT_EQ(valueRange, outcome<uint64_t>("18446744073709551616x"));
}

}  // namespace
}  // namespace Zorv
