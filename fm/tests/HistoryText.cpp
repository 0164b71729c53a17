/// Histories as C++ text: to be pasted into a test that plays them again.
#include <sstream>

#include "History.hpp"

namespace ZorvFm {
namespace Reference {
namespace {

std::string literal(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + "\"";
}

std::string literal(bool value)
{
    return value ? "true" : "false";
}

std::string literal(const InfoT& info)
{
    std::string text;
    for (const auto& [name, value] : info) {
        text += (text.empty() ? "{" : ", {") + literal(name) + ", " + literal(value) + "}";
    }
    return "{" + text + "}";
}

std::string literal(const std::vector<AlarmType>& types)
{
    std::ostringstream text;
    text << "{";
    for (const AlarmType& type : types) {
        text << "{" << type.majorType << ", " << type.minorType << ", " << literal(type.stateful) << ", "
             << type.eventType << ", " << literal(type.specificProblem) << ", " << type.probableCause << ", "
             << (type.configuredSeverity ? std::to_string(*type.configuredSeverity) : "std::nullopt") << "}, ";
    }
    text << "}";
    return text.str();
}

/// One overload for each step.
class Writer {
public:
    std::string operator()(const Send& send) const
    {
        const Notification& sent = send.notification;
        std::ostringstream text;
        text << "Send{{" << sent.version << ", " << literal(sent.dn) << ", " << sent.majorType << ", " << sent.minorType
             << ", " << sent.severity << ", " << sent.eventTime << ", " << literal(sent.text) << ", "
             << literal(sent.info) << "}}";
        return text.str();
    }

    std::string operator()(const PassTime& time) const { return "PassTime{" + std::to_string(time.nanoseconds) + "}"; }
    std::string operator()(const Tick& /*tick*/) const { return "Tick{}"; }
    std::string operator()(const Suppress& suppress) const
    {
        return "Suppress{" + std::to_string(suppress.value) + "}";
    }
    std::string operator()(const SaveSummary& /*save*/) const { return "SaveSummary{}"; }
    std::string operator()(const Restart& restart) const { return "Restart{" + literal(restart.keepsMemory) + "}"; }
    std::string operator()(const ChangeModel& change) const { return "ChangeModel{" + literal(change.types) + "}"; }

    std::string operator()(const Fail& fail) const
    {
        const std::vector<std::string> operations = {"PUSH", "REPLACE", "ERASE", "COMMIT"};
        return "Fail{Operation::" + operations[static_cast<std::size_t>(fail.operation)] + ", " +
               std::to_string(fail.code) + "}";
    }
};

}  // namespace

std::string toText(const Step& step)
{
    return std::visit(Writer(), step);
}

std::string toText(const History& history)
{
    const Configuration& configuration = history.configuration;
    std::ostringstream text;
    text << "History{\n    {" << configuration.silentTimeout << ", " << configuration.raiseFilterTime << ", "
         << configuration.ceaseFilterTime << ", " << configuration.toggleWindow << ", " << configuration.toggleCount
         << ", " << literal(configuration.reuseTextAtClear) << ", " << literal(configuration.elementName) << "},\n    "
         << literal(history.types) << ",\n    {";
    for (const Survivor& survivor : history.survivors) {
        text << "{" << literal(survivor.dn) << ", " << survivor.majorType << ", " << survivor.minorType << ", "
             << survivor.severity << ", " << literal(survivor.text) << ", " << survivor.state << ", "
             << survivor.alarmId << "}, ";
    }
    text << "},\n    {\n";
    for (const Step& step : history.steps) {
        text << "        " << toText(step) << ",\n";
    }
    text << "    }}\n";
    return text.str();
}

}  // namespace Reference
}  // namespace ZorvFm
