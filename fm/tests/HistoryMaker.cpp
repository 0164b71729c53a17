/// Histories at random. Identities, texts and times come from few values, so that they meet often.
#include "Dice.hpp"
#include "History.hpp"

namespace ZorvFm {
namespace Reference {
namespace {

constexpr std::uint64_t second = 1000000000;
constexpr std::uint64_t longestHistory = 60;  // steps

const std::vector<std::string> names = {"ManagedElement=1,Port=1",
                                        "ManagedElement=1,Port=12",
                                        "ManagedElement=1,Port=1,Link=2",
                                        "ManagedElement=1",
                                        "ManagedElement=12,Port=1",
                                        "Board=1",
                                        ""};

/// Some of them are names of alarms too.
const std::vector<std::string> patterns = {
    "Port=1",    "^ManagedElement=1,",      "Port=[0-9]+$", "(Board|Link)=.", ".*", "Port=(1|2)$",
    "Port=1{2}", "ManagedElement=1,Port=1", "Board=(",      "Port=1[",        "^$", "",
    "no such DN"};

const std::vector<std::string> texts = {
    "",
    "down",
    "up",
    "<a & 'b'> \"c\"; %s%n",
    " The alarm is currently toggling.",
    "a text of more than fifty-four bytes, which takes more than one line in Base64"};

const std::vector<InfoT> infos = {
    {}, {{"a", "1"}}, {{"a", "1"}, {"b", "2"}}, {{"b", "2"}, {"a", "1"}}, {{"a", "1"}, {"a", "1"}}, {{"", ""}}};

const std::vector<std::uint64_t> lengths = {0, second, 2 * second, 5 * second, 60 * second};

class Maker {
public:
    explicit Maker(std::uint64_t seed) : dice(seed) {}

    History make()
    {
        History history;
        history.configuration = configuration();
        history.types = types();
        for (std::uint64_t count = dice.roll(4) == 0 ? dice.roll(4) : 0; count > 0; --count) {
            history.survivors.push_back(survivor());
        }
        for (std::uint64_t count = 1 + dice.roll(longestHistory); count > 0; --count) {
            history.steps.push_back(step());
        }
        return history;
    }

private:
    template <class ValueT>
    const ValueT& oneOf(const std::vector<ValueT>& values)
    {
        return values[dice.roll(values.size())];
    }

    /// True once in so many times.
    bool once(std::uint64_t in) { return dice.roll(in) == 0; }

    std::uint64_t oftenZero() { return once(2) ? 0 : oneOf(lengths); }

    Configuration configuration()
    {
        Configuration made;
        made.raiseFilterTime = oftenZero();
        made.ceaseFilterTime = oftenZero();
        if (!once(3)) {
            made.silentTimeout = oneOf(lengths);
            made.toggleWindow = oneOf(lengths);
            made.toggleCount = static_cast<std::uint32_t>(1 + dice.roll(3));
        }
        made.reuseTextAtClear = once(2);
        made.elementName = once(2) ? "" : "node <7>";
        return made;
    }

    std::uint32_t majorType() { return static_cast<std::uint32_t>(1 + dice.roll(2)); }
    std::uint32_t minorType() { return static_cast<std::uint32_t>(dice.roll(2)); }

    /// Some types are in the model twice, some not at all.
    std::vector<AlarmType> types()
    {
        std::vector<AlarmType> made;
        for (std::uint64_t count = dice.roll(7); count > 0; --count) {
            made.push_back({majorType(), minorType(), !once(4), static_cast<std::int32_t>(dice.roll(13)),
                            once(3) ? "" : "Problem " + std::to_string(count),
                            static_cast<std::uint32_t>(dice.roll(1000)), std::nullopt});
            if (once(2)) {
                made.back().configuredSeverity = static_cast<std::int32_t>(3 + dice.roll(4));
            } else if (once(4)) {
                made.back().configuredSeverity = static_cast<std::int32_t>(dice.roll(10)) - 1;
            }
        }
        return made;
    }

    Survivor survivor()
    {
        return {oneOf(names), majorType(), minorType(), severity(), oneOf(texts), static_cast<int>(dice.roll(9)) - 1,
                dice.roll(6)};
    }

    std::int32_t severity()
    {
        if (once(20)) {
            return oneOf(std::vector<std::int32_t>{-1, 6, 100, INT32_MIN, INT32_MAX});
        }
        return static_cast<std::int32_t>(dice.roll(6));
    }

    Notification notification()
    {
        Notification made{oneOf(std::vector<int>{1, 2, 4, 4, 4}),
                          oneOf(names),
                          majorType(),
                          minorType(),
                          severity(),
                          once(10) ? 0 : 1700000000 * second + dice.roll(4) * second / 2,
                          oneOf(texts),
                          oneOf(infos)};
        if (once(3)) {
            made.severity = 0;
            if (once(2)) {
                made.dn = oneOf(patterns);
            }
        }
        return made;
    }

    /// Mostly what makes filters meet their limits, to the nanosecond.
    std::uint64_t passingTime()
    {
        const std::uint64_t time = oneOf(lengths) + dice.roll(2) * second / 2;
        return time == 0 || once(2) ? time : time - 1;
    }

    Step step()
    {
        const std::uint64_t kind = dice.roll(100);
        if (kind < 56) {
            return Send{notification()};
        }
        if (kind < 68) {
            return PassTime{passingTime()};
        }
        if (kind < 82) {
            return Tick{};
        }
        if (kind < 86) {
            return Suppress{static_cast<int>(dice.roll(4)) - 1};
        }
        if (kind < 92) {
            return SaveSummary{};
        }
        if (kind < 95) {
            return Restart{once(2)};
        }
        if (kind < 97) {
            return ChangeModel{types()};
        }
        return Fail{static_cast<Operation>(dice.roll(4)), once(2) ? -1 : -10};
    }

    Dice dice;
};

}  // namespace

History makeHistory(std::uint64_t seed)
{
    return Maker(seed).make();
}

ReferenceAlarm Survivor::asStored() const
{
    ReferenceAlarm alarm;
    alarm.dn = dn;
    alarm.majorType = majorType;
    alarm.minorType = minorType;
    alarm.text = text;
    alarm.textForClear = text;
    alarm.severity = severity;
    alarm.originalSeverity = severity;
    alarm.alarmId = alarmId;
    alarm.seqNo = alarmId;
    alarm.originalSeqNo = alarmId;
    alarm.stateful = true;
    alarm.state = state;
    return alarm;
}

}  // namespace Reference
}  // namespace ZorvFm
