/// Building blocks of the stored text of an alarm.
///
/// Threads:   any; no state.
/// Failure:   fromString throws Zorv::ZorvException; Base64 decoding never fails.
#pragma once

#include <ios>
#include <string>
#include <string_view>

namespace ZorvFm {
namespace Serialize {

/// Base64 (RFC 4648) with CR and LF after every 72 characters: what Poco::Base64Encoder writes.
void appendBase64(std::string& text, std::string_view bytes);
std::string toBase64(std::string_view bytes);

/// What Poco::Base64Decoder reads.
std::string fromBase64(std::string_view text);

/// Reads one number at the beginning of the text; what follows it is ignored.
/// @param name of the field, for "Failed to retrieve <name>".
template <class ValueT>
void fromString(ValueT& value, std::string_view text, std::ios_base& (*manipulator)(std::ios_base&), const char* name);

extern template void fromString<int>(int& value, std::string_view text, std::ios_base& (*manipulator)(std::ios_base&),
                                     const char* name);
extern template void fromString<unsigned long long>(unsigned long long& value, std::string_view text,
                                                    std::ios_base& (*manipulator)(std::ios_base&), const char* name);

}  // namespace Serialize
}  // namespace ZorvFm
