#include "AlarmListWalk.hpp"

#include "Logging.hpp"
#include "ZorvException.hpp"

namespace ZorvFm {

AlarmListWalk::AlarmListWalk(const ReplicatedList& walkedList) : list(walkedList)
{
    const ZorvReturnT result = list.getFrontRef(ref);
    ZORV_TRACE("listGetFrontRef, %d", result);
    opened = result == ZORV_RETURN_OK;
}

AlarmListWalk::~AlarmListWalk()
{
    if (opened) {
        const ZorvReturnT result = list.finalize(ref);
        ZORV_TRACE("Response from listGetFinalize of list %s: %d", list.getName(), result);
    }
}

bool AlarmListWalk::next(ZorvMwSpiListNameT& itemName, StoredAlarmT& data)
{
    if (!opened || ref == nullptr) {
        return false;
    }
    data.fill(0);
    const ZorvReturnT result = list.getNext(ref, itemName, data.data());
    ZORV_TRACE("listGetNextItemFront, %d", result);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Retval from listGetNextItemFront: %d", result);
        throw Zorv::ZorvException("Retval from listGetNextItemFront: %d", result);
    }
    return true;
}

}  // namespace ZorvFm
