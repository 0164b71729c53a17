#include "stores/MemoryListStorage.hpp"

#include <algorithm>

namespace ZorvNode {

namespace {

using WriterT = std::lock_guard<std::mutex>;
using ChangeT = std::lock_guard<std::shared_mutex>;
using ReaderT = std::shared_lock<std::shared_mutex>;

const std::uint8_t* bytes(const void* data)
{
    return static_cast<const std::uint8_t*>(data);
}

}  // namespace

// Memory is taken before a change is recorded: nothing fails behind the record.

ZorvReturnT MemoryListStorage::create(const std::string& list, std::uint32_t itemSize)
{
    const WriterT writer(writing);
    if (find(list) != nullptr) {
        return ZORV_RETURN_EXISTS;
    }
    if (contents.lists.size() >= limits.lists || itemSize > limits.itemSize) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    std::map<std::string, List> made;
    List& created = made[list];
    created.identity = contents.lastIdentity + 1;
    created.itemSize = itemSize;
    recordCreate(list, created);
    const ChangeT change(reading);
    contents.lists.merge(made);
    ++contents.lastIdentity;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::remove(const std::string& list)
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

ZorvReturnT MemoryListStorage::describe(const std::string& list, std::uint64_t& identity, std::uint32_t& itemSize)
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

ZorvReturnT MemoryListStorage::isEmpty(const std::string& list, bool& empty)
{
    const ReaderT reader(reading);
    const List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    empty = found->items.empty();
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::pushBack(const std::string& list, const void* data, std::uint64_t& number)
{
    const WriterT writer(writing);
    List* found = find(list);
    if (found == nullptr) {
        return ZORV_RETURN_NOT_FOUND;
    }
    if (found->items.size() >= limits.itemsPerList) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    ListItem item{contents.lastNumber + 1, ListDataT(bytes(data), bytes(data) + found->itemSize)};
    std::map<std::uint64_t, ListDataT> made;
    ListDataT& place = made[item.number];
    recordPush(*found, item);
    place = std::move(item.data);
    number = item.number;
    const ChangeT change(reading);
    found->items.insert(found->items.end(), made.extract(made.begin()));
    ++contents.lastNumber;
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::erase(const std::string& list, std::uint64_t number)
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

ZorvReturnT MemoryListStorage::replace(const std::string& list, std::uint64_t number, const void* data)
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
    if (std::equal(place->second.begin(), place->second.end(), bytes(data))) {
        return ZORV_RETURN_OK;
    }
    ListItem item{number, ListDataT(bytes(data), bytes(data) + found->itemSize)};
    recordReplace(*found, item);
    const ChangeT change(reading);
    place->second.swap(item.data);
    return ZORV_RETURN_OK;
}

ZorvReturnT MemoryListStorage::findFrom(const std::string& list, std::uint64_t number, ListItem& item)
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
    item.data = first->second;
    return ZORV_RETURN_OK;
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

MemoryListStorage::List* MemoryListStorage::find(const std::string& list)
{
    const auto found = contents.lists.find(list);
    return found != contents.lists.end() ? &found->second : nullptr;
}

}  // namespace ZorvNode
