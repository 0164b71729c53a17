/// One line for each event of the node's streams: notifications, and lines of a log.
#pragma once

#include "Console.hpp"
#include "EventStream.hpp"

namespace ZorvCtl {

/// For people: the kind, then the fields as name=value; of a log its line as it is. Throws Failure when the node's data is
/// not JSON.
std::string eventText(const Console& console, const Event& event);

/// For programs: {"event": ..., "id": ..., "data": ...}.
std::string eventJson(const Event& event);

}  // namespace ZorvCtl
