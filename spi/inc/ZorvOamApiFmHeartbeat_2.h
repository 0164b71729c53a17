/**
 * Northbound heartbeat, version 2: the last sequence numbers, so that a consumer can tell silence from loss.
 *
 * Ownership: the value belongs to its producer and is valid only during the consumer's callback.
 */
#ifndef ZORV_OAM_API_FM_HEARTBEAT_2_H
#define ZORV_OAM_API_FM_HEARTBEAT_2_H

#include <stdint.h>

#define ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_2 "ZorvOamApiFmHeartbeatEventType_2"

/** Frozen: never reorder, retype or append; a change is a new header. Times are ns since 1970-01-01 UTC; 0: none yet. */
typedef struct ZorvOamApiFmHeartbeatEventValue_2 {
    uint64_t lastStatefulTimestamp;
    uint64_t lastStatefulSeqNo;
    uint64_t lastStatelessTimestamp;
    uint64_t lastStatelessSeqNo;
} ZorvOamApiFmHeartbeatEventValue_2;

#endif
