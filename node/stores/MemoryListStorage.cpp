#include "stores/MemoryListStorage.hpp"

#include <cstring>

namespace ZorvNode {

namespace {

using WriterT = std::lock_guard<std::mutex>;
using ChangeT = std::lock_guard<std::shared_mutex>;
using ReaderT = std::shared_lock<std::shared_mutex>;

/// Without the zeros at the end. Eight bytes at a time: most items are zeros for the most part.
std::size_t sizeWithoutZeros(const std::uint8_t* data, std::size_t size)
{
    std::uint64_t eight = 0;
    while (size >= sizeof(eight)) {
        std::memcpy(&eight, data + size - sizeof(eight), sizeof(eight));
        if (eight != 0) {
            break;
        }
        size -= sizeof(eight);
    }
    while (size > 0 && data[size - 1] == 0) {
        --size;
    }
    return size;
}

}  // namespace

// Memory is taken before a change is recorded: nothing fails behind the record.

ZorvReturnT MemoryListStorage::create(std::string_view list, std::uint32_t itemSize)
{
    const WriterT writer(writing);
    if (find(list) != nullptr) {
        return ZORV_RETURN_EXISTS;
    }
    if (contents.lists.size() >= limits.lists || itemSize > limits.itemSize) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    std::map<std::string, List, std::less<>> made;
    const auto created = made.try_emplace(std::string(list)).first;
    created->second.identity = contents.lastIdentity + 1;
    created->second.itemSize = itemSize;
    recordCreate(created->first, created->second);
    const ChangeT change(reading);
    contents.lists.merge(made);
    ++contents.lastIdentity;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::remove(std::string_view list)
{
    const WriterT writer(writing);
    const auto found = contents.lists.find(list);
    if (found == contents.lists.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    recordRemove(found->second);
    const ChangeT change(reading);
    contents.lists.erase(found);
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::describe(std::string_view list, std::uint64_t& identity, std::uint32_t& itemSize)
{
    const ReaderT reader(reading);
    const List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    identity = found->identity;
    itemSize = found->itemSize;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::isEmpty(std::string_view list, bool& empty)
{
    const ReaderT reader(reading);
    const List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    empty = found->items.empty();
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::pushBack(std::string_view list, const void* data, std::uint64_t& number)
{
    const WriterT writer(writing);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    if (found->items.size() >= limits.itemsPerList) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    number = contents.lastNumber + 1;
    std::map<std::uint64_t, ListDataT> made;
    made.emplace(number, trimmed(data, found->itemSize));
    recordPush(*found, number, data);
    const ChangeT change(reading);
    found->items.insert(found->items.end(), made.extract(made.begin()));
    ++contents.lastNumber;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::erase(std::string_view list, std::uint64_t number)
{
    const WriterT writer(writing);
    List* found = find(list);
    if (found == nullptr || found->items.count(number) == 0) {
        return ZORV_RETURN_NOT_FOUND;
    }
    recordErase(*found, number);
    const ChangeT change(reading);
    found->items.erase(number);
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::replace(std::string_view list, std::uint64_t number, const void* data)
{
    const WriterT writer(writing);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const auto place = found->items.find(number);
    if (place == found->items.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    ListDataT item = trimmed(data, found->itemSize);
    if (item == place->second) {
        return ZORV_RETURN_OK;
    }
    recordReplace(*found, number, data);
    const ChangeT change(reading);
    place->second.swap(item);
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::findFrom(std::string_view list, std::uint64_t number, ListItem& item)
{
    const ReaderT reader(reading);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const auto first = found->items.lower_bound(number);
    if (first == found->items.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    item.number = first->first;
    item.data.assign(first->second.begin(), first->second.end());
    item.data.resize(found->itemSize);
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::findNumberFrom(std::string_view list, std::uint64_t number, std::uint64_t& found)
{
    const ReaderT reader(reading);
    const List* known = find(list);
    if (known == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    const auto first = known->items.lower_bound(number);
    if (first == known->items.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    found = first->first;
    return ZORV_RETURN_OK;
}

ListDataT MemoryListStorage::trimmed(const void* data, std::size_t size)
{
    const auto* first = static_cast<const std::uint8_t*>(data);
    return {first, first + sizeWithoutZeros(first, size)};
}

std::vector<ListDescription> MemoryListStorage::describeAll()
{
    const std::shared_lock<std::shared_mutex> lock(reading);
    std::vector<ListDescription> all;
    for (const auto& [name, list] : contents.lists) {
        all.push_back({name, list.itemSize, list.items.size()});
    }
    return all;
}

MemoryListStorage::List* MemoryListStorage::find(std::string_view list)
{
    const auto found = contents.lists.find(list);
    return found != contents.lists.end() ? &found->second : nullptr;
}

}  // namespace ZorvNode
