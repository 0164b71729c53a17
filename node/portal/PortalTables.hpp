/// The portal as C tables: the accessor that libraries are given, and the portals of versions "1" and "3" behind it.
#pragma once

#include "ZorvMgmtSpiPortalAccessor_1.h"
#include "portal/InterfacePortal.hpp"
#include "services/TableBinding.hpp"

namespace ZorvNode {

class PortalTables : TableBinding<InterfacePortal> {
public:
    explicit PortalTables(InterfacePortal& portal) : TableBinding(portal) {}

    static const ZorvMgmtSpiPortalAccessor_1T* accessor();
};

}  // namespace ZorvNode
