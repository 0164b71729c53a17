#include "services/log/LogTable.hpp"

namespace ZorvNode {

namespace {

using BindingT = TableBinding<LogService>;

ZorvReturnT getLevel(const char* logName, const int32_t** level)
{
    return BindingT::call("log getLevel", [&](LogService& log) {
        return logName != nullptr && level != nullptr ? log.getLevel(logName, level) : ZORV_RETURN_FAILED;
    });
}

ZorvReturnT write(const char* logName, int32_t level, const char* text)
{
    return BindingT::call("log write", [&](LogService& log) {
        return logName != nullptr && text != nullptr ? log.write(logName, level, text) : ZORV_RETURN_FAILED;
    });
}

}  // namespace

const ZorvMwSpiLog_1T* LogTable::table()
{
    static const ZorvMwSpiLog_1T functions = {&getLevel, &write};
    return &functions;
}

}  // namespace ZorvNode
