/// The event router as the C table ZorvOamSpiEventRouter_1T.
#pragma once

#include "ZorvOamSpiEventRouter_1.h"
#include "services/TableBinding.hpp"
#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

class EventRouterTable : TableBinding<EventRouter> {
public:
    explicit EventRouterTable(EventRouter& router) : TableBinding(router) {}

    static const ZorvOamSpiEventRouter_1T* table();
};

}  // namespace ZorvNode
