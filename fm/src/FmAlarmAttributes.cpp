#include "FmAlarmAttributes.hpp"

#include <cstring>
#include <iterator>

#include "Logging.hpp"

namespace ZorvFm {
namespace FmAlarmAttributes {
namespace {

using AttributeT = YaltOamSpiMoAttribute_3T;
using ValueT = YaltOamSpiMoAttributeValue_3T;
using MemoryT = Zorv::AutoMemory;
using ReaderT = AttributeT (*)(const AlarmData& alarm, MemoryT& memory);

AttributeT single(std::int32_t type, ValueT value, MemoryT& memory)
{
    ValueT* values = memory.allocateArray<ValueT>(1);
    values[0] = value;
    return {type, 1, values};
}

/// The text stays where it is: in the snapshot, which lives as long as the transaction.
AttributeT text(const std::string& kept, MemoryT& memory)
{
    ValueT value{};
    value.stringValue = kept.c_str();
    return single(YALT_MO_ATTRIBUTE_STRING, value, memory);
}

AttributeT madeText(const std::string& made, MemoryT& memory)
{
    ValueT value{};
    value.stringValue = memory.strdup(made);
    return single(YALT_MO_ATTRIBUTE_STRING, value, memory);
}

AttributeT number(std::int32_t type, std::uint64_t number, MemoryT& memory)
{
    ValueT value{};
    value.uintValue = number;
    return single(type, value, memory);
}

AttributeT enumeration(std::int32_t member, MemoryT& memory)
{
    ValueT value{};
    value.enumValue = member;
    return single(YALT_MO_ATTRIBUTE_ENUM, value, memory);
}

/// An alarm that was not sent has no number.
AttributeT sequenceNumber(const AlarmData& alarm, MemoryT& memory)
{
    return alarm.seqNo == 0 ? AttributeT{YALT_MO_ATTRIBUTE_UINT64, 0, nullptr}
                            : number(YALT_MO_ATTRIBUTE_UINT64, alarm.seqNo, memory);
}

const YaltOamSpiMoStruct_3T* toStruct(const std::string& name, const std::string& value, MemoryT& memory)
{
    auto* members = memory.allocateArray<YaltOamSpiMoNamedAttribute_3T>(2);
    members[0] = {"name", text(name, memory)};
    members[1] = {"value", text(value, memory)};
    auto* pair = memory.allocateArray<YaltOamSpiMoStruct_3T>(1);
    *pair = {2, members};
    return pair;
}

AttributeT convertAdditionalInfo(const AlarmData& alarm, MemoryT& memory)
{
    if (alarm.additionalInfo.empty()) {
        return {YALT_MO_ATTRIBUTE_STRUCT, 0, nullptr};
    }
    ValueT* values = memory.allocateArray<ValueT>(alarm.additionalInfo.size());
    std::uint32_t count = 0;
    for (const auto& [name, value] : alarm.additionalInfo) {
        values[count++].structValue = toStruct(name, value, memory);
    }
    return {YALT_MO_ATTRIBUTE_STRUCT, count, values};
}

struct Attribute {
    const char* name;
    ReaderT read;
};

const Attribute attributes[] = {
    {"fmAlarmId", [](const AlarmData& a, MemoryT& m) { return madeText(std::to_string(a.alarmId), m); }},
    {"source", [](const AlarmData& a, MemoryT& m) { return text(a.dn, m); }},
    {"lastEventTime", [](const AlarmData& a, MemoryT& m) { return madeText(a.getEventTimeStr(), m); }},
    {"sequenceNumber", &sequenceNumber},
    {"activeSeverity", [](const AlarmData& a, MemoryT& m) { return enumeration(convertSeverity(a.severity), m); }},
    {"additionalText", [](const AlarmData& a, MemoryT& m) { return text(a.additionalText, m); }},
    {"majorType", [](const AlarmData& a, MemoryT& m) { return number(YALT_MO_ATTRIBUTE_UINT32, a.majorType, m); }},
    {"minorType", [](const AlarmData& a, MemoryT& m) { return number(YALT_MO_ATTRIBUTE_UINT32, a.minorType, m); }},
    {"specificProblem", [](const AlarmData& a, MemoryT& m) { return text(a.specificProblem, m); }},
    {"probableCause",
     [](const AlarmData& a, MemoryT& m) { return number(YALT_MO_ATTRIBUTE_UINT32, a.probableCause, m); }},
    {"additionalInfo", &convertAdditionalInfo},
    {"originalSeverity",
     [](const AlarmData& a, MemoryT& m) { return enumeration(convertSeverity(a.originalSeverity), m); }},
    {"originalAdditionalText", [](const AlarmData& a, MemoryT& m) { return text(a.originalAdditionalText, m); }},
    {"originalEventTime", [](const AlarmData& a, MemoryT& m) { return madeText(a.getOriginalEventTimeStr(), m); }},
    {"eventType", [](const AlarmData& a, MemoryT& m) { return enumeration(a.eventType, m); }}};

/// Whoever reads several attributes mostly asks for them in the order of the class.
const Attribute* find(const char* name, std::size_t& next)
{
    for (std::size_t i = 0; i < std::size(attributes); ++i) {
        const Attribute& attribute = attributes[next];
        next = next + 1 < std::size(attributes) ? next + 1 : 0;
        if (std::strcmp(attribute.name, name) == 0) {
            return &attribute;
        }
    }
    return nullptr;
}

}  // namespace

bool read(const AlarmData& alarm, const char* attributeName, std::size_t& next, Zorv::AutoMemory& memory,
          YaltOamSpiMoAttribute_3T& attribute)
{
    const Attribute* const found = find(attributeName, next);
    if (found == nullptr) {
        return false;
    }
    attribute = found->read(alarm, memory);
    return true;
}

std::int32_t convertSeverity(std::int32_t severity)
{
    constexpr std::int32_t cleared = 1;
    constexpr std::int32_t critical = 3;
    constexpr std::int32_t major = 4;
    constexpr std::int32_t minor = 5;
    constexpr std::int32_t warning = 6;
    switch (severity) {
    case YALT_FM_SEVERITY_CLEARED:
        return cleared;
    case YALT_FM_SEVERITY_INDETERMINATE:
        ZORV_WARNING("Alarm received with non supported severity Indeterminate. Using Critical instead");
        return critical;
    case YALT_FM_SEVERITY_WARNING:
        return warning;
    case YALT_FM_SEVERITY_MINOR:
        return minor;
    case YALT_FM_SEVERITY_MAJOR:
        return major;
    case YALT_FM_SEVERITY_CRITICAL:
        return critical;
    default:
        ZORV_ERROR("Faulty alarm severity received: %d", severity);
        return critical;
    }
}

}  // namespace FmAlarmAttributes
}  // namespace ZorvFm
