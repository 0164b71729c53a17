/// The trace as the C table YaltMwSpiTrace_1T.
#pragma once

#include "services/TableBinding.hpp"
#include "services/trace/TraceService.hpp"

namespace ZorvNode {

class TraceTable : TableBinding<TraceService> {
public:
    explicit TraceTable(TraceService& trace) : TableBinding(trace) {}

    static const YaltMwSpiTrace_1T* table();
};

}  // namespace ZorvNode
