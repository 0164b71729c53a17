/// Building blocks of the stored text of an alarm.
///
/// Threads:   any; no state.
/// Failure:   fromString throws Zorv::ZorvException; Base64 decoding never fails.
#pragma once

#include <ios>
#include <string>

namespace ZorvFm {
namespace Serialize {

/// Base64 with a line break after every 72 characters.
std::string toBase64(const std::string& bytes);

std::string fromBase64(const std::string& text);

/// Reads one number at the beginning of the text; what follows it is ignored.
/// @param name of the field, for "Failed to retrieve <name>".
template <class ValueT>
void fromString(ValueT& value, const std::string& text, std::ios_base& (*manipulator)(std::ios_base&),
                const char* name);

extern template void fromString<int>(int& value, const std::string& text, std::ios_base& (*manipulator)(std::ios_base&),
                                     const char* name);
extern template void fromString<unsigned long long>(unsigned long long& value, const std::string& text,
                                                    std::ios_base& (*manipulator)(std::ios_base&), const char* name);

}  // namespace Serialize
}  // namespace ZorvFm
