/// What the event router has counted since it was made.
#pragma once

#include <atomic>
#include <cstdint>

namespace ZorvNode {

struct RouterStatistics {
    std::atomic<std::uint64_t> accepted{0};   ///< notifies answered with 0
    std::atomic<std::uint64_t> delivered{0};  ///< consumer callbacks made
    std::atomic<std::uint64_t> dropped{0};    ///< accepted, then handed back undelivered
    std::atomic<std::uint64_t> lost{0};       ///< refused because a consumer's queue was full
    std::atomic<std::uint64_t> refused{0};    ///< consumer callbacks that answered non-zero
    std::atomic<std::uint64_t> threw{0};      ///< callbacks of either side that threw
};

}  // namespace ZorvNode
