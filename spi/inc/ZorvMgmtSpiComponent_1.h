/**
 * Component descriptor: how a component shows itself to the middleware. Interface "ZorvMgmtSpiComponent", version "1".
 *
 * Threads:   the middleware calls start, stop and getInterface of one component one at a time, from any of its threads.
 * Ownership: the descriptor and all it points to belong to the component and stay valid while it is registered.
 * Failure:   no operation throws across this border.
 */
#ifndef ZORV_MGMT_SPI_COMPONENT_1_H
#define ZORV_MGMT_SPI_COMPONENT_1_H

#include "ZorvMgmtSpiInterface_1.h"
#include "ZorvReturn.h"
#include "ZorvStateChangeReason.h"

/** Frozen: never reorder, retype or append; a change is a new header. */
typedef struct ZorvMgmtSpiComponent_1T {
    const char*                          componentName;
    const ZorvMgmtSpiInterface_1* const* offeredInterfaces;  /**< null-terminated array; never null itself */
    const ZorvMgmtSpiInterface_1* const* requiredInterfaces; /**< null-terminated array; never null itself */
    const ZorvMgmtSpiInterface_1* const* optionalInterfaces; /**< null-terminated array; never null itself */

    /** Takes up work. 0 started, -1 refused or failed. */
    ZorvReturnT (*start)(ZorvStateChangeReason reason);

    /** Ends work; returns when none of the component's threads runs any more. 0 stopped. */
    ZorvReturnT (*stop)(ZorvStateChangeReason reason);

    /** The function table of an offered interface, valid while the component is registered; null if it has none. */
    const void* (*getInterface)(const ZorvMgmtSpiInterface_1* identity);
} ZorvMgmtSpiComponent_1T;

/** The second framework knows the same descriptor under its own name. */
typedef ZorvMgmtSpiComponent_1T YaltMgmtSpiComponent_1T;

#endif
