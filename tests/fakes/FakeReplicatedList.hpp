/// Replicated lists in memory, with the semantics of the published interface.
///
/// The lists live as long as this object, so a component that is stopped and started again finds its items.
/// Items are named "item1", "item2", ... in the order of arrival, over all lists.
///
/// Entries: the operation, the list, the item or size where there is one, the code:
/// "listCreate FmStatusSection 40 -> 0", "listIsEmpty FmStatusSection -> 0 true", "listPushBack FmStatusSection -> 0",
/// "listReplaceItem FmStatusSection item1 -> 0", "listGetNextItemFront FmStatusSection -> 0".
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Fake.hpp"
#include "ZorvMwSpiReplicatedList_1.h"

namespace ZorvFakes {

class FakeReplicatedList : public Fake<FakeReplicatedList> {
public:
    explicit FakeReplicatedList(Journal& journal);

    static const ZorvMwSpiReplicatedList_1T* table();

    /// Appends an item without any call; a missing list is created with that item size. Data is cut or zero-filled.
    void plant(const std::string& list, const std::string& data, uint32_t itemSize = 1000);

    bool exists(const std::string& list) const;

    /// Data of the items up to the first zero byte, in list order.
    std::vector<std::string> items(const std::string& list) const;

    /// Data of the items with all their bytes, in list order.
    std::vector<std::string> bytes(const std::string& list) const;

    std::vector<std::string> names(const std::string& list) const;

    /// Iterations opened and closed by successful calls; equal when the user closed all of them.
    unsigned opened() const;
    unsigned finalized() const;

    // The operations behind the table.
    int32_t listCreate(const ZorvMwSpiListNameT* list, uint32_t itemSize);
    int32_t listDelete(const ZorvMwSpiListNameT* list);
    int32_t listAttach(const ZorvMwSpiListNameT* list);
    int32_t listIsEmpty(const ZorvMwSpiListNameT* list, bool* isEmpty);
    int32_t listGetFrontRef(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref);
    int32_t listPushBack(const ZorvMwSpiListNameT* list, ZorvMwSpiListNameT* itemName, const void* data);
    int32_t listEraseItem(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName);
    int32_t listGetNextItemFront(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref, ZorvMwSpiListNameT* itemName,
                                 void* data);
    int32_t listGetFinalize(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT ref);
    int32_t listReplaceItem(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName, const void* data);

private:
    struct Item {
        std::string name;
        std::string data;
    };

    struct List {
        uint32_t itemSize = 0;
        std::map<uint64_t, Item> items;  // by age
    };

    struct Iteration {
        std::string list;
        uint64_t next;  // the age from which the next item is looked for
        bool ended;     // its list was deleted
    };

    template <class OperationT>
    int32_t onList(const std::string& call, const ZorvMwSpiListNameT* list, OperationT operation);

    template <class OperationT>
    int32_t onItem(const std::string& operationName, const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName,
                   OperationT operation);

    void append(List& list, const std::string& data);

    std::vector<std::string> collect(const std::string& list, std::string Item::*part) const;

    mutable std::mutex mutex;
    std::map<std::string, List> lists;  // guarded by mutex, as all below
    std::map<uintptr_t, Iteration> iterations;
    uint64_t lastAge = 0;
    uintptr_t lastReference = 0;
    unsigned openedCount = 0;
    unsigned finalizedCount = 0;
};

}  // namespace ZorvFakes
