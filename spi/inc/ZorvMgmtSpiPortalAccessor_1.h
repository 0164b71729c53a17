/**
 * Portal accessor: the one thing that the life-cycle manager hands to a library; everything else is found through it.
 *
 * Threads:   callable from any thread.
 * Ownership: accessor and portals are the middleware's; they outlive the loaded library.
 * Failure:   null; never throws.
 */
#ifndef ZORV_MGMT_SPI_PORTAL_ACCESSOR_1_H
#define ZORV_MGMT_SPI_PORTAL_ACCESSOR_1_H

/** Frozen: never reorder, retype or append. */
typedef struct ZorvMgmtSpiPortalAccessor_1T {
    /** "1" gives a ZorvMgmtSpiPortal_1T, "3" a ZorvMgmtSpiPortal_3T; any other version, or null, gives null. */
    const void* (*getPortal)(const char* version);
} ZorvMgmtSpiPortalAccessor_1T;

#endif
