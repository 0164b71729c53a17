/// The store cannot do what it should: one line, "FILE: why".
#pragma once

#include <stdexcept>
#include <string>

namespace ZorvNode {

class StoreError : public std::runtime_error {
public:
    enum class Kind {
        full,      ///< the disk
        readOnly,  ///< the file, its directory, or the file system
        busy,      ///< another process has the file
        damaged,   ///< the file is not what was written
        newer,     ///< a later release has made it
        foreign,   ///< another program has made it
        other,
    };

    StoreError(Kind errorKind, const std::string& text) : std::runtime_error(text), kind(errorKind) {}

    const Kind kind;
};

}  // namespace ZorvNode
