/**
 * Entry points that a component library exports, with unmangled names.
 *
 * Threads:   the life-cycle manager calls both from one thread: zorvLCMinit once after loading, zorvLCMterminate once
 *            before unloading, never while one of the library's components is started.
 * Ownership: accessor outlives the library; config is copied or used up before zorvLCMinit returns.
 * Failure:   return codes; never throws.
 */
#ifndef ZORV_MGMT_SPI_LIBRARY_1_H
#define ZORV_MGMT_SPI_LIBRARY_1_H

#include "ZorvMgmtSpiPortalAccessor_1.h"
#include "ZorvReturn.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Registers the library's components. config names its configuration file. 0 ready, -1 failed (reason logged). */
ZorvReturnT zorvLCMinit(const ZorvMgmtSpiPortalAccessor_1T* accessor, const char* config);

/** Takes the library's components back from the portal. 0 done. */
ZorvReturnT zorvLCMterminate(void);

#ifdef __cplusplus
}
#endif

typedef ZorvReturnT (*ZorvLcmInitT)(const ZorvMgmtSpiPortalAccessor_1T* accessor, const char* config);
typedef ZorvReturnT (*ZorvLcmTerminateT)(void);

#endif
