/// The logs as the C table ZorvMwSpiLog_1T.
#pragma once

#include "services/TableBinding.hpp"
#include "services/log/LogService.hpp"

namespace ZorvNode {

class LogTable : TableBinding<LogService> {
public:
    explicit LogTable(LogService& log) : TableBinding(log) {}

    static const ZorvMwSpiLog_1T* table();
};

}  // namespace ZorvNode
