/// Notification structures of versions 1, 2 and 4 in any state that an application can bring about: null and missing texts,
/// a count of entries without entries, numbers from nowhere. The alarm says what the structure says, its log record cannot
/// be broken out of, and it survives being stored.
#include <vector>

#include "InputBytes.hpp"
#include "StoredAlarmChecks.hpp"

using namespace ZorvFuzz;
using ZorvFm::AlarmData;

namespace {

/// A text or null.
class MaybeText {
public:
    explicit MaybeText(InputBytes& input) : isThere(input.number<std::uint8_t>() % 8 != 0)
    {
        if (isThere) {
            text = input.text();
        }
    }

    const char* get() const { return isThere ? text.c_str() : nullptr; }
    const std::string& orEmpty() const { return text; }

private:
    bool isThere;
    std::string text;
};

struct Fields {
    explicit Fields(InputBytes& input)
        : majorType(input.number<std::uint32_t>()),
          minorType(input.number<std::uint32_t>()),
          severity(input.number<std::int32_t>()),
          eventTime(input.number<std::uint64_t>()),
          dn(input),
          text(input)
    {
    }

    std::uint32_t majorType;
    std::uint32_t minorType;
    std::int32_t severity;
    std::uint64_t eventTime;
    MaybeText dn;
    MaybeText text;
};

template <class NotificationT>
NotificationT structureOf(const Fields& fields)
{
    NotificationT notification{};
    notification.dn = fields.dn.get();
    notification.majorType = fields.majorType;
    notification.minorType = fields.minorType;
    notification.additionalText = fields.text.get();
    notification.severity = fields.severity;
    return notification;
}

AlarmData readVersion1(const Fields& fields)
{
    return AlarmData(structureOf<YaltOamSpiNotificationFmStruct>(fields));
}

AlarmData readVersion2(const Fields& fields)
{
    auto notification = structureOf<YaltOamSpiNotificationFmStruct_2>(fields);
    notification.eventTime = fields.eventTime;
    return AlarmData(notification);
}

/// As many entries as the rest of the input makes; or none at all, for which the count means nothing.
AlarmData readVersion4(const Fields& fields, InputBytes& input)
{
    auto notification = structureOf<YaltOamSpiNotificationFmStruct_4>(fields);
    notification.eventTime = fields.eventTime;
    notification.additionalInfo.numberOfEntries = input.number<std::uint32_t>();
    std::vector<std::pair<MaybeText, MaybeText>> texts;
    while (!input.isEmpty()) {
        MaybeText name(input);
        texts.emplace_back(std::move(name), MaybeText(input));
    }
    std::vector<YaltOamSpiFmAdditionalInfoEntry> entries;
    entries.reserve(texts.size());
    for (const auto& [name, value] : texts) {
        entries.push_back({name.get(), value.get()});
    }
    if (!entries.empty()) {
        notification.additionalInfo = {entries.data(), static_cast<std::uint32_t>(entries.size())};
    }
    AlarmData alarm(notification);
    require(alarm.additionalInfo.size() == entries.size(), "every entry is taken");
    auto taken = alarm.additionalInfo.begin();
    for (const auto& [name, value] : texts) {
        requireEqual(name.orEmpty() + "=" + value.orEmpty(), taken->first + "=" + taken->second, "entries keep order");
        ++taken;
    }
    return alarm;
}

void checkFields(const Fields& fields, const AlarmData& alarm)
{
    requireEqual(fields.dn.orEmpty(), alarm.dn, "the DN is taken, null as an empty one");
    requireEqual(fields.text.orEmpty(), alarm.additionalText, "the text is taken, null as an empty one");
    require(alarm.majorType == fields.majorType && alarm.minorType == fields.minorType, "the type is taken");
    require(alarm.severity == fields.severity && alarm.originalSeverity == fields.severity, "the severity is taken");
    require(alarm.eventTime != 0, "an alarm has an event time");
}

/// Two lines of three elements, whatever the texts are made of.
void checkTexts(const AlarmData& alarm)
{
    const std::string record = alarm.toLogString();
    require(countOf(record, '<') == 6 && countOf(record, '>') == 6, "a log record has its own elements and no other");
    require(!alarm.toString().empty() && !alarm.additionalInfoToString().empty(), "an alarm has a line for traces");
}

void checkStoring(const AlarmData& data)
{
    Alarm alarm(plainConfig());
    alarm.init(data);
    Alarm stored(plainConfig());
    stored.deserialize_v2(alarm.serialize_v2());
    requireSame(alarm, stored);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FmWorld& world = FmWorld::instance();
    InputBytes input(data, size);
    const auto version = input.number<std::uint8_t>() % 3;
    const Fields fields(input);
    const AlarmData alarm = version == 0   ? readVersion1(fields)
                            : version == 1 ? readVersion2(fields)
                                           : readVersion4(fields, input);
    checkFields(fields, alarm);
    const bool complains = !world.takeLogs().empty();
    require(complains == fields.dn.orEmpty().empty(), "an alarm without a DN is told, and no other");
    checkTexts(alarm);
    checkStoring(alarm);
    return 0;
}
