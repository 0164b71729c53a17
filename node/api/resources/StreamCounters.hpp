/// What the notification streams have counted.
#pragma once

#include <atomic>
#include <cstdint>

namespace ZorvNode {

struct StreamCounters {
    std::atomic<std::uint64_t> cutOff{0};  ///< readers that fell behind what is kept
};

}  // namespace ZorvNode
