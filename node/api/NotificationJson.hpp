/// Northbound notifications as the data of server-sent events.
#pragma once

#include <cstdint>
#include <string>

namespace ZorvNode {

/// The six northbound event types; the first three are version 3, the others version 2.
extern const char* const northboundEventTypes[6];

/// A northbound notification, told apart and written as JSON.
struct NorthboundEvent {
    int version = 3;
    std::string name;  ///< alarm, heartbeat or rebuilt
    std::string json;

    bool isStateful = false;      ///< of an alarm notification
    std::uint64_t seqNo = 0;      ///< of an alarm notification
    std::uint64_t stateful = 0;   ///< last numbers, of a heartbeat
    std::uint64_t stateless = 0;  ///< last numbers, of a heartbeat
};

/// value is the event type's structure.
NorthboundEvent readNorthboundEvent(const std::string& eventType, const void* value);

}  // namespace ZorvNode
