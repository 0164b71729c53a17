#include "services/trace/TraceService.hpp"

#include <gmock/gmock.h>

#include "TemporaryDirectory.hpp"

namespace ZorvNode {

using ::testing::MatchesRegex;

class TraceServiceTest : public ::testing::Test {
protected:
    ZorvTest::TemporaryDirectory directory;
    TraceService trace{directory.path("trace.log"), {}, {{"Fm", 8}, {"Quiet", 3}}};
    const TraceLocation location{"/src/fm/AlarmList.cpp", 42, "saveAlarm"};
};

TEST_F(TraceServiceTest, aTraceHasGroupLevelLocationAndText)
{
    EXPECT_EQ(0, trace.write("Fm", 8, location, " >> a\nb"));

    EXPECT_THAT(directory.read("trace.log"),
                MatchesRegex("[^ ]+ [0-9]+ Fm 8 AlarmList\\.cpp:42 saveAlarm  >> a\\\\nb\n"));
}

TEST_F(TraceServiceTest, groupsAreOffUntilTheyAreTurnedOn)
{
    const std::int32_t* level = nullptr;

    EXPECT_EQ(0, trace.getLevel("Other", &level));

    EXPECT_EQ(0, *level);
    EXPECT_EQ(0, trace.write("Other", 1, location, "text"));
    EXPECT_EQ("", directory.read("trace.log"));
}

TEST_F(TraceServiceTest, tracesAboveTheGroupsLevelAreNotWritten)
{
    trace.write("Quiet", 4, location, "text");

    EXPECT_EQ("", directory.read("trace.log"));
}

TEST_F(TraceServiceTest, theLevelsPlaceStaysTheSame)
{
    const std::int32_t* once = nullptr;
    const std::int32_t* again = nullptr;
    trace.getLevel("Fm", &once);
    for (int count = 0; count < 100; ++count) {
        trace.getLevel("Group" + std::to_string(count), &again);
    }

    trace.getLevel("Fm", &again);

    EXPECT_EQ(once, again);
    EXPECT_EQ(8, *once);
}

TEST_F(TraceServiceTest, tooManyGroupsAreRefused)
{
    const std::int32_t* level = nullptr;
    for (std::size_t count = 0; count < TraceService::groupBound; ++count) {
        trace.getLevel("Group" + std::to_string(count), &level);
    }

    EXPECT_EQ(-10, trace.getLevel("OneMore", &level));
}

}  // namespace ZorvNode
