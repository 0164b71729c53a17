#include "services/log/LogService.hpp"

#include <Poco/File.h>
#include <Poco/Glob.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "TemporaryDirectory.hpp"
#include "files/LineText.hpp"

namespace ZorvNode {

using namespace ZorvInput;

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

class LogServiceTest : public ::testing::Test {
protected:
    LogServiceTest() : oldMask(umask(027)) {}
    ~LogServiceTest() override { umask(oldMask); }

    static std::string tailOf(const LogService& log, const std::string& name)
    {
        std::string lines;
        std::string line;
        for (std::uint64_t position = 0; log.findTail(name)->next(position, std::chrono::milliseconds(0), line);) {
            lines += line + "\n";
        }
        return lines;
    }

    const mode_t oldMask;
    ZorvTest::TemporaryDirectory directory;
};

TEST_F(LogServiceTest, aSystemLogLineHasTimeLevelAndText)
{
    LogService log(directory.path(), 6, {});

    EXPECT_EQ(0, log.write("SystemLog", 4, "low voltage"));

    EXPECT_THAT(directory.read("SystemLog.log"),
                MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}[+-][0-9]{2}:[0-9]{2} WARNING low "
                             "voltage\n"));
}

TEST_F(LogServiceTest, aTextCannotForgeALine)
{
    LogService log(directory.path(), 6, {});

    log.write("SystemLog", 6, "a\n2024-01-01T00:00:00.000+00:00 ERROR forged\x1b[2K");

    EXPECT_THAT(directory.read("SystemLog.log"),
                ::testing::EndsWith("INFORMATION a\\n2024-01-01T00:00:00.000+00:00 ERROR forged\\x1B[2K\n"));
}

TEST_F(LogServiceTest, textsAboveTheLevelAreNotWritten)
{
    LogService log(directory.path(), 4, {});
    const std::int32_t* level = nullptr;

    EXPECT_EQ(0, log.write("SystemLog", 5, "not wanted"));

    EXPECT_EQ(0, log.getLevel("SystemLog", &level));
    EXPECT_EQ(4, *level);
    EXPECT_EQ("", directory.read("SystemLog.log"));
}

TEST_F(LogServiceTest, alarmRecordsAreWrittenAsTheyAreWhateverTheSystemLogsLevel)
{
    LogService log(directory.path(), 3, {});

    log.write("FmAlarmLog", 6, "<FmLogRecord>\n</FmLogRecord>");

    EXPECT_EQ("<FmLogRecord>\n</FmLogRecord>\n", directory.read("FmAlarmLog.log"));
}

TEST_F(LogServiceTest, anUnknownLogIsNotFound)
{
    LogService log(directory.path(), 6, {});
    const std::int32_t* level = nullptr;

    EXPECT_EQ(-2, log.write("Diary", 6, "text"));
    EXPECT_EQ(-2, log.getLevel("Diary", &level));
}

TEST_F(LogServiceTest, logFilesAreNotForEverybody)
{
    LogService log(directory.path(), 6, {});
    log.write("SystemLog", 6, "text");
    struct stat status {};

    stat(directory.path("SystemLog.log").c_str(), &status);

    EXPECT_EQ(0640U, status.st_mode & 0777U);
}

TEST_F(LogServiceTest, aFullFileIsPutAsideAndOldOnesGo)
{
    LogService log(directory.path(), 6, {1000, 2});

    for (int count = 0; count < 60; ++count) {
        log.write("FmAlarmLog", 6, std::string(99, 'x'));
    }

    std::set<std::string> files;
    Poco::Glob::glob(directory.path("FmAlarmLog.log*"), files);
    EXPECT_EQ(3U, files.size());
    EXPECT_EQ(1000U, directory.read("FmAlarmLog.log.0").size());
}

/// However quickly they follow each other.
TEST_F(LogServiceTest, theLatestFilesAreKeptInTheirOrder)
{
    {
        LogService log(directory.path(), 6, {1000, 3});
        for (int count = 0; count < 1000; ++count) {
            log.write("FmAlarmLog", 6, std::to_string(100000 + count) + std::string(93, 'x'));
        }
    }
    LogService log(directory.path(), 6, {1000, 3});
    log.write("FmAlarmLog", 6, "next");

    EXPECT_EQ("next\n", directory.read("FmAlarmLog.log"));
    EXPECT_THAT(directory.read("FmAlarmLog.log.0"), StartsWith("100990xxx"));
    EXPECT_THAT(directory.read("FmAlarmLog.log.1"), StartsWith("100980xxx"));
    EXPECT_THAT(directory.read("FmAlarmLog.log.2"), StartsWith("100970xxx"));
    std::set<std::string> files;
    Poco::Glob::glob(directory.path("FmAlarmLog.log*"), files);
    EXPECT_EQ(4U, files.size());
}

TEST_F(LogServiceTest, whenFewerAreKeptThanBeforeTheOthersGo)
{
    for (const std::uint32_t kept : {4U, 2U}) {
        LogService log(directory.path(), 6, {1000, kept});
        for (int count = 0; count < 100; ++count) {
            log.write("FmAlarmLog", 6, std::string(99, 'x'));
        }
    }

    std::set<std::string> files;
    Poco::Glob::glob(directory.path("FmAlarmLog.log*"), files);
    EXPECT_EQ(3U, files.size());
}

TEST_F(LogServiceTest, nothingOfALostTextStandsInTheFile)
{
    LogService log(directory.path(), 6, {});
    log.write("FmAlarmLog", 6, "before");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    ::testing::internal::CaptureStderr();

    EXPECT_EQ(-1, log.write("FmAlarmLog", 6, "a text that is too long"));

    setrlimit(RLIMIT_FSIZE, &before);
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ("before\n", directory.read("FmAlarmLog.log"));
    EXPECT_EQ(0, log.write("FmAlarmLog", 6, "after"));
    EXPECT_EQ("before\nafter\n", directory.read("FmAlarmLog.log"));
}

TEST_F(LogServiceTest, aFileThatCannotBePutAsideGrowsOn)
{
    LogService log(directory.path(), 6, {1000, 1});
    ASSERT_EQ(0, mkdir(directory.path("FmAlarmLog.log.0").c_str(), 0700));
    directory.write("FmAlarmLog.log.0/something", "");

    for (int count = 0; count < 30; ++count) {
        EXPECT_EQ(0, log.write("FmAlarmLog", 6, std::string(99, 'x')));
    }

    EXPECT_EQ(3000U, directory.read("FmAlarmLog.log").size());
}

TEST_F(LogServiceTest, aLogThatCannotBeWrittenIsToldOnceAndCounted)
{
    LogService log(directory.path("missing"), 6, {});
    ::testing::internal::CaptureStderr();

    EXPECT_EQ(-1, log.write("SystemLog", 6, "lost"));
    EXPECT_EQ(-1, log.write("SystemLog", 6, "lost too"));

    const std::string told = ::testing::internal::GetCapturedStderr();
    EXPECT_THAT(told, StartsWith("zorvd: cannot write " + directory.path("missing/SystemLog.log") + ": "));
    EXPECT_EQ(1, std::count(told.begin(), told.end(), '\n'));
    EXPECT_EQ(2U, log.getNumberLost());
}

TEST_F(LogServiceTest, aLogIsWrittenAgainWhenItCanBe)
{
    LogService log(directory.path("later"), 6, {});
    ::testing::internal::CaptureStderr();
    log.write("FmAlarmLog", 6, "lost");
    ::testing::internal::GetCapturedStderr();
    Poco::File(directory.path("later")).createDirectories();

    EXPECT_EQ(0, log.write("FmAlarmLog", 6, "kept"));

    EXPECT_EQ("kept\n", directory.read("later/FmAlarmLog.log"));
}

TEST_F(LogServiceTest, aLogIsWrittenAgainWhenADiskThatWasFullHasRoom)
{
    LogService log(directory.path(), 6, {});
    ASSERT_EQ(0, symlink("/dev/full", directory.path("FmAlarmLog.log").c_str()));
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(-1, log.write("FmAlarmLog", 6, "lost"));
    ::testing::internal::GetCapturedStderr();
    unlink(directory.path("FmAlarmLog.log").c_str());
    directory.write("FmAlarmLog.log", "before\n");

    EXPECT_EQ(0, log.write("FmAlarmLog", 6, "kept"));

    EXPECT_EQ("before\nkept\n", directory.read("FmAlarmLog.log"));
}

TEST_F(LogServiceTest, whileALogCannotBeWrittenTryingAgainTellsNothing)
{
    for (const char* const name : {"FmAlarmLog", "SystemLog"}) {
        const ZorvTest::TemporaryDirectory folder;
        const std::string file = folder.path(std::string(name) + ".log");
        LogService log(folder.path(), 6, {});
        int losses = 0;
        log.whenLosing([&] { ++losses; });
        ASSERT_EQ(0, symlink("/dev/full", file.c_str()));
        ::testing::internal::CaptureStderr();
        log.write(name, 5, "early");
        log.write(name, 5, "late");
        EXPECT_FALSE(log.tryAgain());
        EXPECT_FALSE(log.tryAgain());
        ::testing::internal::GetCapturedStderr();

        EXPECT_EQ(2, losses);
        EXPECT_EQ(2U, log.getNumberLost());
        EXPECT_THAT(tailOf(log, "system"), Not(HasSubstr("works again")));
        unlink(file.c_str());

        EXPECT_TRUE(log.tryAgain());
        EXPECT_TRUE(log.tryAgain());

        EXPECT_EQ(1U, log.getNumberLost());
        EXPECT_THAT(folder.read(std::string(name) + ".log"), AllOf(HasSubstr("late\n"), Not(HasSubstr("early"))));
        EXPECT_THAT(tailOf(log, "system"), EndsWith(" NOTICE writing the logs works again, lost: 1\n"));
    }
}

TEST(LineTextTest, lineEndsOfUnicodeAreEscapedToo)
{
    EXPECT_EQ("a\\xC2\\x85b\\xE2\\x80\\xA8c\\x7F\\td", toLineText("a\xC2\x85"
                                                                  "b\xE2\x80\xA8"
                                                                  "c\x7F\td"));
}

TEST(LineTextTest, oneOfThemIsEnough)
{
    EXPECT_EQ("\\x00", toLineText(std::string(1, '\0')));
    EXPECT_EQ("a\\x1F", toLineText("a\x1F"));
    EXPECT_EQ("a\\x7F", toLineText("a\x7F"));
    EXPECT_EQ("a\\xC2\\x80", toLineText("a\xC2\x80"));
    EXPECT_EQ("a\\xE2\\x80\\xA9", toLineText("a\xE2\x80\xA9"));
}

TEST(LineTextTest, theirNeighboursStayAsTheyAre)
{
    EXPECT_EQ("a ~", toLineText("a ~"));
    EXPECT_EQ("a\xC2\xA0", toLineText("a\xC2\xA0"));
    EXPECT_EQ("a\xE2\x80\xAA", toLineText("a\xE2\x80\xAA"));
}

TEST(LineTextTest, otherTextStaysAsItIs)
{
    EXPECT_EQ("L\xC3\xBC"
              "fter \\ \xE2\x82\xAC",
              toLineText("L\xC3\xBC"
                         "fter \\ \xE2\x82\xAC"));
}

}  // namespace ZorvNode
