/// The configuration file as the FM component reads it: any file is taken or refused with one error line; what was taken
/// reads the same again, also when its values are written down anew.
#include "FmConfig.hpp"

#include "FmWorld.hpp"
#include "FuzzTarget.hpp"
#include "InputFile.hpp"

using namespace ZorvFuzz;
using ZorvFm::FmConfig;

namespace {

constexpr std::uint64_t nanosPerSecond = 1000000000;

std::string valuesOf(const FmConfig& config)
{
    return std::to_string(config.heartbeatInterval) + " " + std::to_string(config.alarmToggleSilentTimeout) + " " +
           std::to_string(config.transientRaiseAlarmFilterTime) + " " +
           std::to_string(config.transientCeaseAlarmFilterTime) + " " +
           std::to_string(config.reuseAdditionalTextFromAalAtClear) + " " +
           std::to_string(config.alarmToggleTriggerCount) + " " + std::to_string(config.alarmToggleWindowSize);
}

std::string element(const char* name, std::uint64_t value)
{
    return "<" + std::string(name) + ">" + std::to_string(value) + "</" + name + ">";
}

std::string fileOf(const FmConfig& config)
{
    return "<ZorvFmComponent>" + element("alarmToggleSilentTimeout", config.alarmToggleSilentTimeout / nanosPerSecond) +
           element("transientRaiseAlarmFilterTime", config.transientRaiseAlarmFilterTime / nanosPerSecond) +
           element("transientCeaseAlarmFilterTime", config.transientCeaseAlarmFilterTime / nanosPerSecond) +
           element("alarmToggleTriggerCount", config.alarmToggleTriggerCount) +
           element("alarmToggleWindowSize", config.alarmToggleWindowSize / nanosPerSecond) +
           "<reuseAdditionalTextFromAalAtClear>" + (config.reuseAdditionalTextFromAalAtClear ? "True" : "no") +
           "</reuseAdditionalTextFromAalAtClear></ZorvFmComponent>";
}

/// Of seconds that were too many for 64 bits of nanoseconds, a remainder is left that no file can say.
bool hasWholeSeconds(const FmConfig& config)
{
    return config.alarmToggleSilentTimeout % nanosPerSecond == 0 &&
           config.alarmToggleWindowSize % nanosPerSecond == 0 &&
           config.transientRaiseAlarmFilterTime % nanosPerSecond == 0 &&
           config.transientCeaseAlarmFilterTime % nanosPerSecond == 0;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    FmWorld& world = FmWorld::instance();
    const std::string text = textOf(data, size);
    FmConfig config;
    const int result = config.load(file.write(text));
    const auto logs = world.takeLogs();
    require(result == 0 ? logs.empty() : result == -1 && logs.size() == 1, "taken, or refused with one error line");
    const std::string values = valuesOf(config);
    require(config.load(file.write(text)) == result && values == valuesOf(config), "a file reads the same again");
    world.takeLogs();
    if (result != 0) {
        return 0;
    }
    require(config.alarmToggleTriggerCount > 0, "a trigger count is above 0");
    if (hasWholeSeconds(config)) {
        require(config.load(file.write(fileOf(config))) == 0, "values written down are taken");
        requireEqual(values, valuesOf(config), "values written down read the same");
    }
    return 0;
}
