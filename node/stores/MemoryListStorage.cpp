#include "stores/MemoryListStorage.hpp"

namespace ZorvNode {

namespace {

using LockT = std::lock_guard<std::mutex>;

ListDataT bytes(const void* data, std::uint32_t size)
{
    const auto* first = static_cast<const std::uint8_t*>(data);
    return ListDataT(first, first + size);
}

}  // namespace

ZorvReturnT MemoryListStorage::create(const std::string& list, std::uint32_t itemSize)
{
    const LockT lock(mutex);
    if (find(list) != nullptr) {
        return ZORV_RETURN_EXISTS;
    }
    if (lists.size() >= limits.lists || itemSize > limits.itemSize) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    List& created = lists[list];
    created.identity = ++lastIdentity;
    created.itemSize = itemSize;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::remove(const std::string& list)
{
    const LockT lock(mutex);
    return lists.erase(list) > 0 ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
}

ZorvReturnT MemoryListStorage::describe(const std::string& list, std::uint64_t& identity, std::uint32_t& itemSize)
{
    const LockT lock(mutex);
    const List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    identity = found->identity;
    itemSize = found->itemSize;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::isEmpty(const std::string& list, bool& empty)
{
    const LockT lock(mutex);
    const List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    empty = found->items.empty();
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::pushBack(const std::string& list, const void* data, std::uint64_t& number)
{
    const LockT lock(mutex);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    if (found->items.size() >= limits.itemsPerList) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    found->items.emplace_hint(found->items.end(), lastNumber + 1, bytes(data, found->itemSize));
    number = ++lastNumber;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::erase(const std::string& list, std::uint64_t number)
{
    const LockT lock(mutex);
    List* found = find(list);
    return found != nullptr && found->items.erase(number) > 0 ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
}

ZorvReturnT MemoryListStorage::replace(const std::string& list, std::uint64_t number, const void* data)
{
    const LockT lock(mutex);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const auto item = found->items.find(number);
    if (item == found->items.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    item->second = bytes(data, found->itemSize);
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::findFrom(const std::string& list, std::uint64_t number, ListItem& item)
{
    const LockT lock(mutex);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const auto first = found->items.lower_bound(number);
    if (first == found->items.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    item.number = first->first;
    item.data = first->second;
    return ZORV_RETURN_OK;
}

MemoryListStorage::List* MemoryListStorage::find(const std::string& list)
{
    const auto found = lists.find(list);
    return found != lists.end() ? &found->second : nullptr;
}

}  // namespace ZorvNode
