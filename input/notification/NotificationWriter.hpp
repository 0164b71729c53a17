/// FM notifications as JSON, in the form that NotificationReader takes.
#pragma once

#include <string>

#include "notification/FmNotification.hpp"

namespace ZorvInput {

/// @param kind "raise", "clear" or "alert"; a clear is written without its severity.
std::string notificationJson(const std::string& kind, const FmNotification& notification);

}  // namespace ZorvInput
