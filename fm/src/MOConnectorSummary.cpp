/// The summary attributes of the FM managed object.
#include <array>
#include <optional>

#include "Logging.hpp"
#include "MOConnector.hpp"
#include "MoAccessor.hpp"
#include "ZorvException.hpp"

namespace ZorvFm {
namespace {

struct Counter {
    const char* attribute;
    std::optional<std::uint32_t> lastWritten;
};

/// In the order of writing. What the process has written stays known to it.
std::array<Counter, 5> counters = {
    {{"totalActive", {}}, {"sumCritical", {}}, {"sumMajor", {}}, {"sumMinor", {}}, {"sumWarning", {}}}};

using ValuesT = std::array<std::uint32_t, 5>;

template <class ValueT>
void write(Zorv::MoAccessor& accessor, const std::string& fmDn, const char* attribute, const ValueT& value)
{
    const ZorvReturnT result = accessor.setAttr(fmDn, attribute, value);
    if (result != ZORV_RETURN_OK) {
        throw Zorv::ZorvException("writing %s answered %d", attribute, result);
    }
}

void writeChangedCounters(Zorv::MoAccessor& accessor, const std::string& fmDn, const ValuesT& values)
{
    for (std::size_t i = 0; i < counters.size(); ++i) {
        if (counters[i].lastWritten != values[i]) {
            write(accessor, fmDn, counters[i].attribute, values[i]);
        }
    }
}

void commit(Zorv::MoAccessor& accessor, const ValuesT& values)
{
    const ZorvReturnT result = accessor.commit();
    if (result != ZORV_RETURN_OK) {
        throw Zorv::ZorvException("the commit answered %d", result);
    }
    for (std::size_t i = 0; i < counters.size(); ++i) {
        counters[i].lastWritten = values[i];
    }
}

}  // namespace

ZorvReturnT MOConnector::updateVeskAttributes(std::uint64_t lastSequenceNo, const std::string& lastChanged,
                                              unsigned total, unsigned critical, unsigned major, unsigned minor,
                                              unsigned warning)
{
    ZORV_TRACE(" >> ");
    const ValuesT values = {total, critical, major, minor, warning};
    Zorv::MoAccessor accessor(lockPolicy, accessTimeout);
    ZorvReturnT result = ZORV_RETURN_OK;
    try {
        const std::string fmDn = getFmDn(accessor);
        write(accessor, fmDn, "lastSequenceNo", lastSequenceNo);
        write(accessor, fmDn, "lastChanged", lastChanged);
        writeChangedCounters(accessor, fmDn, values);
        commit(accessor, values);
    } catch (const std::exception& e) {
        ZORV_TRACE("Failed to update summary alarms, reason %s. Will retry again.", e.what());
        result = ZORV_RETURN_FAILED;
    }
    accessor.close();
    ZORV_TRACE(" << ");
    return result;
}

}  // namespace ZorvFm
