#include "Names.hpp"

#include <Poco/String.h>

#include "JsonAccess.hpp"
#include "notification/NotificationReader.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

/// By number, from 1.
const char* const eventTypes[] = {"other",
                                  "communicationsAlarm",
                                  "qualityOfServiceAlarm",
                                  "processingErrorAlarm",
                                  "equipmentAlarm",
                                  "environmentalAlarm",
                                  "integrityViolation",
                                  "operationalViolation",
                                  "physicalViolation",
                                  "securityServiceOrMechanismViolation",
                                  "timeDomainViolation"};

std::string named(const JsonT& value, const char* (*find)(std::uint64_t))
{
    const char* const name = value.IsUint64() ? find(value.GetUint64()) : nullptr;
    return name == nullptr ? cellOf(value) : std::string(name) + " (" + cellOf(value) + ")";
}

}  // namespace

const char* findEventType(std::uint64_t number)
{
    return number >= 1 && number <= std::size(eventTypes) ? eventTypes[number - 1] : nullptr;
}

std::string probableCauseText(const JsonT& value)
{
    return named(value, findProbableCause);
}

std::string eventTypeText(const JsonT& value)
{
    for (std::uint64_t number = 1; value.IsString() && number <= std::size(eventTypes); ++number) {
        if (Poco::icompare(jsonText(value), std::string(findEventType(number))) == 0) {
            return std::string(findEventType(number)) + " (" + std::to_string(number) + ")";
        }
    }
    return named(value, findEventType);
}

std::string severityOf(const JsonT& value)
{
    return value.IsInt() ? severityText(value.GetInt()) : cellOf(value);
}

}  // namespace ZorvCtl
