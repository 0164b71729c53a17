/**
 * Interface portal, version "3": registration for components of both frameworks.
 *
 * Threads:   callable from any thread.
 * Ownership: a registered descriptor stays the component's; a found interface stays its provider's.
 * Failure:   return codes; never throws.
 */
#ifndef ZORV_MGMT_SPI_PORTAL_3_H
#define ZORV_MGMT_SPI_PORTAL_3_H

#include "ZorvMgmtSpiComponent_1.h"
#include "ZorvReturn.h"

/** Frozen: never reorder, retype or append; a change is a new header with a _4T table. */
typedef struct ZorvMgmtSpiPortal_3T {
    /** 0 registered, -1 refused (a null or incomplete descriptor), -3 a component of that name is registered. */
    YaltReturnT (*registerComponent)(const YaltMgmtSpiComponent_1T* component);

    /** 0 unregistered, -2 this descriptor is not registered. */
    YaltReturnT (*unregisterComponent)(const YaltMgmtSpiComponent_1T* component);

    /** As in version "1". */
    YaltReturnT (*getInterface)(const char* componentName, const char* interfaceName, const char* interfaceVersion,
                                const void** interfaceTable);
} ZorvMgmtSpiPortal_3T;

#endif
