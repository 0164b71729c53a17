/**
 * Northbound heartbeat, version 3: the last sequence numbers, so that a consumer can tell silence from loss.
 *
 * Ownership: the value belongs to its producer and is valid only during the consumer's callback.
 */
#ifndef ZORV_OAM_API_FM_HEARTBEAT_3_H
#define ZORV_OAM_API_FM_HEARTBEAT_3_H

#include <stdint.h>

#define ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3 "ZorvOamApiFmHeartbeatEventType_3"

/** Frozen: never reorder, retype or append; a change is a new header. Times are ns since 1970-01-01 UTC; 0: none yet. */
typedef struct ZorvOamApiFmHeartbeatEventValue_3 {
    uint64_t lastStatefulTimestamp;
    uint64_t lastStatefulSeqNo;
    uint64_t lastStatelessTimestamp;
    uint64_t lastStatelessSeqNo;
} ZorvOamApiFmHeartbeatEventValue_3;

#endif
