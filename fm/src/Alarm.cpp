#include "Alarm.hpp"

namespace ZorvFm {

Alarm::Alarm(const FmConfig& componentConfig) : state(componentConfig)
{
}

Alarm::Alarm(const Alarm& other) : AlarmData(other), itemName(other.itemName), state(other.state)
{
    additionalText = other.getAdditionalTextBasic();
}

void Alarm::init(const AlarmData& data)
{
    assign(data);
    originalAdditionalText = data.getAdditionalText();
    originalSeverity = data.severity;
    originalEventTime = data.eventTime;
    originalSeqNo = 0;
    alarmId = 0;
    additionalInfo = data.getAdditionalInfo();
}

std::string Alarm::toString() const
{
    return AlarmData::toString() + "; state=" + state.toString();
}

std::string Alarm::getAdditionalText() const
{
    return isToggling() ? additionalText + " The alarm is currently toggling." : additionalText;
}

}  // namespace ZorvFm
