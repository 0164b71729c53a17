/**
 * Return codes of every interface between the middleware and its components.
 *
 * One meaning each, for both frameworks. An operation that documents no other code answers one of these.
 */
#ifndef ZORV_RETURN_H
#define ZORV_RETURN_H

#include <stdint.h>

typedef int32_t ZorvReturnT;
typedef int32_t YaltReturnT;

enum {
    ZORV_RETURN_OK = 0,            /**< done */
    ZORV_RETURN_FAILED = -1,       /**< refused or failed */
    ZORV_RETURN_NOT_FOUND = -2,    /**< not found, no value, or end of an iteration */
    ZORV_RETURN_EXISTS = -3,       /**< exists already */
    ZORV_RETURN_NO_RESOURCES = -10 /**< a limit of the provider was reached; nothing was changed */
};

#endif
