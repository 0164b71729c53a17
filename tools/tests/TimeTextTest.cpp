#include "TimeText.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "files/InputError.hpp"

namespace ZorvCtl {

class TimeTextTest : public ::testing::Test {
protected:
    static void goTo(const char* zone)
    {
        ::setenv("TZ", zone, 1);
        ::tzset();
    }

    void TearDown() override { goTo("UTC"); }

    static std::string failureOf(const std::string& text)
    {
        try {
            parseTime(text);
        } catch (const ZorvInput::ValueError& e) {
            return e.what();
        }
        return "taken";
    }
};

TEST_F(TimeTextTest, timesAreLocalWithMillisecondsAndZone)
{
    goTo("UTC");
    EXPECT_EQ("2024-05-01T06:00:00.123+00:00", timeText(1714543200123999999));
    goTo("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ("2024-05-01T08:00:00.123+02:00", timeText(1714543200123999999));
    EXPECT_EQ("2024-01-01T01:00:00.000+01:00", timeText(1704067200000000000));
    EXPECT_EQ("-", timeText(0));
}

TEST_F(TimeTextTest, timesAreReadWithZoneAndFraction)
{
    EXPECT_EQ(1714543200000000000U, parseTime("2024-05-01T06:00:00Z"));
    EXPECT_EQ(1714543200250000000U, parseTime("2024-05-01T08:00:00.25+02:00"));
    EXPECT_EQ(0U, parseTime("1970-01-01T00:00:00Z"));
}

TEST_F(TimeTextTest, otherTextsAreRefused)
{
    EXPECT_EQ("not a time like 2024-05-01T06:00:00Z, \"yesterday\"", failureOf("yesterday"));
    EXPECT_EQ("not a time like 2024-05-01T06:00:00Z, \"2024-05-01T06:00:00\"", failureOf("2024-05-01T06:00:00"));
    EXPECT_EQ("not a time like 2024-05-01T06:00:00Z, \"2024-13-01T06:00:00Z\"", failureOf("2024-13-01T06:00:00Z"));
    EXPECT_EQ("before 1970, \"1969-12-31T23:59:59Z\"", failureOf("1969-12-31T23:59:59Z"));
}

}  // namespace ZorvCtl
