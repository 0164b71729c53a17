#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <sstream>
#include <thread>

#include "FakeLog.hpp"
#include "TemporaryDirectory.hpp"
#include "ZorvMwSpiLog_1.h"
#include "services/log/LogTable.hpp"

namespace ZorvTest {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// Both logs, empty at first, that take everything up to ZORV_LOG_INFORMATION.
class LogImplementation {
public:
    virtual ~LogImplementation() = default;
    virtual const ZorvMwSpiLog_1T* table() const = 0;

    /// The lines of a log, each ending in the text that was written.
    virtual std::vector<std::string> lines(const std::string& logName) const = 0;
};

class NodeLogs : public LogImplementation {
public:
    const ZorvMwSpiLog_1T* table() const override { return ZorvNode::LogTable::table(); }

    std::vector<std::string> lines(const std::string& logName) const override
    {
        std::istringstream content(directory.read(logName + ".log"));
        std::vector<std::string> found;
        for (std::string line; std::getline(content, line);) {
            found.push_back(line);
        }
        return found;
    }

private:
    const TemporaryDirectory directory;
    ZorvNode::LogService logs{directory.path(), ZORV_LOG_INFORMATION, {}};
    const ZorvNode::LogTable binding{logs};
};

class FakeLogs : public LogImplementation {
public:
    const ZorvMwSpiLog_1T* table() const override { return ZorvFakes::FakeLog::table(); }

    std::vector<std::string> lines(const std::string& logName) const override
    {
        const std::string label = logName == ZORV_LOG_ALARM ? "record" : "log";
        std::vector<std::string> found = journal.entries();
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [&](const std::string& entry) { return entry.rfind(label, 0) != 0; }),
                    found.end());
        return found;
    }

private:
    ZorvFakes::Journal journal;
    ZorvFakes::FakeLog log{journal};
};

struct LogProvider {
    std::string name;
    std::function<std::unique_ptr<LogImplementation>()> make;
};

const LogProvider nodeLogs = {"node", [] { return std::make_unique<NodeLogs>(); }};
const LogProvider fakeLogs = {"fake", [] { return std::make_unique<FakeLogs>(); }};

}  // namespace

class LogContractTest : public testing::TestWithParam<LogProvider> {
protected:
    const std::unique_ptr<LogImplementation> implementation = GetParam().make();
    const ZorvMwSpiLog_1T* const spi = implementation->table();
};

TEST_P(LogContractTest, textsOfEveryLevelAreAppendedInOrder)
{
    EXPECT_EQ(0, spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_ERROR, "first"));
    EXPECT_EQ(0, spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_WARNING, "second"));
    EXPECT_EQ(0, spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE, "third"));
    EXPECT_EQ(0, spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_INFORMATION, "fourth"));

    EXPECT_THAT(implementation->lines(ZORV_LOG_SYSTEM),
                ElementsAre(EndsWith(" first"), EndsWith(" second"), EndsWith(" third"), EndsWith(" fourth")));
}

TEST_P(LogContractTest, theLogsAreKeptApart)
{
    spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE, "told");
    spi->write(ZORV_LOG_ALARM, ZORV_LOG_NOTICE, "<FmLogRecord/>");

    EXPECT_THAT(implementation->lines(ZORV_LOG_SYSTEM), ElementsAre(EndsWith(" told")));
    EXPECT_THAT(implementation->lines(ZORV_LOG_ALARM), ElementsAre(EndsWith("<FmLogRecord/>")));
}

TEST_P(LogContractTest, aTextIsNeverAFormat)
{
    spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE, "100%s %n %");

    EXPECT_THAT(implementation->lines(ZORV_LOG_SYSTEM), ElementsAre(EndsWith(" 100%s %n %")));
}

TEST_P(LogContractTest, aLongTextIsKeptWhole)
{
    const std::string text(5000, 'x');

    EXPECT_EQ(0, spi->write(ZORV_LOG_ALARM, ZORV_LOG_NOTICE, text.c_str()));

    EXPECT_THAT(implementation->lines(ZORV_LOG_ALARM), ElementsAre(HasSubstr(text)));
}

TEST_P(LogContractTest, anUnknownLogIsNotFound)
{
    const std::int32_t* level = nullptr;

    EXPECT_EQ(-2, spi->getLevel("Diary", &level));
    EXPECT_EQ(-2, spi->write("Diary", ZORV_LOG_ERROR, "lost"));
    EXPECT_EQ(-2, spi->getLevel("", &level));

    EXPECT_EQ(nullptr, level);
    EXPECT_THAT(implementation->lines(ZORV_LOG_SYSTEM), IsEmpty());
}

TEST_P(LogContractTest, theLevelHasOnePlaceForEachLog)
{
    const std::int32_t* system = nullptr;
    const std::int32_t* again = nullptr;
    const std::int32_t* alarm = nullptr;

    EXPECT_EQ(0, spi->getLevel(ZORV_LOG_SYSTEM, &system));
    spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE, "text");
    EXPECT_EQ(0, spi->getLevel(ZORV_LOG_ALARM, &alarm));
    EXPECT_EQ(0, spi->getLevel(ZORV_LOG_SYSTEM, &again));

    EXPECT_EQ(system, again);
    EXPECT_NE(system, alarm);
    EXPECT_EQ(ZORV_LOG_INFORMATION, __atomic_load_n(system, __ATOMIC_RELAXED));
    EXPECT_EQ(ZORV_LOG_INFORMATION, __atomic_load_n(alarm, __ATOMIC_RELAXED));
}

TEST_P(LogContractTest, textsOfSeveralThreadsStayWhole)
{
    std::vector<std::thread> threads;
    for (const char letter : {'a', 'b', 'c'}) {
        threads.emplace_back([this, letter] {
            const std::string text = " " + std::string(300, letter);
            for (int count = 0; count < 20; ++count) {
                EXPECT_EQ(0, spi->write(ZORV_LOG_SYSTEM, ZORV_LOG_NOTICE, text.c_str()));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    const auto lines = implementation->lines(ZORV_LOG_SYSTEM);
    EXPECT_EQ(60U, lines.size());
    for (const char letter : {'a', 'b', 'c'}) {
        EXPECT_EQ(20, std::count_if(lines.begin(), lines.end(), [letter](const std::string& line) {
                      const std::string text = " " + std::string(300, letter);
                      return line.size() > text.size() && line.substr(line.size() - text.size()) == text;
                  }));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, LogContractTest, testing::Values(nodeLogs, fakeLogs),
                         [](const auto& provider) { return provider.param.name; });

}  // namespace ZorvTest
