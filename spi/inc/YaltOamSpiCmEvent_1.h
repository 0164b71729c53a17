/**
 * Configuration-change event: what one committed transaction changed.
 *
 * Filter: any number of regular expressions (POSIX extended, searched unanchored) over distinguished names; a change is
 * sent when its DN matches one of them, and an event carries only the changes that match.
 * The value is valid only during the consumer's callback.
 */
#ifndef YALT_OAM_SPI_CM_EVENT_1_H
#define YALT_OAM_SPI_CM_EVENT_1_H

#include <stdint.h>

#define YALT_OAM_SPI_CM_EVENT_NOTIFICATION_1 "YaltOamSpiCmEvent_Notification_1"
#define YALT_OAM_SPI_CM_EVENT_FILTER_TYPE_REG_EXP_1 "YaltOamSpiCmEvent_FilterTypeRegExp_1"

typedef enum YaltOamSpiCmEvent_ChangeTypeT {
    YALT_CM_EVENT_MO_CREATED = 1,
    YALT_CM_EVENT_MO_DELETED = 2,
    YALT_CM_EVENT_ATTRIBUTES_CHANGED = 3
} YaltOamSpiCmEvent_ChangeTypeT;

/** One changed managed object. */
typedef struct YaltOamSpiCmEvent_Change_1T {
    int32_t            changeType;         /**< YaltOamSpiCmEvent_ChangeTypeT */
    const char*        dn;                 /**< never null */
    const char* const* attributeNames;     /**< changed attributes; null when there are none */
    uint32_t           numberOfAttributes; /**< entries in attributeNames */
} YaltOamSpiCmEvent_Change_1T;

/** Frozen: never reorder, retype or append; a change is a new header with a _2T structure. */
typedef struct YaltOamSpiCmEvent_Notification_1T {
    unsigned long                      txHandle; /**< the transaction that was committed; 0: the model was reread */
    const YaltOamSpiCmEvent_Change_1T* changes;
    uint32_t                           numberOfChanges;
} YaltOamSpiCmEvent_Notification_1T;

#endif
