#include "FakeReplicatedList.hpp"

#include <algorithm>
#include <cstring>

namespace ZorvFakes {

namespace {

const ZorvMwSpiReplicatedList_1T theTable = {
    forward<&FakeReplicatedList::listCreate>,      forward<&FakeReplicatedList::listDelete>,
    forward<&FakeReplicatedList::listAttach>,      forward<&FakeReplicatedList::listIsEmpty>,
    forward<&FakeReplicatedList::listGetFrontRef>, forward<&FakeReplicatedList::listPushBack>,
    forward<&FakeReplicatedList::listEraseItem>,   forward<&FakeReplicatedList::listGetNextItemFront>,
    forward<&FakeReplicatedList::listGetFinalize>, forward<&FakeReplicatedList::listReplaceItem>};

/// A reference is a number in the clothes of a pointer: it is handed out and compared, never followed.
ZorvMwSpiListRefT toReference(uintptr_t number)
{
    return reinterpret_cast<ZorvMwSpiListRefT>(number);  // NOLINT(performance-no-int-to-ptr)
}

uintptr_t toNumber(ZorvMwSpiListRefT reference)
{
    return reinterpret_cast<uintptr_t>(reference);
}

/// The length counts a final zero, which has to be there.
std::string textOf(const ZorvMwSpiListNameT* name)
{
    if (!name || name->length == 0 || name->length > sizeof name->value || name->value[name->length - 1] != '\0') {
        return {};
    }
    return {name->value, static_cast<size_t>(name->length - 1)};
}

void fill(ZorvMwSpiListNameT& name, const std::string& text)
{
    name = {};
    text.copy(name.value, sizeof name.value - 1);
    name.length = static_cast<uint16_t>(text.size() + 1);
}

}  // namespace

FakeReplicatedList::FakeReplicatedList(Journal& theJournal) : Fake(theJournal, Topic::List)
{
}

const ZorvMwSpiReplicatedList_1T* FakeReplicatedList::table()
{
    return &theTable;
}

// --- For the test

void FakeReplicatedList::plant(const std::string& list, const std::string& data, uint32_t itemSize)
{
    const std::lock_guard<std::mutex> lock(mutex);
    List& place = lists.emplace(list, List{itemSize, {}}).first->second;
    append(place, data);
}

void FakeReplicatedList::append(List& list, const std::string& data)
{
    const uint64_t age = ++lastAge;
    std::string item = data;
    item.resize(list.itemSize);
    list.items[age] = {"item" + std::to_string(age), item};
}

bool FakeReplicatedList::exists(const std::string& list) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return lists.count(list) != 0;
}

std::vector<std::string> FakeReplicatedList::items(const std::string& list) const
{
    std::vector<std::string> texts = bytes(list);
    for (std::string& text : texts) {
        text.resize(std::min(text.find('\0'), text.size()));
    }
    return texts;
}

std::vector<std::string> FakeReplicatedList::bytes(const std::string& list) const
{
    return collect(list, &Item::data);
}

std::vector<std::string> FakeReplicatedList::names(const std::string& list) const
{
    return collect(list, &Item::name);
}

std::vector<std::string> FakeReplicatedList::collect(const std::string& list, std::string Item::*part) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::vector<std::string> all;
    if (const auto found = lists.find(list); found != lists.end()) {
        for (const auto& [age, item] : found->second.items) {
            all.push_back(item.*part);
        }
    }
    return all;
}

unsigned FakeReplicatedList::opened() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return openedCount;
}

unsigned FakeReplicatedList::finalized() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return finalizedCount;
}

// --- Behind the table

template <class OperationT>
int32_t FakeReplicatedList::onList(const std::string& call, const ZorvMwSpiListNameT* list, OperationT operation)
{
    return answer(call, [&](std::string& outcome) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto found = lists.find(textOf(list));
        return found == lists.end() ? ZORV_RETURN_NOT_FOUND : operation(found->second, outcome);
    });
}

template <class OperationT>
int32_t FakeReplicatedList::onItem(const std::string& operationName, const ZorvMwSpiListNameT* list,
                                   const ZorvMwSpiListNameT* itemName, OperationT operation)
{
    const std::string name = textOf(itemName);
    return onList(operationName + " " + textOf(list) + " " + name, list, [&](List& place, std::string&) -> int32_t {
        const auto found = std::find_if(place.items.begin(), place.items.end(),
                                        [&](const auto& entry) { return entry.second.name == name; });
        if (found == place.items.end()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        operation(place, found);
        return ZORV_RETURN_OK;
    });
}

int32_t FakeReplicatedList::listCreate(const ZorvMwSpiListNameT* list, uint32_t itemSize)
{
    const std::string name = textOf(list);
    return answer("listCreate " + name + " " + std::to_string(itemSize), [&](std::string&) -> int32_t {
        if (name.empty() || itemSize == 0) {
            return ZORV_RETURN_FAILED;
        }
        const std::lock_guard<std::mutex> lock(mutex);
        return lists.emplace(name, List{itemSize, {}}).second ? ZORV_RETURN_OK : ZORV_RETURN_EXISTS;
    });
}

int32_t FakeReplicatedList::listDelete(const ZorvMwSpiListNameT* list)
{
    return answer("listDelete " + textOf(list), [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        for (auto& [number, iteration] : iterations) {
            iteration.ended = iteration.ended || iteration.list == textOf(list);
        }
        return lists.erase(textOf(list)) != 0 ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
    });
}

int32_t FakeReplicatedList::listAttach(const ZorvMwSpiListNameT* list)
{
    return onList("listAttach " + textOf(list), list, [](List&, std::string&) { return ZORV_RETURN_OK; });
}

int32_t FakeReplicatedList::listIsEmpty(const ZorvMwSpiListNameT* list, bool* isEmpty)
{
    return onList("listIsEmpty " + textOf(list), list, [&](List& place, std::string& outcome) {
        *isEmpty = place.items.empty();
        outcome = *isEmpty ? "true" : "false";
        return ZORV_RETURN_OK;
    });
}

int32_t FakeReplicatedList::listGetFrontRef(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref)
{
    return onList("listGetFrontRef " + textOf(list), list, [&](List& place, std::string&) {
        ++openedCount;
        *ref = nullptr;
        if (!place.items.empty()) {
            *ref = toReference(++lastReference);
            iterations[lastReference] = {textOf(list), place.items.begin()->first, false};
        }
        return ZORV_RETURN_OK;
    });
}

int32_t FakeReplicatedList::listPushBack(const ZorvMwSpiListNameT* list, ZorvMwSpiListNameT* itemName, const void* data)
{
    return onList("listPushBack " + textOf(list), list, [&](List& place, std::string&) {
        append(place, std::string(static_cast<const char*>(data), place.itemSize));
        fill(*itemName, place.items.rbegin()->second.name);
        return ZORV_RETURN_OK;
    });
}

int32_t FakeReplicatedList::listEraseItem(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName)
{
    return onItem("listEraseItem", list, itemName, [](List& place, auto found) { place.items.erase(found); });
}

int32_t FakeReplicatedList::listGetNextItemFront(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref,
                                                 ZorvMwSpiListNameT* itemName, void* data)
{
    const std::string name = textOf(list);
    return answer("listGetNextItemFront " + name, [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto iteration = iterations.find(toNumber(*ref));
        if (iteration == iterations.end() || iteration->second.list != name || iteration->second.ended) {
            return ZORV_RETURN_NOT_FOUND;
        }
        auto& items = lists[name].items;
        const auto item = items.lower_bound(iteration->second.next);
        if (item == items.end()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        fill(*itemName, item->second.name);
        std::memcpy(data, item->second.data.data(), item->second.data.size());
        const auto next = std::next(item);
        if (next == items.end()) {
            iterations.erase(iteration);
            *ref = nullptr;
        } else {
            iteration->second.next = next->first;
        }
        return ZORV_RETURN_OK;
    });
}

int32_t FakeReplicatedList::listGetFinalize(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT ref)
{
    const std::string name = textOf(list);
    return answer("listGetFinalize " + name, [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        if (ref) {
            const auto iteration = iterations.find(toNumber(ref));
            if (iteration == iterations.end() || iteration->second.list != name) {
                return ZORV_RETURN_FAILED;
            }
            iterations.erase(iteration);
        }
        ++finalizedCount;
        return ZORV_RETURN_OK;
    });
}

int32_t FakeReplicatedList::listReplaceItem(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName,
                                            const void* data)
{
    return onItem("listReplaceItem", list, itemName, [&](List& place, auto found) {
        found->second.data.assign(static_cast<const char*>(data), place.itemSize);
    });
}

}  // namespace ZorvFakes
