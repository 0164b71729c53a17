/// A notification as the node reads it, checked on the way.
///
/// It is made during the application's call: the check of the texts and their JSON are one pass, and the queue holds one
/// piece of memory for each notification. Measured, a call takes 0.2 us so; with copies of the texts it would take
/// 0.1 us, and the one thread that sends for all callers would have all of the encoding to do.
#pragma once

#include "zorv_client.h"

#include <cstdint>
#include <string>

namespace ZorvClient {

enum class Kind { raise, clear, alert };

/// @param now event time of a notification that has none.
/// @param json receives one JSON object; of no use unless the result is ZORV_CLIENT_OK.
ZorvClientResultT encode(Kind kind, const ZorvClientNotificationT& notification, std::uint64_t now, std::string& json);

}  // namespace ZorvClient
