/// Moves the alarms of the earlier replicated list, in format 1, to the present one, in format 2.
///
/// Threads:   the caller holds the active alarm list's mutex.
/// Failure:   logged and answered with -1; what was moved stays moved, the earlier list is kept and the next start tries
///            again.
#pragma once

#include "ReplicatedList.hpp"

namespace ZorvFm {

class FmConfig;

/// 0 when all alarms were moved and the earlier list is gone.
int migrateToNewRlFormat(const ReplicatedList& newList, const ReplicatedList& legacyList, const FmConfig& config);

}  // namespace ZorvFm
