/// One replicated list of the middleware, by name.
///
/// Threads:   any.
/// Ownership: the service is the middleware's.
/// Failure:   return codes of the service. A missing service is a failing list: every operation answers -1.
#pragma once

#include <cstdint>

#include "ZorvMwSpiReplicatedList_1.h"

namespace ZorvFm {

class ReplicatedList {
public:
    /// @param listName at most 255 characters.
    explicit ReplicatedList(const char* listName);

    /// Finds the service.
    void open();

    /// Takes the service that another list has found.
    void openLike(const ReplicatedList& other) { service = other.service; }

    const char* getName() const { return name.value; }

    ZorvReturnT create(std::uint32_t itemSize) const;
    ZorvReturnT remove() const;
    ZorvReturnT attach() const;

    /// Presets the answer.
    ZorvReturnT isEmpty(bool& answer, bool preset) const;

    ZorvReturnT getFrontRef(ZorvMwSpiListRefT& ref) const;
    ZorvReturnT getNext(ZorvMwSpiListRefT& ref, ZorvMwSpiListNameT& itemName, void* data) const;
    ZorvReturnT finalize(ZorvMwSpiListRefT ref) const;

    ZorvReturnT pushBack(ZorvMwSpiListNameT& itemName, const void* data) const;
    ZorvReturnT replace(const ZorvMwSpiListNameT& itemName, const void* data) const;
    ZorvReturnT erase(const ZorvMwSpiListNameT& itemName) const;

private:
    ZorvMwSpiListNameT name{};
    const ZorvMwSpiReplicatedList_1T* service = nullptr;  // not owned; null until open, and without the service
};

}  // namespace ZorvFm
