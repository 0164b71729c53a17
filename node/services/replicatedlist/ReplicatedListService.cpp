#include "services/replicatedlist/ReplicatedListService.hpp"

#include <cstring>

#include "services/replicatedlist/ListNames.hpp"

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

}  // namespace

ZorvReturnT ReplicatedListService::create(const ZorvMwSpiListNameT& list, std::uint32_t itemSize)
{
    const auto name = toText(list);
    return name && itemSize > 0 ? counted(storage.create(*name, itemSize)) : ZORV_RETURN_FAILED;
}

ZorvReturnT ReplicatedListService::remove(const ZorvMwSpiListNameT& list)
{
    const auto name = toText(list);
    return name ? counted(storage.remove(*name)) : ZORV_RETURN_FAILED;
}

ZorvReturnT ReplicatedListService::attach(const ZorvMwSpiListNameT& list)
{
    bool ignored = false;
    return isEmpty(list, ignored);
}

ZorvReturnT ReplicatedListService::isEmpty(const ZorvMwSpiListNameT& list, bool& empty)
{
    const auto name = toText(list);
    return name ? storage.isEmpty(*name, empty) : ZORV_RETURN_FAILED;
}

ZorvReturnT ReplicatedListService::getFrontRef(const ZorvMwSpiListNameT& list, ZorvMwSpiListRefT& ref)
{
    const auto name = toText(list);
    if (!name) {
        return ZORV_RETURN_FAILED;
    }
    Iteration iteration{std::string(*name), 0, 0};
    std::uint32_t itemSize = 0;
    const ZorvReturnT described = storage.describe(*name, iteration.listIdentity, itemSize);
    if (described != ZORV_RETURN_OK) {
        return described;
    }
    const ZorvReturnT found = storage.findNumberFrom(*name, 0, iteration.nextNumber);
    if (found != ZORV_RETURN_OK) {
        ref = nullptr;
        return found == ZORV_RETURN_NOT_FOUND ? ZORV_RETURN_OK : found;
    }
    const LockT lock(mutex);
    if (iterations.size() >= iterationBound) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    ref = reinterpret_cast<ZorvMwSpiListRefT>(++lastReference);  // NOLINT(performance-no-int-to-ptr): a handle
    iterations.emplace(ref, std::move(iteration));
    return ZORV_RETURN_OK;
}

ZorvReturnT ReplicatedListService::pushBack(const ZorvMwSpiListNameT& list, ZorvMwSpiListNameT& itemName,
                                            const void* data)
{
    const auto name = toText(list);
    if (!name) {
        return ZORV_RETURN_FAILED;
    }
    std::uint64_t number = 0;
    const ZorvReturnT result = counted(storage.pushBack(*name, data, number));
    if (result == ZORV_RETURN_OK) {
        itemName = toItemName(number);
    }
    return result;
}

ZorvReturnT ReplicatedListService::eraseItem(const ZorvMwSpiListNameT& list, const ZorvMwSpiListNameT& itemName)
{
    const auto name = toText(list);
    const auto number = toItemNumber(itemName);
    if (!name) {
        return ZORV_RETURN_FAILED;
    }
    return number ? counted(storage.erase(*name, *number)) : ZORV_RETURN_NOT_FOUND;
}

ZorvReturnT ReplicatedListService::replaceItem(const ZorvMwSpiListNameT& list, const ZorvMwSpiListNameT& itemName,
                                               const void* data)
{
    const auto name = toText(list);
    const auto number = toItemNumber(itemName);
    if (!name) {
        return ZORV_RETURN_FAILED;
    }
    return number ? counted(storage.replace(*name, *number, data)) : ZORV_RETURN_NOT_FOUND;
}

ZorvReturnT ReplicatedListService::getNextItem(const ZorvMwSpiListNameT& list, ZorvMwSpiListRefT& ref,
                                               ZorvMwSpiListNameT& itemName, void* data)
{
    if (ref == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const auto name = toText(list);
    auto iteration = name ? find(*name, ref) : std::nullopt;
    if (!iteration) {
        return ZORV_RETURN_FAILED;
    }
    bool more = false;
    const ZorvReturnT result = step(*iteration, itemName, data, more);
    if (result != ZORV_RETURN_OK && result != ZORV_RETURN_NOT_FOUND) {
        return result;  // the reference still wants its finalize
    }
    const LockT lock(mutex);
    if (more) {
        iterations[ref] = std::move(*iteration);
    } else {
        iterations.erase(ref);
        ref = nullptr;
    }
    return result;
}

/// Copies the next item that still exists and finds the one behind it.
ZorvReturnT ReplicatedListService::step(Iteration& iteration, ZorvMwSpiListNameT& itemName, void* data, bool& more)
{
    std::uint64_t identity = 0;
    std::uint32_t itemSize = 0;
    if (storage.describe(iteration.list, identity, itemSize) != ZORV_RETURN_OK || identity != iteration.listIdentity) {
        return ZORV_RETURN_FAILED;  // the list was removed under the iteration
    }
    ListItem item;
    const ZorvReturnT found = storage.findFrom(iteration.list, iteration.nextNumber, item);
    if (found != ZORV_RETURN_OK) {
        return found;
    }
    itemName = toItemName(item.number);
    std::memcpy(data, item.data.data(), item.data.size());
    more = storage.findNumberFrom(iteration.list, item.number + 1, iteration.nextNumber) == ZORV_RETURN_OK;
    return ZORV_RETURN_OK;
}

ZorvReturnT ReplicatedListService::finalize(const ZorvMwSpiListNameT& list, ZorvMwSpiListRefT ref)
{
    if (ref == nullptr) {
        return ZORV_RETURN_OK;
    }
    const auto name = toText(list);
    if (!name || !find(*name, ref)) {
        return ZORV_RETURN_FAILED;
    }
    const LockT lock(mutex);
    return iterations.erase(ref) > 0 ? ZORV_RETURN_OK : ZORV_RETURN_FAILED;
}

std::optional<ReplicatedListService::Iteration> ReplicatedListService::find(std::string_view list,
                                                                            ZorvMwSpiListRefT ref)
{
    const LockT lock(mutex);
    const auto found = iterations.find(ref);
    if (found == iterations.end() || found->second.list != list) {
        return std::nullopt;
    }
    return found->second;
}

ZorvReturnT ReplicatedListService::counted(ZorvReturnT result)
{
    if (result == ZORV_RETURN_OK) {
        ++numberOfChanges;
    }
    return result;
}

}  // namespace ZorvNode
