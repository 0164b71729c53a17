/**
 * Replicated lists: ordered lists of fixed-size items that survive restarts and fail-overs of their users.
 * Interface "ZorvMwSpiReplicatedList", version "1", provided by any component.
 *
 * Threads:   callable from any thread; never calls back.
 * Ownership: the callee copies what it is given before it returns; an iteration belongs to whoever opened it.
 * Failure:   0 done, -1 refused or failed, -2 not found or end, -3 exists, -10 no resources. Never throws.
 *            A failed operation has changed nothing.
 */
#ifndef ZORV_MW_SPI_REPLICATED_LIST_1_H
#define ZORV_MW_SPI_REPLICATED_LIST_1_H

#include <stdbool.h>
#include <stdint.h>

#include "ZorvReturn.h"

#define ZORV_LIST_NAME_SIZE 256

/** List or item name, copied whole. length counts the final zero; 0 means "no name yet". */
typedef struct ZorvMwSpiListNameT {
    uint16_t length;
    char     value[ZORV_LIST_NAME_SIZE];
} ZorvMwSpiListNameT;

/** An open iteration. Opaque: points at the item that the next call returns; null after the last one. */
typedef struct ZorvMwSpiListRef* ZorvMwSpiListRefT;

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct ZorvMwSpiReplicatedList_1T {
    /** Creates a list whose items all have itemSize bytes (at least 1). -3: it exists, and keeps its items. */
    ZorvReturnT (*listCreate)(const ZorvMwSpiListNameT* list, uint32_t itemSize);

    /** Removes a list with all its items. -2: no such list. Open iterations end, and still want their finalize. */
    ZorvReturnT (*listDelete)(const ZorvMwSpiListNameT* list);

    /** Announces a further user of an existing list. No effect on its content. -2: no such list. */
    ZorvReturnT (*listAttach)(const ZorvMwSpiListNameT* list);

    /** Fills *isEmpty, which the caller has preset. -2: no such list; *isEmpty is left as it was. */
    ZorvReturnT (*listIsEmpty)(const ZorvMwSpiListNameT* list, bool* isEmpty);

    /**
     * Opens an iteration at the front. 0 and a reference, null when the list is empty; -2: no such list.
     * Every 0 is answered with exactly one listGetFinalize, after a failing walk too.
     */
    ZorvReturnT (*listGetFrontRef)(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref);

    /** Appends an item of the list's size and fills its name. -2: no such list, -10: the list is full. */
    ZorvReturnT (*listPushBack)(const ZorvMwSpiListNameT* list, ZorvMwSpiListNameT* itemName, const void* data);

    /** Removes one item. -2: no such list or item. */
    ZorvReturnT (*listEraseItem)(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName);

    /**
     * Copies name and data (the list's item size) of the item at *ref and moves *ref on. Items appended meanwhile may
     * or may not be met; erased ones are not. -2: nothing at *ref; -1: the walk cannot go on.
     */
    ZorvReturnT (*listGetNextItemFront)(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT* ref,
                                        ZorvMwSpiListNameT* itemName, void* data);

    /** Closes an iteration. Accepts null. -1: not an open iteration of this list. */
    ZorvReturnT (*listGetFinalize)(const ZorvMwSpiListNameT* list, ZorvMwSpiListRefT ref);

    /** Replaces the data of one item; its place in the list stays. -2: no such list or item. */
    ZorvReturnT (*listReplaceItem)(const ZorvMwSpiListNameT* list, const ZorvMwSpiListNameT* itemName,
                                   const void* data);
} ZorvMwSpiReplicatedList_1T;

#endif
