/// What a database file holds, and how it came to that: the steps that made each version of it from the one before.
#pragma once

#include <cstdint>
#include <vector>

namespace ZorvNode {

struct Schema {
    std::int32_t applicationId;      ///< in the header of the file; tells it from other programs' databases
    std::vector<const char*> steps;  ///< SQL; step n leads from version n to n + 1
};

/// That of the node's store (docs/formats/store.md). A release that needs more appends a step, and changes none.
const Schema& storeSchema();

}  // namespace ZorvNode
