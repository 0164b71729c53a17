/**
 * Interface portal, version "1": where components register and find the interfaces of others.
 *
 * Threads:   callable from any thread.
 * Ownership: a registered descriptor stays the component's; a found interface stays its provider's.
 * Failure:   return codes; never throws.
 */
#ifndef ZORV_MGMT_SPI_PORTAL_1_H
#define ZORV_MGMT_SPI_PORTAL_1_H

#include "ZorvMgmtSpiComponent_1.h"
#include "ZorvReturn.h"

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct ZorvMgmtSpiPortal_1T {
    /** 0 registered, -1 refused (a null or incomplete descriptor), -3 a component of that name is registered. */
    ZorvReturnT (*registerComponent)(const ZorvMgmtSpiComponent_1T* component);

    /** 0 unregistered, -2 this descriptor is not registered. */
    ZorvReturnT (*unregisterComponent)(const ZorvMgmtSpiComponent_1T* component);

    /**
     * Finds an interface. A null component name matches every provider, a null version matches the only one.
     * 0 and the function table in *interfaceTable; -2 nobody provides it (*interfaceTable is then null).
     */
    ZorvReturnT (*getInterface)(const char* componentName, const char* interfaceName, const char* interfaceVersion,
                                const void** interfaceTable);
} ZorvMgmtSpiPortal_1T;

#endif
