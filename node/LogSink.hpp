/// Where the node's own parts write what they have to tell; level is a ZorvMwSpiLogLevelT.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace ZorvNode {

using LogSinkT = std::function<void(std::int32_t level, const std::string& text)>;

}  // namespace ZorvNode
