/// Names one publication of one client, so that a client that got no answer can send it again: "CLIENT/NUMBER".
///
/// A client takes a name that nobody else has, and for each publication a number greater than the one before.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ZorvNode {

struct PublicationId {
    std::string client;        ///< 1 to 64 letters, digits and hyphens
    std::uint64_t number = 0;  ///< below 2^63

    /// None when the text is no such name.
    static std::optional<PublicationId> fromText(const std::string& text);
};

}  // namespace ZorvNode
