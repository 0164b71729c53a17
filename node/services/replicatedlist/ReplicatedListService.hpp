/// Replicated lists over a storage: names, and iterations that stay valid whatever happens to the items.
///
/// An item is named "item-<number>". An iteration remembers the number of its next item and looks it up again at each step,
/// so an erased item is passed over. It is known by a reference that is never used again, and it is gone at its end already:
/// the reference is then null.
///
/// Threads:   any.
/// Ownership: the storage outlives the service.
/// Failure:   the return codes of ZorvMwSpiReplicatedList_1T; what a storage throws goes through.
#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <optional>

#include "ZorvMwSpiReplicatedList_1.h"
#include "stores/ListStorage.hpp"

namespace ZorvNode {

class ReplicatedListService {
public:
    static constexpr std::size_t iterationBound = 10000;

    explicit ReplicatedListService(ListStorage& listStorage) : storage(listStorage) {}

    ZorvReturnT create(const ZorvMwSpiListNameT& list, std::uint32_t itemSize);
    ZorvReturnT remove(const ZorvMwSpiListNameT& list);
    ZorvReturnT attach(const ZorvMwSpiListNameT& list);
    ZorvReturnT isEmpty(const ZorvMwSpiListNameT& list, bool& empty);
    ZorvReturnT getFrontRef(const ZorvMwSpiListNameT& list, ZorvMwSpiListRefT& ref);
    ZorvReturnT pushBack(const ZorvMwSpiListNameT& list, ZorvMwSpiListNameT& itemName, const void* data);
    ZorvReturnT eraseItem(const ZorvMwSpiListNameT& list, const ZorvMwSpiListNameT& itemName);
    ZorvReturnT getNextItem(const ZorvMwSpiListNameT& list, ZorvMwSpiListRefT& ref, ZorvMwSpiListNameT& itemName,
                            void* data);
    ZorvReturnT finalize(const ZorvMwSpiListNameT& list, ZorvMwSpiListRefT ref);
    ZorvReturnT replaceItem(const ZorvMwSpiListNameT& list, const ZorvMwSpiListNameT& itemName, const void* data);

    /// Grows with every operation that changes a list.
    std::uint64_t getNumberOfChanges() const { return numberOfChanges; }

private:
    struct Iteration {
        std::string list;
        std::uint64_t listIdentity = 0;
        std::uint64_t nextNumber = 0;
    };

    std::optional<Iteration> find(std::string_view list, ZorvMwSpiListRefT ref);
    ZorvReturnT step(Iteration& iteration, ZorvMwSpiListNameT& itemName, void* data, bool& more);
    ZorvReturnT counted(ZorvReturnT result);

    ListStorage& storage;
    std::atomic<std::uint64_t> numberOfChanges{0};
    std::mutex mutex;
    std::map<ZorvMwSpiListRefT, Iteration> iterations;  // guarded by mutex
    std::uintptr_t lastReference = 0;                   // guarded by mutex
};

}  // namespace ZorvNode
