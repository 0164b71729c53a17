/// The fields of a stored alarm, for tests that damage one of them.
#pragma once

#include <string>
#include <vector>

#include "AlarmData.hpp"

namespace ZorvFm {

/// One field of the fixed part.
struct StoredField {
    const char* name;  ///< in the failure text; empty: a text in Base64, whose reading never fails
    void (*take)(AlarmData& to, const AlarmData& from);
};

using StoredFields = std::vector<StoredField>;

template <auto field>
void takeField(AlarmData& to, const AlarmData& from)
{
    to.*field = from.*field;
}

/// The filter state is not among the data.
inline void takeNothing(AlarmData&, const AlarmData&)
{
}

inline const StoredFields& fieldsOfFormat2()
{
    static const StoredFields fields = {{"", takeField<&AlarmData::dn>},
                                        {"majorType", takeField<&AlarmData::majorType>},
                                        {"minorType", takeField<&AlarmData::minorType>},
                                        {"", takeField<&AlarmData::additionalText>},
                                        {"", takeField<&AlarmData::additionalTextForClear>},
                                        {"Severity", takeField<&AlarmData::severity>},
                                        {"", takeField<&AlarmData::specificProblem>},
                                        {"Sequence number", takeField<&AlarmData::seqNo>},
                                        {"eventTime", takeField<&AlarmData::eventTime>},
                                        {"eventType", takeField<&AlarmData::eventType>},
                                        {"probableCause", takeField<&AlarmData::probableCause>},
                                        {"originalSeqNo", takeField<&AlarmData::originalSeqNo>},
                                        {"", takeField<&AlarmData::originalAdditionalText>},
                                        {"originalSeverity", takeField<&AlarmData::originalSeverity>},
                                        {"originalEventTime", takeField<&AlarmData::originalEventTime>},
                                        {"_state", takeNothing},
                                        {"clearEventTime", takeField<&AlarmData::clearEventTime>},
                                        {"alarmId", takeField<&AlarmData::alarmId>},
                                        {"additionalInfoSize", takeField<&AlarmData::additionalInfo>}};
    return fields;
}

inline const StoredFields& fieldsOfFormat1()
{
    static const StoredFields fields = {{"", takeField<&AlarmData::dn>},
                                        {"majorType", takeField<&AlarmData::majorType>},
                                        {"minorType", takeField<&AlarmData::minorType>},
                                        {"", takeField<&AlarmData::additionalText>},
                                        {"Severity", takeField<&AlarmData::severity>},
                                        {"", takeField<&AlarmData::specificProblem>},
                                        {"Sequence number", takeField<&AlarmData::seqNo>},
                                        {"eventTime", takeField<&AlarmData::eventTime>},
                                        {"stateful", takeField<&AlarmData::stateful>},
                                        {"eventType", takeField<&AlarmData::eventType>},
                                        {"probableCause", takeField<&AlarmData::probableCause>},
                                        {"originalSeqNo", takeField<&AlarmData::originalSeqNo>},
                                        {"", takeField<&AlarmData::originalAdditionalText>},
                                        {"originalSeverity", takeField<&AlarmData::originalSeverity>},
                                        {"originalEventTime", takeField<&AlarmData::originalEventTime>},
                                        {"_state", takeNothing},
                                        {"clearEventTime", takeField<&AlarmData::clearEventTime>}};
    return fields;
}

/// The texts between the separators.
inline std::vector<std::string> split(const std::string& text)
{
    std::vector<std::string> fields(1);
    for (const char c : text) {
        if (c == ';') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

inline std::string join(const std::vector<std::string>& fields)
{
    std::string text;
    for (const std::string& field : fields) {
        text += field + ";";
    }
    return text.substr(0, text.size() - 1);
}

/// The text up to so many fields.
inline std::string firstFields(const std::string& text, std::size_t count)
{
    std::vector<std::string> fields = split(text);
    fields.resize(count);
    return join(fields);
}

/// The text with another field in one place.
inline std::string replaced(const std::string& text, std::size_t index, const std::string& field)
{
    std::vector<std::string> fields = split(text);
    fields.at(index) = field;
    return join(fields);
}

}  // namespace ZorvFm
