#include "FmConfig.hpp"

#include <Poco/String.h>

#include "Logging.hpp"
#include "ToInt.hpp"
#include "ZorvConfiguration.hpp"
#include "ZorvException.hpp"

namespace ZorvFm {
namespace {

constexpr std::uint64_t nanosPerSecond = 1000000000;

template <class NumberT>
void readNumber(const Poco::XML::Element& component, const char* parameter, NumberT& value)
{
    const std::string text = Zorv::ZorvConfiguration::getElementValue(component, parameter);
    if (text.empty()) {
        ZORV_TRACE("Using default value for parameter %s", parameter);
        return;
    }
    Zorv::toInt(text, value);
    ZORV_TRACE("Using value %s for parameter %s", std::to_string(value).c_str(), parameter);
}

/// Anything but "true", in whatever case, is false.
void readBoolean(const Poco::XML::Element& component, const char* parameter, bool& value)
{
    const std::string text = Zorv::ZorvConfiguration::getElementValue(component, parameter);
    if (text.empty()) {
        ZORV_TRACE("Using default value for parameter %s", parameter);
        return;
    }
    value = Poco::toLower(text) == "true";
    ZORV_TRACE("Using value %s for parameter %s", value ? "true" : "false", parameter);
}

}  // namespace

int FmConfig::load(const std::string& fileName)
{
    ZORV_TRACE(" >> \n%s", fileName.c_str());
    *this = FmConfig();
    try {
        read(fileName);
        convertToNanoseconds();
    } catch (const std::exception& e) {
        ZORV_ERROR("Could not load configuration, caught exception: %s", e.what());
        return -1;
    }
    ZORV_TRACE(" << ");
    return 0;
}

void FmConfig::read(const std::string& fileName)
{
    Zorv::ZorvConfiguration reader;
    reader.load(fileName);
    auto components = reader.getElementsByTagName("ZorvFmComponent");
    if (components->length() == 0) {
        throw Zorv::ZorvException("No ZorvFmComponent configuration found");
    }
    if (components->length() > 1) {
        throw Zorv::ZorvException("Multiple ZorvFmComponent configurations found");
    }
    ZORV_TRACE("ZorvFmComponent tag found");
    const auto& component = static_cast<const Poco::XML::Element&>(*components->item(0));
    readNumber(component, "alarmToggleSilentTimeout", alarmToggleSilentTimeout);
    readNumber(component, "transientRaiseAlarmFilterTime", transientRaiseAlarmFilterTime);
    readNumber(component, "transientCeaseAlarmFilterTime", transientCeaseAlarmFilterTime);
    readNumber(component, "alarmToggleTriggerCount", alarmToggleTriggerCount);
    readNumber(component, "alarmToggleWindowSize", alarmToggleWindowSize);
    readBoolean(component, "reuseAdditionalTextFromAalAtClear", reuseAdditionalTextFromAalAtClear);
    ZORV_TRACE("releasing component list");
    components = nullptr;
}

/// The file speaks of seconds, everything else of nanoseconds. A trigger count of 0 switches toggling detection off.
void FmConfig::convertToNanoseconds()
{
    if (alarmToggleTriggerCount == 0) {
        alarmToggleSilentTimeout = 0;
        alarmToggleWindowSize = 0;
        alarmToggleTriggerCount = 1;
    } else {
        alarmToggleSilentTimeout *= nanosPerSecond;
        alarmToggleWindowSize *= nanosPerSecond;
    }
    transientRaiseAlarmFilterTime *= nanosPerSecond;
    transientCeaseAlarmFilterTime *= nanosPerSecond;
}

}  // namespace ZorvFm
