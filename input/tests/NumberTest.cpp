#include "files/Number.hpp"

#include <gmock/gmock.h>

namespace ZorvInput {

TEST(NumberTest, digitsAreTakenUpToTheLargestNumber)
{
    std::uint64_t number = 1;
    EXPECT_TRUE(parseUnsigned("0", number));
    EXPECT_EQ(0U, number);
    EXPECT_TRUE(parseUnsigned("0018446744073709551615", number));
    EXPECT_EQ(UINT64_MAX, number);
}

TEST(NumberTest, nothingElseIsTaken)
{
    for (const char* text : {"", " ", "+1", "-1", " 1", "1 ", "1,000", "0x1", "1.0", "18446744073709551616"}) {
        std::uint64_t number = 7;
        EXPECT_FALSE(parseUnsigned(text, number)) << text;
        EXPECT_EQ(7U, number) << text;
    }
}

}  // namespace ZorvInput
