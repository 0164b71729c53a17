/// What both formats of a stored alarm promise.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>

#include "Alarm.hpp"
#include "FmConfig.hpp"
#include "FmWorld.hpp"
#include "FuzzTarget.hpp"
#include "StoredAlarm.hpp"

namespace ZorvFuzz {

using ZorvFm::Alarm;

inline const ZorvFm::FmConfig& plainConfig()
{
    static const ZorvFm::FmConfig config;
    return config;
}

/// What both formats store, as the alarm shows it.
inline std::string storedFields(const Alarm& alarm)
{
    std::ostringstream text;
    text << alarm.dn << '|' << alarm.majorType << '|' << alarm.minorType << '|' << alarm.getAdditionalText() << '|'
         << alarm.severity << '|' << alarm.specificProblem << '|' << alarm.seqNo << '|' << alarm.eventTime << '|'
         << alarm.eventType << '|' << alarm.probableCause << '|' << alarm.originalSeqNo << '|'
         << alarm.originalAdditionalText << '|' << alarm.originalSeverity << '|' << alarm.originalEventTime << '|'
         << alarm.getState().getState() << '|' << alarm.clearEventTime;
    for (const auto& [name, value] : alarm.additionalInfo) {
        text << '|' << name << '|' << value;
    }
    return text.str();
}

/// The text as it comes back out of a list's item.
inline std::string throughItem(const std::string& text)
{
    return ZorvFm::fromStoredAlarm(ZorvFm::toStoredAlarm(text));
}

inline std::size_t countOf(const std::string& text, char character)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), character));
}

/// A written text has exactly its fields, and no byte that could be anything but a field's.
inline void requireWellFormed(const std::string& written, std::size_t fields)
{
    static const std::string known = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=-;\r\n";
    require(countOf(written, ';') + 1 == fields, "a written text has exactly its fields");
    require(written.find_first_not_of(known) == std::string::npos, "a written text has no other characters");
}

/// The toggling remark is stored with the text and shown once more; everything else comes back as it was.
inline void requireSame(const Alarm& before, Alarm& after)
{
    if (after.isToggling()) {
        require(after.additionalText == before.getAdditionalText(), "the text comes back as it was shown");
        after.additionalText = before.additionalText;
    }
    requireEqual(storedFields(before), storedFields(after), "what was read, written and read again is the same");
}

}  // namespace ZorvFuzz
