/// The active alarms, page by page, and as a table.
///
/// Failure: that of NodeConnection.
#pragma once

#include <functional>
#include <string>

#include "Console.hpp"
#include "NodeConnection.hpp"

namespace ZorvCtl {

/// What of the list is wanted; empty for everything.
struct AlarmFilter {
    std::string severity;  ///< as parseSeverityNames takes it
    std::string dn;        ///< beginning of the resource's DN
    std::string type;      ///< as parseType takes it
};

/// Hands over every alarm that passes, in the order of the node.
void readAlarms(NodeConnection& connection, const AlarmFilter& filter,
                const std::function<void(const ZorvInput::JsonT&)>& take);

/// The table and the number of alarms in it.
void printAlarms(const Console& console, NodeConnection& connection, const AlarmFilter& filter);

}  // namespace ZorvCtl
