/// FM notifications as JSON, in the form that NotificationReader takes.
#pragma once

#include <string>

#include "notification/FmNotification.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvInput {

/// @param kind "raise", "clear" or "alert"; a clear is written without its severity.
std::string notificationJson(const std::string& kind, const FmNotification& notification);

/// A member with the severity's name, or the number of one that has none.
void writeSeverity(JsonWriter& json, const char* name, std::int32_t severity);

}  // namespace ZorvInput
