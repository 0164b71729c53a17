/// FM notifications on their way to a node.
#pragma once

#include <optional>
#include <string>

#include "NodeConnection.hpp"

namespace ZorvCtl {

struct Rejection {
    std::size_t item = 0;  ///< position in the batch, from 0
    std::string reason;
};

/// Publishes one notification or an array of them, and answers with the first one that the node has rejected.
/// @param wait routed or delivered: what the node is to have done with them before it answers.
std::optional<Rejection> publish(NodeConnection& connection, const std::string& json, const std::string& wait);

}  // namespace ZorvCtl
