/// Where consumers and producers find the event router; asked for at each use, because the router may come and go.
#pragma once

#include "Portal.hpp"
#include "ZorvOamSpiEventRouter_1.h"

namespace Zorv {

/// Null when the middleware has no router at present.
inline const ZorvOamSpiEventRouter_1T* findEventRouter(const Portal& portal)
{
    return portal.get<ZorvOamSpiEventRouter_1T>("ZorvOamSpiEventService", "ZorvOamSpiEventRouter", "1");
}

}  // namespace Zorv
