#include "services/trace/TraceTable.hpp"

namespace ZorvNode {

namespace {

using BindingT = TableBinding<TraceService>;

YaltReturnT getLevel(const char* group, const int32_t** level)
{
    return BindingT::call("trace getLevel", [&](TraceService& trace) {
        return group != nullptr && level != nullptr ? trace.getLevel(group, level) : ZORV_RETURN_FAILED;
    });
}

YaltReturnT write(const char* group, int32_t level, const char* file, uint32_t line, const char* function,
                  const char* text)
{
    return BindingT::call("trace write", [&](TraceService& trace) {
        if (group == nullptr || text == nullptr) {
            return static_cast<ZorvReturnT>(ZORV_RETURN_FAILED);
        }
        const TraceLocation location{file != nullptr ? file : "", line, function != nullptr ? function : ""};
        return trace.write(group, level, location, text);
    });
}

}  // namespace

const YaltMwSpiTrace_1T* TraceTable::table()
{
    static const YaltMwSpiTrace_1T functions = {&getLevel, &write};
    return &functions;
}

}  // namespace ZorvNode
