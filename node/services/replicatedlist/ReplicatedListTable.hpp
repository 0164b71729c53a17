/// The replicated lists as the C table ZorvMwSpiReplicatedList_1T.
#pragma once

#include "services/TableBinding.hpp"
#include "services/replicatedlist/ReplicatedListService.hpp"

namespace ZorvNode {

class ReplicatedListTable : TableBinding<ReplicatedListService> {
public:
    explicit ReplicatedListTable(ReplicatedListService& lists) : TableBinding(lists) {}

    static const ZorvMwSpiReplicatedList_1T* table();
};

}  // namespace ZorvNode
