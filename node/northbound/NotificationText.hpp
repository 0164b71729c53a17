/// Northbound notifications as text: one line each, with every field.
#pragma once

#include <string>

namespace ZorvNode {

/// The six northbound event types.
extern const char* const northboundEventTypes[6];

/// value is the event type's structure. Times in UTC, texts in quotes with control characters and quotes escaped.
std::string notificationText(const std::string& eventType, const void* value);

}  // namespace ZorvNode
