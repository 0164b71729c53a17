#include "services/replicatedlist/ReplicatedListTable.hpp"

namespace ZorvNode {

namespace {

using ServiceT = ReplicatedListService;

/// Refuses a call with a null argument.
template <class OperationT, class... ArgumentT>
ZorvReturnT call(const char* where, OperationT operation, const ArgumentT*... arguments)
{
    if (hasNull({arguments...})) {
        return ZORV_RETURN_FAILED;
    }
    return TableBinding<ServiceT>::call(where, operation);
}

ZorvReturnT listCreate(const ZorvMwSpiListNameT* list, uint32_t itemSize)
{
    return call(
        "listCreate", [&](ServiceT& lists) { return lists.create(*list, itemSize); }, list);
}

ZorvReturnT listDelete(const ZorvMwSpiListNameT* list)
{
    return call(
        "listDelete", [&](ServiceT& lists) { return lists.remove(*list); }, list);
}

ZorvReturnT listAttach(const ZorvMwSpiListNameT* list)
{
    return call(
        "listAttach", [&](ServiceT& lists) { return lists.attach(*list); }, list);
}

ZorvReturnT listIsEmpty(const ZorvMwSpiListNameT* list, bool* isEmpty)
{
    return call(
        "listIsEmpty", [&](ServiceT& lists) { return lists.isEmpty(*list, *isEmpty); }, list, isEmpty);
}

ZorvReturnT listGetFrontRef(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref)
{
    return call(
        "listGetFrontRef", [&](ServiceT& lists) { return lists.getFrontRef(*list, *ref); }, list, ref);
}

ZorvReturnT listPushBack(const ZorvMwSpiListNameT* list, ZorvMwSpiListNameT* itemName, const void* data)
{
    return call(
        "listPushBack", [&](ServiceT& lists) { return lists.pushBack(*list, *itemName, data); }, list, itemName, data);
}

ZorvReturnT listEraseItem(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName)
{
    return call(
        "listEraseItem", [&](ServiceT& lists) { return lists.eraseItem(*list, *itemName); }, list, itemName);
}

ZorvReturnT listGetNextItemFront(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref, ZorvMwSpiListNameT* itemName,
                                 void* data)
{
    return call(
        "listGetNextItemFront", [&](ServiceT& lists) { return lists.getNextItem(*list, *ref, *itemName, data); }, list,
        ref, itemName, data);
}

ZorvReturnT listGetFinalize(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT ref)
{
    return call(
        "listGetFinalize", [&](ServiceT& lists) { return lists.finalize(*list, ref); }, list);
}

ZorvReturnT listReplaceItem(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName, const void* data)
{
    return call(
        "listReplaceItem", [&](ServiceT& lists) { return lists.replaceItem(*list, *itemName, data); }, list, itemName,
        data);
}

}  // namespace

const ZorvMwSpiReplicatedList_1T* ReplicatedListTable::table()
{
    static const ZorvMwSpiReplicatedList_1T functions = {
        &listCreate,   &listDelete,    &listAttach,           &listIsEmpty,     &listGetFrontRef,
        &listPushBack, &listEraseItem, &listGetNextItemFront, &listGetFinalize, &listReplaceItem,
    };
    return &functions;
}

}  // namespace ZorvNode
