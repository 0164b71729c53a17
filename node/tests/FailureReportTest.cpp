#include "stores/FailureReport.hpp"

#include <gmock/gmock.h>

#include "LogRecorder.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FailureReportTest, successIsNotWorthALine)
{
    LogRecorder log;
    FailureReport report(log.sink(), "writing", std::chrono::milliseconds(0));

    report.worked();

    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(FailureReportTest, aFailureAndItsEndAreToldOnceEach)
{
    LogRecorder log;
    FailureReport report(log.sink(), "writing", std::chrono::milliseconds(0));

    report.failed("no room");
    report.failed("no disk");
    report.worked();
    report.worked();
    report.failed("no room");

    EXPECT_THAT(log.lines(),
                ElementsAre("3 writing fails: no room", "5 writing works again", "3 writing fails: no room"));
}

TEST(FailureReportTest, failuresThatComeAndGoAreOneFailure)
{
    LogRecorder log;
    FailureReport report(log.sink(), "writing", std::chrono::hours(1));

    report.failed("no room");
    report.worked();
    report.failed("no room");

    EXPECT_THAT(log.lines(), ElementsAre("3 writing fails: no room"));
}

}  // namespace ZorvNode
