/// Bringing the library's components up and down, behind its two entry points.
///
/// Threads, ownership and failure as for the entry points. Components and manager are created at their first use and
/// destroyed when the library is unloaded, never by terminate.
#pragma once

#include "ZorvMgmtSpiLibrary_1.h"

namespace ZorvFm {
namespace Library {

ZorvReturnT initialize(const ZorvMgmtSpiPortalAccessor_1T* accessor, const char* config);
ZorvReturnT terminate();

}  // namespace Library
}  // namespace ZorvFm
