#include "KillWitness.hpp"

#include <Poco/StringTokenizer.h>
#include <gtest/gtest.h>

#include <fstream>

namespace ZorvTest {

namespace {

constexpr std::size_t dnField = 2;
constexpr std::size_t severityField = 7;
constexpr std::size_t numberField = 9;

}  // namespace

void KillWitness::note(StreamReader& consumer)
{
    const StreamFigures& figures = consumer.finish();
    EXPECT_EQ(0, figures.unexplained) << "behind " << place->toText();
    place = figures.place;
}

void KillWitness::note(const std::vector<SeenAlarm>& alarms)
{
    bool isFirst = true;
    for (const SeenAlarm& alarm : alarms) {
        ASSERT_TRUE(isFirst ? alarm.seqNo > last : alarm.seqNo == last + 1) << alarm.seqNo << " after " << last;
        isFirst = false;
        last = alarm.seqNo;
        seen[alarm.seqNo] = alarm.dn + " " + alarm.severity;
    }
}

void KillWitness::expectLog(const std::string& file) const
{
    std::map<std::uint64_t, std::string> logged;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find("<Alarm>");
        if (begin == std::string::npos) {
            continue;
        }
        const Poco::StringTokenizer fields(line.substr(begin), ";");
        const std::uint64_t number = std::stoull(fields[numberField]);
        ASSERT_TRUE(logged.empty() || number > logged.rbegin()->first) << number;
        logged[number] = fields[dnField] + " " + fields[severityField];
    }
    for (const auto& [number, alarm] : seen) {
        ASSERT_EQ(alarm, logged.count(number) > 0 ? logged.at(number) : "not logged") << number;
    }
}

}  // namespace ZorvTest
