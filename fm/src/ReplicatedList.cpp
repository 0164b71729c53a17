#include "ReplicatedList.hpp"

#include <cstring>

#include "FmComponentManager.hpp"

namespace ZorvFm {

ReplicatedList::ReplicatedList(const char* listName)
{
    const std::size_t size = std::strlen(listName) + 1;
    name.length = static_cast<std::uint16_t>(size);
    std::memcpy(name.value, listName, size);
}

void ReplicatedList::open()
{
    service = static_cast<const ZorvMwSpiReplicatedList_1T*>(
        FmComponentManager::instance().getInterface({nullptr, "ZorvMwSpiReplicatedList", "1"}));
}

ZorvReturnT ReplicatedList::create(std::uint32_t itemSize) const
{
    return service == nullptr ? ZORV_RETURN_FAILED : service->listCreate(&name, itemSize);
}

ZorvReturnT ReplicatedList::remove() const
{
    return service == nullptr ? ZORV_RETURN_FAILED : service->listDelete(&name);
}

ZorvReturnT ReplicatedList::attach() const
{
    return service == nullptr ? ZORV_RETURN_FAILED : service->listAttach(&name);
}

ZorvReturnT ReplicatedList::isEmpty(bool& answer, bool preset) const
{
    answer = preset;
    return service == nullptr ? ZORV_RETURN_FAILED : service->listIsEmpty(&name, &answer);
}

ZorvReturnT ReplicatedList::getFrontRef(ZorvMwSpiListRefT& ref) const
{
    ref = nullptr;
    return service == nullptr ? ZORV_RETURN_FAILED : service->listGetFrontRef(&name, &ref);
}

ZorvReturnT ReplicatedList::getNext(ZorvMwSpiListRefT& ref, ZorvMwSpiListNameT& itemName, void* data) const
{
    itemName = {};
    return service == nullptr ? ZORV_RETURN_FAILED : service->listGetNextItemFront(&name, &ref, &itemName, data);
}

ZorvReturnT ReplicatedList::finalize(ZorvMwSpiListRefT ref) const
{
    return service == nullptr ? ZORV_RETURN_FAILED : service->listGetFinalize(&name, ref);
}

ZorvReturnT ReplicatedList::pushBack(ZorvMwSpiListNameT& itemName, const void* data) const
{
    itemName = {};
    return service == nullptr ? ZORV_RETURN_FAILED : service->listPushBack(&name, &itemName, data);
}

ZorvReturnT ReplicatedList::replace(const ZorvMwSpiListNameT& itemName, const void* data) const
{
    return service == nullptr ? ZORV_RETURN_FAILED : service->listReplaceItem(&name, &itemName, data);
}

ZorvReturnT ReplicatedList::erase(const ZorvMwSpiListNameT& itemName) const
{
    return service == nullptr ? ZORV_RETURN_FAILED : service->listEraseItem(&name, &itemName);
}

}  // namespace ZorvFm
