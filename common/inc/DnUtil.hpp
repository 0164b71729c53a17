/// Distinguished names: comma-separated lists of "Class=value" from the root down.
///
/// Threads:   any; no state.
#pragma once

#include <string>
#include <string_view>

namespace Zorv {
namespace DnUtil {

/// "ManagedElement=1" of "ManagedElement=1,Port=4"; the whole DN when it has one part only.
std::string_view firstRdn(std::string_view dn);

/// "Port=4" of "ManagedElement=1,Port=4".
std::string_view lastRdn(std::string_view dn);

/// "ManagedElement=1" of "ManagedElement=1,Port=4"; empty for a DN of one part.
std::string_view parentDn(std::string_view dn);

/// "4" of "Port=4"; empty without "=".
std::string_view rdnValue(std::string_view rdn);

/// "Port" of "Port=4"; the whole text without "=".
std::string_view rdnClass(std::string_view rdn);

/// parent and rdn joined; the rdn alone below the root ("").
std::string childDn(std::string_view parent, std::string_view rdn);

}  // namespace DnUtil
}  // namespace Zorv
