/// What the configuration says about the node's store.
#pragma once

#include <string>

namespace ZorvNode {

enum class StoreKind {
    sqlite,  ///< in a file, outlives the node
    memory,  ///< gone with the node
};

/// What has become of an operation that has returned.
enum class Durability {
    process,  ///< survives the end of the process at any point; the last moments may be lost when the power fails
    power,    ///< is on the disk
};

struct StoreSettings {
    StoreKind kind = StoreKind::sqlite;
    Durability durability = Durability::process;
    std::string directory;     ///< of the file
    bool acceptEmpty = false;  ///< a damaged file is set aside and the node begins with an empty one
};

}  // namespace ZorvNode
