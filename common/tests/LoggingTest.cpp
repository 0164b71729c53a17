#include "Logging.hpp"

#include <string>

#include "CommonTest.hpp"
#include "Portal.hpp"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::FakeLog;
using ZorvFakes::FakeTrace;
using ZorvFakes::Topic;

namespace Zorv {
namespace {

class LoggingTest : public CommonTest {
protected:
    LoggingTest() { middleware.journal.show({Topic::Trace}); }

    /// An argument that notices when somebody looks at it.
    int evaluated() { return ++evaluations; }

    int evaluations = 0;
};

TEST_F(LoggingTest, linesCarryTheirLevel)
{
    ZORV_ERROR("an error %d", 1);
    ZORV_WARNING("a warning %d", 2);
    ZORV_NOTICE("a notice %d", 3);
    ZORV_INFORMATION("some information %d", 4);
    ZORV_TRACE("a trace %d", 5);

    EXPECT_THAT(journal(), ElementsAre("log 3 an error 1", "log 4 a warning 2", "log 5 a notice 3",
                                       "log 6 some information 4", "trace 8 FM a trace 5"));
}

TEST_F(LoggingTest, logAndTraceSaysTheSameInBoth)
{
    ZORV_LOG_AND_TRACE(ZORV_LOG_WARNING, "state %d", 7);

    EXPECT_THAT(journal(), ElementsAre("log 4 state 7", "trace 4 FM state 7"));
}

TEST_F(LoggingTest, argumentsOfLinesThatNobodyWantsAreNotEvaluated)
{
    FakeLog::setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_ERROR);
    FakeTrace::setLevel("FM", YALT_TRACE_DETAILED - 1);

    ZORV_WARNING("%d", evaluated());
    ZORV_TRACE("%d", evaluated());
    ZORV_LOG_AND_TRACE(YALT_TRACE_DETAILED, "%d", evaluated());

    EXPECT_EQ(0, evaluations);
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LoggingTest, argumentsOfAdmittedLinesAreEvaluatedOnce)
{
    ZORV_ERROR("%d", evaluated());
    ZORV_TRACE("%d", evaluated());

    EXPECT_THAT(journal(), ElementsAre("log 3 1", "trace 8 FM 2"));
}

TEST_F(LoggingTest, levelsCountFromTheMomentTheyChange)
{
    FakeLog::setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_ERROR);
    ZORV_INFORMATION("before");
    FakeLog::setLevel(ZORV_LOG_SYSTEM, ZORV_LOG_INFORMATION);
    ZORV_INFORMATION("after");
    FakeTrace::setLevel("FM", 0);
    ZORV_TRACE("before");
    FakeTrace::setLevel("FM", YALT_TRACE_DETAILED);
    ZORV_TRACE("after");

    EXPECT_THAT(journal(), ElementsAre("log 6 after", "trace 8 FM after"));
}

TEST_F(LoggingTest, onlyTheLevelOfTheOwnTraceGroupCounts)
{
    FakeTrace::setLevel("FM", 0);
    FakeTrace::setLevel("OTHER", YALT_TRACE_DETAILED);

    ZORV_TRACE("unwanted");

    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LoggingTest, tracesNameTheirSourceLocation)
{
    const auto line = static_cast<uint32_t>(__LINE__ + 1);
    ZORV_TRACE("here");

    const ZorvFakes::TraceLine trace = middleware.trace.last();
    EXPECT_EQ(__FILE__, trace.file);
    EXPECT_EQ(line, trace.line);
    EXPECT_EQ("TestBody", trace.function);
    EXPECT_EQ("FM", trace.group);
    EXPECT_EQ("here", trace.text);
}

TEST_F(LoggingTest, textsFromOutsideAreNotReadAsFormats)
{
    const std::string hostile = "%s%n%s%999999999d%%";

    ZORV_ERROR("DN: %s", hostile.c_str());
    ZORV_TRACE("DN: %s", hostile.c_str());

    EXPECT_THAT(journal(), ElementsAre("log 3 DN: " + hostile, "trace 8 FM DN: " + hostile));
}

TEST_F(LoggingTest, textsOfAnyLengthAreWrittenWhole)
{
    for (const size_t length : {510U, 511U, 512U, 513U, 1000000U}) {
        const std::string text(length, 'x');

        ZORV_ERROR("%s", text.c_str());

        EXPECT_THAT(journal(), ElementsAre("log 3 " + text)) << length;
    }
}

TEST_F(LoggingTest, aLineThatTheServiceDoesNotTakeIsLostWithoutHarm)
{
    middleware.log.failNext("write", ZORV_RETURN_FAILED);
    middleware.trace.failNext("write", ZORV_RETURN_FAILED);

    ZORV_ERROR("lost");
    ZORV_TRACE("lost");
    ZORV_ERROR("taken");

    EXPECT_THAT(journal(), ElementsAre("log 3 taken"));
}

// --- Without services

TEST_F(LoggingTest, logLinesGoToStandardErrorWhenClosed)
{
    Logging::close();

    testing::internal::CaptureStderr();
    ZORV_ERROR("an error %s", "%s%n");
    ZORV_NOTICE("a notice");
    ZORV_INFORMATION("%d", evaluated());
    ZORV_TRACE("%d", evaluated());

    EXPECT_EQ("zorv: an error %s%n\nzorv: a notice\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(0, evaluations);
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LoggingTest, logLinesGoToStandardErrorWithoutALogService)
{
    middleware.portal.withdraw("ZorvMwSpiLog");
    Logging::open(Portal::instance(), "FM");

    testing::internal::CaptureStderr();
    ZORV_ERROR("an error");
    ZORV_TRACE("a trace");

    EXPECT_EQ("zorv: an error\n", testing::internal::GetCapturedStderr());
    EXPECT_THAT(journal(), ElementsAre("trace 8 FM a trace"));
}

TEST_F(LoggingTest, logLinesGoToStandardErrorWhenTheServiceHasNoSystemLog)
{
    middleware.log.failNext("getLevel SystemLog", ZORV_RETURN_NOT_FOUND);
    Logging::open(Portal::instance(), "FM");

    testing::internal::CaptureStderr();
    ZORV_ERROR("an error");

    EXPECT_EQ("zorv: an error\n", testing::internal::GetCapturedStderr());
    EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LoggingTest, tracesAreDroppedWithoutATraceService)
{
    middleware.portal.withdraw("YaltMwSpiTrace");
    Logging::open(Portal::instance(), "FM");

    ZORV_TRACE("%d", evaluated());
    ZORV_ERROR("an error");

    EXPECT_EQ(0, evaluations);
    EXPECT_THAT(journal(), ElementsAre("log 3 an error"));
}

TEST_F(LoggingTest, tracesAreDroppedWhenTheServiceRefusesTheGroup)
{
    middleware.trace.failNext("getLevel FM", ZORV_RETURN_NO_RESOURCES);
    Logging::open(Portal::instance(), "FM");

    ZORV_TRACE("%d", evaluated());

    EXPECT_EQ(0, evaluations);
    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace Zorv
