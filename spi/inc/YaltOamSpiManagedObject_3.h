/**
 * Managed objects, version "3": reading and writing the instances of the management information model.
 *
 * Offered by "ZorvOamSpiCmRouterService" as interface "ZorvOamSpiManagedObject" to every client, for all classes; and as
 * "YaltOamSpiManagedObject" by each component that implements a class, to the router, for that class. Same table.
 *
 * A distinguished name (DN) is a comma-separated list of "Class=value" from the root down.
 *
 * Threads:   callable from any thread, for several transactions at once; the calls of one transaction come one by one.
 * Ownership: names and values given are copied. Results are the callee's: a name from nextMo lives until the
 *            transaction ends; an attribute result until its release callback or the end of the transaction, whichever
 *            comes first. The caller calls the release callback exactly once for every 0.
 * Failure:   0 done, -1 refused or failed, -2 not found, no value or end of an iteration, -3 exists. Never throws.
 *            After a failure the results are not to be read or released.
 */
#ifndef YALT_OAM_SPI_MANAGED_OBJECT_3_H
#define YALT_OAM_SPI_MANAGED_OBJECT_3_H

#include <stdbool.h>
#include <stdint.h>

#include "ZorvReturn.h"

typedef enum YaltOamSpiMoAttributeType_3 {
    YALT_MO_ATTRIBUTE_INT8 = 0,
    YALT_MO_ATTRIBUTE_INT16 = 1,
    YALT_MO_ATTRIBUTE_INT32 = 2,
    YALT_MO_ATTRIBUTE_INT64 = 3,
    YALT_MO_ATTRIBUTE_UINT64 = 4,
    YALT_MO_ATTRIBUTE_UINT8 = 5,
    YALT_MO_ATTRIBUTE_UINT16 = 6,
    YALT_MO_ATTRIBUTE_UINT32 = 7,
    YALT_MO_ATTRIBUTE_BOOL = 8,
    YALT_MO_ATTRIBUTE_STRING = 9,
    YALT_MO_ATTRIBUTE_REFERENCE = 10, /**< a DN */
    YALT_MO_ATTRIBUTE_STRUCT = 11,
    YALT_MO_ATTRIBUTE_ENUM = 12
} YaltOamSpiMoAttributeType_3;

struct YaltOamSpiMoStruct_3T;

/** One value; the attribute's type tells which member is set. */
typedef union YaltOamSpiMoAttributeValue_3T {
    int64_t                             intValue;    /**< INT8 to INT64, sign-extended */
    uint64_t                            uintValue;   /**< UINT8 to UINT64, zero-extended */
    bool                                boolValue;   /**< BOOL */
    int32_t                             enumValue;   /**< ENUM */
    const char*                         stringValue; /**< STRING, REFERENCE; never null */
    const struct YaltOamSpiMoStruct_3T* structValue; /**< STRUCT; never null */
} YaltOamSpiMoAttributeValue_3T;

/** A typed attribute value: none (count 0), one, or a sequence. */
typedef struct YaltOamSpiMoAttribute_3T {
    int32_t                              type;           /**< YaltOamSpiMoAttributeType_3 */
    uint32_t                             numberOfValues; /**< 0: the attribute has no value */
    const YaltOamSpiMoAttributeValue_3T* values;         /**< null when there are none */
} YaltOamSpiMoAttribute_3T;

typedef struct YaltOamSpiMoNamedAttribute_3T {
    const char*              name;
    YaltOamSpiMoAttribute_3T attribute;
} YaltOamSpiMoNamedAttribute_3T;

/** A structure value: its members in the order of the model. */
typedef struct YaltOamSpiMoStruct_3T {
    uint32_t                             numberOfMembers;
    const YaltOamSpiMoNamedAttribute_3T* members;
} YaltOamSpiMoStruct_3T;

/** Result of getMoAttribute. */
typedef struct YaltOamSpiMoAttributeResult_3T {
    const YaltOamSpiMoAttribute_3T* attribute;
    YaltReturnT (*releaseAttrResultCB)(struct YaltOamSpiMoAttributeResult_3T* result);
} YaltOamSpiMoAttributeResult_3T;

/** Result of getMoAttributes: one attribute for each name asked, in that order. */
typedef struct YaltOamSpiMoAttributesResult_3T {
    uint32_t                        numberOfAttributes;
    const YaltOamSpiMoAttribute_3T* attributes;
    YaltReturnT (*releaseAttributesResultCB)(struct YaltOamSpiMoAttributesResult_3T* result);
} YaltOamSpiMoAttributesResult_3T;

/** Frozen: never reorder, retype or append; a change is a new header with a _4T table. */
typedef struct YaltOamSpiManagedObject_3T {
    /** Opens an iteration over the children of one class. parentDn "" is the root. -1: not a class of this provider. */
    YaltReturnT (*newMoIterator)(unsigned long txHandle, const char* parentDn, const char* className,
                                 uint64_t* iteratorId);

    /** The next instance's name: its last "Class=value". -2: no more instances, or no such iterator. */
    YaltReturnT (*nextMo)(uint64_t iteratorId, const char** name);

    /** Closes an iteration. */
    YaltReturnT (*finalizeMoIterator)(uint64_t iteratorId);

    YaltReturnT (*existsMo)(unsigned long txHandle, const char* dn, bool* exists);

    /** Number of direct children of one class. */
    YaltReturnT (*countMoChildren)(unsigned long txHandle, const char* dn, const char* className, uint64_t* count);

    YaltReturnT (*getMoAttribute)(unsigned long txHandle, const char* dn, const char* attributeName,
                                  YaltOamSpiMoAttributeResult_3T* result);

    /** names: null-terminated array. Stops at the first failure and answers with its code. */
    YaltReturnT (*getMoAttributes)(unsigned long txHandle, const char* dn, const char* const* attributeNames,
                                   YaltOamSpiMoAttributesResult_3T* results);

    /** -1: read-only, wrong type or value out of range; -2: no such object or attribute. */
    YaltReturnT (*setMoAttribute)(unsigned long txHandle, const char* dn, const char* attributeName,
                                  const YaltOamSpiMoAttribute_3T* attribute);

    /** Creates an instance under parentDn, with initial values. -3: it exists. */
    YaltReturnT (*createMo)(unsigned long txHandle, const char* parentDn, const char* className, const char* keyValue,
                            const YaltOamSpiMoNamedAttribute_3T* attributes, uint32_t numberOfAttributes);

    /** Deletes an instance with all its children. -2: no such object. */
    YaltReturnT (*deleteMo)(unsigned long txHandle, const char* dn);

    /** Runs an action of the object. -2: it has no such action. */
    YaltReturnT (*action)(unsigned long txHandle, const char* dn, const char* actionName,
                          const YaltOamSpiMoNamedAttribute_3T* parameters, uint32_t numberOfParameters,
                          YaltOamSpiMoAttributeResult_3T* result);
} YaltOamSpiManagedObject_3T;

/** The first framework knows the same table under its own name. */
typedef YaltOamSpiManagedObject_3T ZorvOamSpiManagedObject_3T;

#endif
