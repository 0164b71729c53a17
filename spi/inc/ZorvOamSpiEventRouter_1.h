/**
 * Event router: carries events from producers to consumers, by event type.
 * Interface "ZorvOamSpiEventRouter", version "1", provided by component "ZorvOamSpiEventService".
 *
 * The router knows no event's content. A producer announces the event types it sends; for each subscription to one of
 * them the router tells it consumer and filter (evtProdAddFilter), and the producer decides, event by event, which
 * consumers to notify. The router queues each notified value for its consumer, calls that consumer from a thread of its
 * own, and hands the value back to its producer exactly once (evtProdDoneWithValue), delivered or not.
 *
 * Threads:   every operation is callable from any thread, from inside callbacks too, and none of them waits for a
 *            callback to return: the caller may hold a lock that the callback wants. Callbacks arrive on threads of the
 *            router or of whoever caused them; the router holds no lock while it calls. After unregisterConsumer no
 *            new callback of that consumer begins, but one that is running runs on; after unregisterProducer the
 *            values that are being delivered at that moment are still handed back. The middleware unloads a library
 *            only when none of its callbacks runs or is owed.
 * Ownership: descriptors, names and filters given to the router are copied, except filter arrays handed to producers,
 *            which stay valid until the matching evtProdRemoveFilter or evtProdClearAll has returned. A notified value
 *            stays the producer's; the router holds it until evtProdDoneWithValue.
 * Failure:   0 done, -1 refused or failed, -2 not found, -3 exists, -10 no resources. Never throws.
 */
#ifndef ZORV_OAM_SPI_EVENT_ROUTER_1_H
#define ZORV_OAM_SPI_EVENT_ROUTER_1_H

#include <stdint.h>

#include "YaltNameValuePair.h"
#include "ZorvReturn.h"

/** A producer's callbacks; the router copies the table. */
typedef struct ZorvOamSpiEventProducer_1T {
    /** A consumer subscribed to eventType. 0 accepted; -1 refused: the consumer gets nothing from this producer. */
    ZorvReturnT (*evtProdAddFilter)(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);

    /** A subscription ended. Comes once for each accepted evtProdAddFilter that no evtProdClearAll took back. */
    ZorvReturnT (*evtProdRemoveFilter)(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);

    /** All subscriptions ended (the router shuts down). */
    ZorvReturnT (*evtProdClearAll)(void);

    /** The router no longer needs a value that it accepted; once for each accepted notify. */
    ZorvReturnT (*evtProdDoneWithValue)(const char* eventType, void* value);
} ZorvOamSpiEventProducer_1T;

/** A consumer: its identity, filled in at registration, and its callback. */
typedef struct ZorvOamSpiEventConsumer_1T {
    unsigned long consumerId; /**< out: assigned by registerConsumer; never 0 */

    /**
     * One event. value is valid only during the call. Calls for one consumer come one at a time, in the order in which
     * they were notified. The result is counted, not acted upon.
     */
    ZorvReturnT (*notifyCallback)(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter,
                                  void* value);
} ZorvOamSpiEventConsumer_1T;

/** Frozen: never reorder, retype or append; a change is a new header with a _2T table. */
typedef struct ZorvOamSpiEventRouter_1T {
    /** 0 and a handle, never 0; -1 an incomplete table. */
    ZorvReturnT (*registerProducer)(const ZorvOamSpiEventProducer_1T* producer, uint32_t* producerHandle);

    /**
     * Announces an event type; existing subscriptions to it are told through evtProdAddFilter before the call returns.
     * -2 no such producer, -3 announced already.
     */
    ZorvReturnT (*addEventType)(uint32_t producerHandle, const char* eventType);

    /**
     * Queues value for one consumer. filter is what evtProdAddFilter gave; it is passed on to the consumer. Never waits
     * for the consumer. 0 queued; -2 no such producer or consumer; -10 the consumer's queue is full (counted). Only
     * after 0 the router owes an evtProdDoneWithValue.
     */
    ZorvReturnT (*notify)(uint32_t producerHandle, unsigned long consumerId, const char* eventType,
                          YaltNameValuePair** filter, void* value);

    /** Takes an event type back. No evtProdRemoveFilter follows for it. -2 not announced. */
    ZorvReturnT (*removeEventType)(uint32_t producerHandle, const char* eventType);

    /** Ends a producer. Its values still queued are dropped and handed back before the call returns. -2 no such producer. */
    ZorvReturnT (*unregisterProducer)(uint32_t producerHandle, const ZorvOamSpiEventProducer_1T* producer);

    /** 0 and consumer->consumerId filled in; -1 no callback; -10 too many consumers. */
    ZorvReturnT (*registerConsumer)(ZorvOamSpiEventConsumer_1T* consumer);

    /** Subscribes to an event type. filter: null-terminated array, or null. -2 no such consumer. */
    ZorvReturnT (*addSubscription)(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);

    /** Ends the subscription with the same event type and equal filter. -2 no such subscription. */
    ZorvReturnT (*removeSubscription)(unsigned long consumerId, const char* eventType, YaltNameValuePair** filter);

    /** Ends a consumer with all its subscriptions; values still queued for it are handed back. -2 no such consumer. */
    ZorvReturnT (*unregisterConsumer)(unsigned long consumerId);
} ZorvOamSpiEventRouter_1T;

#endif
