/// The alarm of the reference model, and every text that it appears in: plain code, straight from the description.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ZorvFm {
namespace Reference {

using InfoT = std::vector<std::pair<std::string, std::string>>;

/// One alarm or alert with everything that is known of it, filter included.
struct ReferenceAlarm {
    std::string dn;
    std::uint32_t majorType = 0;
    std::uint32_t minorType = 0;
    std::string text;
    std::string textForClear;
    std::string originalText;
    std::int32_t severity = 0;
    std::int32_t originalSeverity = 0;
    std::uint64_t eventTime = 0;
    std::uint64_t originalEventTime = 0;
    std::uint64_t clearEventTime = 0;
    std::uint64_t seqNo = 0;
    std::uint64_t originalSeqNo = 0;
    std::uint64_t alarmId = 0;
    bool stateful = false;
    std::int32_t eventType = 1;
    std::uint32_t probableCause = 418;
    std::string specificProblem = "Unknown alarm";
    InfoT info;

    int state = 0;
    std::uint64_t timerStart = 0;
    std::uint64_t timerLength = 0;
    std::vector<std::uint64_t> activations;  // oldest first

    std::uint64_t item = 0;  // number of its stored item; 0: not stored

    bool isToggling() const { return state == 3 || state == 4; }
    bool isVisible() const { return state == 2 || state == 3 || state == 4 || state == 5; }
};

/// The additional text as it is shown: with a remark while the alarm is toggling.
std::string shownText(const ReferenceAlarm& alarm);

/// All fields in one line.
std::string debugLine(const ReferenceAlarm& alarm);

/// The same for an alarm of the list: with its filter state.
std::string debugLineWithState(const ReferenceAlarm& alarm);

/// Local time of a node in UTC.
std::string timeText(std::uint64_t nanoseconds);

/// The alarm log record.
std::string logRecord(const ReferenceAlarm& alarm, std::uint64_t timeOfDay);

/// The stored form.
std::string storedText(const ReferenceAlarm& alarm);

/// The northbound notification as the event router's fake shows it to a consumer.
std::string notification3(const ReferenceAlarm& alarm, unsigned long consumer);
std::string notification2(const ReferenceAlarm& alarm, unsigned long consumer);

}  // namespace Reference
}  // namespace ZorvFm
