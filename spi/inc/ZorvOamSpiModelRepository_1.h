/**
 * Model repository: the classes of the management information model and their attributes.
 * Interface "ZorvOamSpiModelRepository", version "1", of component "ZorvOamSpiModelRepositoryService".
 *
 * Threads:   callable from any thread.
 * Ownership: the descriptions are the repository's and stay valid and unchanged for the life of the process.
 * Failure:   return codes; never throws.
 */
#ifndef ZORV_OAM_SPI_MODEL_REPOSITORY_1_H
#define ZORV_OAM_SPI_MODEL_REPOSITORY_1_H

#include <stdbool.h>
#include <stdint.h>

#include "ZorvReturn.h"

/** An attribute of a class. */
typedef struct ZorvOamSpiModelAttribute_1T {
    const char* name;
    int32_t     type;       /**< YaltOamSpiMoAttributeType_3 */
    bool        isSequence; /**< may hold more than one value */
    bool        isReadOnly; /**< set by the system only */
} ZorvOamSpiModelAttribute_1T;

/** A class of managed objects. */
typedef struct ZorvOamSpiModelClass_1T {
    const char*                        name;
    const char* const*                 childClasses; /**< names of the classes contained in it */
    uint32_t                           numberOfChildClasses;
    const ZorvOamSpiModelAttribute_1T* attributes;
    uint32_t                           numberOfAttributes;
} ZorvOamSpiModelClass_1T;

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct ZorvOamSpiModelRepository_1T {
    /** The description of a class; "" describes the root above all objects. -2 no such class. */
    ZorvReturnT (*getClass)(const char* className, const ZorvOamSpiModelClass_1T** description);
} ZorvOamSpiModelRepository_1T;

#endif
