/// One line for each event of the node's notification stream.
#pragma once

#include "Console.hpp"
#include "EventStream.hpp"

namespace ZorvCtl {

/// For people: the kind, then the fields as name=value. Throws Failure when the node's data is not JSON.
std::string eventText(const Console& console, const Event& event);

/// For programs: {"event": ..., "id": ..., "data": ...}.
std::string eventJson(const Event& event);

}  // namespace ZorvCtl
