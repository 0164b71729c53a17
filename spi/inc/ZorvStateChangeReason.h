/**
 * Why the middleware starts or stops a component.
 */
#ifndef ZORV_STATE_CHANGE_REASON_H
#define ZORV_STATE_CHANGE_REASON_H

typedef enum ZorvStateChangeReason {
    ZORV_STATE_CHANGE_ACTIVATE = 1,   /**< ordinary start */
    ZORV_STATE_CHANGE_DEACTIVATE = 2, /**< ordinary stop */
    ZORV_STATE_CHANGE_FAIL_OVER = 3,  /**< the active node failed; its standby starts */
    ZORV_STATE_CHANGE_SWITCH_OVER = 4 /**< active and standby change places on request */
} ZorvStateChangeReason;

typedef ZorvStateChangeReason YaltStateChangeReason;

#endif
