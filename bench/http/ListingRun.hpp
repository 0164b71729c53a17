/// Reads all active alarms, page by page, and says how long that took.
///
/// Threads:   one.
/// Failure:   std::runtime_error when the server refuses or lists another number of alarms.
#pragma once

#include "AlarmServer.hpp"
#include "HttpConnection.hpp"

namespace ZorvBench {

/// Says `listing`, the time of the requests until the last byte of their answers, and `listing bytes`.
/// @param alarms that have to be listed.
void measureListing(const AlarmServer& server, const Address& address, int alarms);

}  // namespace ZorvBench
