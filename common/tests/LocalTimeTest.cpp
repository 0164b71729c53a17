#include "LocalTime.hpp"

#include <Poco/DateTimeFormatter.h>
#include <Poco/LocalDateTime.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <random>

namespace Zorv {
namespace {

std::string byTheLibrary(std::uint64_t nanos)
{
    const Poco::LocalDateTime time{
        Poco::DateTime(Poco::Timestamp(static_cast<Poco::Timestamp::TimeVal>(nanos / 1000)))};
    return Poco::DateTimeFormatter::format(time, "%Y-%m-%dT%H:%M:%S.%i%z");
}

constexpr std::uint64_t second = 1000000000;
constexpr std::uint64_t summerTime2026 = 1774746000;  // in central Europe

class LocalTimeTest : public ::testing::TestWithParam<const char*> {
protected:
    LocalTimeTest() { setZone(GetParam()); }
    ~LocalTimeTest() override { setZone("UTC0"); }

    static void setZone(const char* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }
};

TEST_P(LocalTimeTest, isWhatTheLibraryWrites)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t nanos = random();
        ASSERT_EQ(byTheLibrary(nanos), localTimeText(nanos)) << nanos;
    }
}

TEST_P(LocalTimeTest, isWhatTheLibraryWritesInOneSecondAndAroundIt)
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 2000; ++i) {
        const std::uint64_t base = random() >> (random() % 3 == 0 ? 1U : 6U);
        for (const std::uint64_t nanos : {base, base + 1, base + second - 1, base + second, base + 60 * second, base}) {
            ASSERT_EQ(byTheLibrary(nanos), localTimeText(nanos)) << nanos;
        }
    }
}

TEST_P(LocalTimeTest, isWhatTheLibraryWritesAroundEachChangeOfTheClocks)
{
    for (std::uint64_t hour = 0; hour < std::uint64_t{366} * 24 * 2; ++hour) {
        for (const std::uint64_t nanos :
             {(summerTime2026 + hour * 1800) * second, (summerTime2026 + hour * 1800) * second - 1}) {
            ASSERT_EQ(byTheLibrary(nanos), localTimeText(nanos)) << nanos;
        }
    }
}

TEST_P(LocalTimeTest, theEndsOfTheRange)
{
    for (const std::uint64_t nanos :
         {std::uint64_t{0}, std::uint64_t{1}, second - 1, second, UINT64_MAX, UINT64_MAX - second}) {
        EXPECT_EQ(byTheLibrary(nanos), localTimeText(nanos)) << nanos;
    }
}

TEST_P(LocalTimeTest, anotherZoneIsNoticedAtOnce)
{
    const std::uint64_t nanos = summerTime2026 * second;
    for (const char* zone : {"UTC0", GetParam(), "LINT-14", GetParam()}) {
        setZone(zone);
        EXPECT_EQ(byTheLibrary(nanos), localTimeText(nanos)) << zone;
    }
}

INSTANTIATE_TEST_SUITE_P(zones, LocalTimeTest,
                         ::testing::Values("UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "NST3:30NDT,M3.2.0,M11.1.0", "LINT-14",
                                           "AOE12:59:59", "IST-5:30", ":Europe/Berlin", ":America/St_Johns",
                                           ":Australia/Lord_Howe", ":Africa/Casablanca", ":Pacific/Apia",
                                           ":Asia/Kathmandu", ":no/such/zone"));

}  // namespace
}  // namespace Zorv
