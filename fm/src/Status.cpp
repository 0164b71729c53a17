#include "Status.hpp"

#include <cstring>
#include <string>

#include "Logging.hpp"

namespace ZorvFm {
namespace {

std::string toText(const ZorvMwSpiListNameT& name)
{
    return {name.value, strnlen(name.value, sizeof(name.value))};
}

}  // namespace

Status::Status() : list("FmStatusSection")
{
}

void Status::initialize()
{
    list.open();
    createList();
    bool empty = true;
    const ZorvReturnT result = list.isEmpty(empty, true);
    ZORV_INFORMATION("listIsEmpty of list %s returned %d", list.getName(), result);
    coldStart = result != ZORV_RETURN_OK || empty;
    if (result != ZORV_RETURN_OK) {
        ZORV_INFORMATION("%s list did not exist. Preparing for a cold start.", list.getName());
    } else if (empty) {
        ZORV_WARNING("%s list existed but was empty. Preparing for a cold start.", list.getName());
    } else {
        readSection();
    }
}

void Status::createList() const
{
    const ZorvReturnT result = list.create(sizeof(StatusSection));
    if (result == ZORV_RETURN_NO_RESOURCES) {
        ZORV_ERROR("Replicated List %s reports no resources ( %d )", list.getName(), result);
    } else if (result != ZORV_RETURN_OK && result != ZORV_RETURN_EXISTS) {
        ZORV_ERROR("Failed to create replicated list %s :  %d", list.getName(), result);
    }
}

void Status::readSection()
{
    ZorvMwSpiListRefT ref = nullptr;
    ZorvReturnT result = list.getFrontRef(ref);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listGetFrontRef: %d", result);
        return;
    }
    ZorvMwSpiListNameT itemName{};
    result = list.getNext(ref, itemName, &section);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listGetNextItemFront: %d", result);
    }
    result = list.finalize(ref);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listGetFinalize: %d", result);
    }
}

void Status::updateStateful(std::uint64_t time)
{
    section.lastNotificationCheck = time;
    section.lastStatefulTimestamp = time;
    ++section.lastStatefulSeqNo;
    save();
}

void Status::updateStateless(std::uint64_t time)
{
    section.lastNotificationCheck = time;
    section.lastStatelessTimestamp = time;
    ++section.lastStatelessSeqNo;
    save();
}

void Status::updateNotificationCheck(std::uint64_t time)
{
    section.lastNotificationCheck = time;
    save();
}

/// When the list cannot tell whether it is empty, it is taken for empty.
void Status::save() const
{
    bool empty = true;
    const ZorvReturnT result = list.isEmpty(empty, true);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listIsEmpty of %s: %d", list.getName(), result);
    }
    if (empty) {
        pushSection();
    } else {
        replaceSection();
    }
}

void Status::pushSection() const
{
    ZORV_INFORMATION("Put initial status item into %s list.", list.getName());
    ZorvMwSpiListNameT itemName{};
    const ZorvReturnT result = list.pushBack(itemName, &section);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listPushBack to %s: %d", list.getName(), result);
    } else {
        ZORV_INFORMATION("Successfully executed listPushBack to %s: Returned listItemName=%s", list.getName(),
                         toText(itemName).c_str());
    }
}

void Status::replaceSection() const
{
    ZorvMwSpiListRefT ref = nullptr;
    ZorvReturnT result = list.getFrontRef(ref);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listGetFrontRef of %s: %d", list.getName(), result);
        return;
    }
    ZorvMwSpiListNameT itemName{};
    StatusSection stored;
    result = list.getNext(ref, itemName, &stored);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listGetNextItemFront of %s: %d", list.getName(), result);
    } else {
        result = list.replace(itemName, &section);
        if (result != ZORV_RETURN_OK) {
            ZORV_ERROR("Response from replicated listReplaceItem of %s: %d", list.getName(), result);
        } else {
            ZORV_INFORMATION("Updated status item in %s list.", list.getName());
        }
    }
    result = list.finalize(ref);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Response from replicated listGetFinalize of %s: %d", list.getName(), result);
    }
}

}  // namespace ZorvFm
