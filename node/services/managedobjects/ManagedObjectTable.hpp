/// The managed objects as the C table YaltOamSpiManagedObject_3T.
#pragma once

#include "services/TableBinding.hpp"
#include "services/managedobjects/ManagedObjectService.hpp"

namespace ZorvNode {

class ManagedObjectTable : TableBinding<ManagedObjectService> {
public:
    explicit ManagedObjectTable(ManagedObjectService& objects) : TableBinding(objects) {}

    static const YaltOamSpiManagedObject_3T* table();
};

}  // namespace ZorvNode
