/**
 * Raise and clear alarms from an application.
 *
 *     ZorvClientT* client = NULL;
 *     zorvClientOpen(NULL, &client);
 *     const ZorvClientNotificationT linkDown = {
 *         .dn = "Equipment=1,Slot=2,Port=4", .majorType = 32473, .minorType = 9, .severity = ZORV_CLIENT_MAJOR};
 *     zorvClientRaise(client, &linkDown);
 *     zorvClientClose(client, 2000);
 *
 * A call checks its arguments, takes the time, puts the notification into a bounded queue and returns; it never waits
 * for the node, which may be absent. One thread for each client, started by the first notification, sends what is
 * queued in the order of the calls, up to 100 notifications or 256 KiB in one request, one request at a time. It
 * connects when there is something to send and lets go when there is not. Without a connection, or when the node has no
 * room, it tries again after 50 ms, then after twice as long each time, at most 5 s.
 *
 * What is delivered: a notification leaves the queue only when the node has answered for it. When the connection is lost
 * before the answer (or there is none within 10 s), the same request is sent again, with the original times and under the
 * same name, by which the node knows whether it has taken it already. So each notification is taken exactly once, in the
 * order of the calls, also when the node is killed and started again in between.
 *
 * Threads:   every function from any thread, also several at once, but not from a signal handler. zorvClientClose is the
 *            last call on a client. Threads of the library have all signals blocked; no SIGPIPE is raised.
 * Fork:      a child may go on with the client: it has an empty queue, counters at zero, and a connection and a thread of
 *            its own. What the parent has queued is the parent's and sent by it alone. A child that replaces itself
 *            with another program takes nothing along.
 * Ownership: arguments are copied before a function returns. Whatever zorvClientOpen gave, zorvClientClose takes back:
 *            all clients before the library is unloaded. A process may end with open ones; what they have queued is lost.
 * Failure:   a ZorvClientResultT; nothing is thrown, and nothing but the queue and the counters has changed.
 * Units:     event times are nanoseconds since 1970-01-01 UTC, time-outs are milliseconds, lengths are bytes.
 * Texts:     UTF-8, ended by a zero.
 *
 * Frozen: structures are never reordered or extended; what is new comes as a new function. C11 and C++17.
 */
#ifndef ZORV_CLIENT_H
#define ZORV_CLIENT_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Where the node listens when neither the options nor the environment name a socket. */
#define ZORV_CLIENT_DEFAULT_SOCKET "/run/zorv/zorvd.sock"
/** The environment variable that names it. */
#define ZORV_CLIENT_SOCKET_VARIABLE "ZORV_SOCKET"

/** The longest texts, without the zero at the end, and the most pairs of additional information. */
#define ZORV_CLIENT_MAX_DN 1024
#define ZORV_CLIENT_MAX_TEXT 4096
#define ZORV_CLIENT_MAX_INFO_NAME 256
#define ZORV_CLIENT_MAX_INFO_VALUE 4096
#define ZORV_CLIENT_MAX_INFO 64

#define ZORV_CLIENT_DEFAULT_QUEUE_CAPACITY 1000
#define ZORV_CLIENT_MIN_QUEUE_CAPACITY 2
#define ZORV_CLIENT_MAX_QUEUE_CAPACITY 1000000

/** How a call went. */
typedef int32_t ZorvClientResultT;

enum {
    ZORV_CLIENT_OK = 0,
    ZORV_CLIENT_BAD_ARGUMENT = -1, /**< a null pointer, or a number out of its range */
    ZORV_CLIENT_BAD_TEXT = -2,     /**< a text is missing or is not UTF-8 */
    ZORV_CLIENT_TOO_LONG = -3,     /**< a text, or the additional information, is longer than allowed */
    ZORV_CLIENT_BAD_SEVERITY = -4, /**< not one of INDETERMINATE to CRITICAL */
    ZORV_CLIENT_QUEUE_FULL = -5,   /**< the queue has no place, or is being closed: not taken, counted as dropped */
    ZORV_CLIENT_TIMEOUT = -6,      /**< not all was answered in time */
    ZORV_CLIENT_NO_RESOURCES = -7, /**< no memory or no thread; the notification was not taken */
    ZORV_CLIENT_WRONG_THREAD = -8  /**< not from the outcome callback */
};

/** Perceived severity, ITU-T X.733. */
typedef int32_t ZorvClientSeverityT;

enum {
    ZORV_CLIENT_CLEARED = 0,
    ZORV_CLIENT_INDETERMINATE = 1,
    ZORV_CLIENT_WARNING = 2,
    ZORV_CLIENT_MINOR = 3,
    ZORV_CLIENT_MAJOR = 4,
    ZORV_CLIENT_CRITICAL = 5
};

/** What became of a notification that was taken. */
typedef int32_t ZorvClientOutcomeKindT;

enum {
    ZORV_CLIENT_SENT = 0,     /**< the node has taken it */
    ZORV_CLIENT_REJECTED = 1, /**< the node has refused it; it is not sent again */
    ZORV_CLIENT_ABANDONED = 2 /**< zorvClientClose gave it up; the node may or may not have got it */
};

/** One pair of additional information. Neither text is null. */
typedef struct ZorvClientInfoT {
    const char* name;
    const char* value;
} ZorvClientInfoT;

/** One notification. A member that is not set is 0. */
typedef struct ZorvClientNotificationT {
    const char* dn; /**< alarming resource, not empty; for a clear also a regular expression over DNs */
    uint32_t majorType;
    uint32_t minorType;
    int32_t severity;            /**< a clear does not look at it */
    uint32_t infoCount;          /**< entries of info */
    const char* additionalText;  /**< null: none */
    const ZorvClientInfoT* info; /**< additional information, sent in this order; null when infoCount is 0 */
    uint64_t eventTime;          /**< 0: the time of the call */
    void* context;               /**< given back with the outcome, never followed */
} ZorvClientNotificationT;

/** The outcome of one notification. The texts live until the callback returns. */
typedef struct ZorvClientOutcomeT {
    int32_t kind;             /**< ZorvClientOutcomeKindT */
    void* context;            /**< from the notification */
    const char* notification; /**< as it was sent, JSON */
    const char* field;        /**< what the node found wrong, for example "raise.dn"; "" when it names none */
    const char* reason;       /**< why it was rejected, one line for people; "" otherwise */
} ZorvClientOutcomeT;

/**
 * Tells an outcome: exactly one for each notification that was taken, in the order of the calls.
 *
 * Runs in the client's own thread, one at a time; nothing is sent meanwhile, so it returns soon. It may raise, clear,
 * alert and read the counters, but neither flush nor close. It must not throw, nor end the thread, nor fork other than
 * to run another program. A fork in another thread may come while it runs: a lock that it holds stays locked in the
 * child, whose own outcomes wait for it then.
 */
typedef void (*ZorvClientOutcomeCallbackT)(const ZorvClientOutcomeT* outcome, void* callbackContext);

/** How a client works. All members 0 is the default. */
typedef struct ZorvClientOptionsT {
    const char* socketPath;             /**< null: ZORV_SOCKET from the environment; without it, the default */
    uint32_t queueCapacity;             /**< notifications without an answer; 0: the default */
    uint32_t reserved;                  /**< 0 */
    ZorvClientOutcomeCallbackT outcome; /**< null: nobody wants to know */
    void* callbackContext;
} ZorvClientOptionsT;

/** Since the client was opened, or since the fork in a child. */
typedef struct ZorvClientCountersT {
    uint64_t queued;        /**< waiting now, the request on its way included */
    uint64_t sent;          /**< taken by the node */
    uint64_t rejected;      /**< refused by the node */
    uint64_t dropped;       /**< calls answered with ZORV_CLIENT_QUEUE_FULL */
    uint64_t droppedClears; /**< the clears among them */
    uint64_t resent;        /**< notifications sent again, each time counted */
} ZorvClientCountersT;

/** A client. */
typedef struct ZorvClientT ZorvClientT;

/**
 * Makes a client. Neither connects nor starts a thread.
 * @param options null for the default ones.
 * @param client receives the client, or null.
 */
ZorvClientResultT zorvClientOpen(const ZorvClientOptionsT* options, ZorvClientT** client);

/**
 * Queues an alarm, a clear of alarms, an event that nobody clears.
 *
 * Raises and alerts are refused while less than a tenth of the queue (at least one place) is free: it is kept for
 * clears, so that an alarm that reached the node does not stand there for ever because of the ones that did not. A clear
 * is refused only when the queue is full to the last place. Either way the newest call is the one refused.
 */
ZorvClientResultT zorvClientRaise(ZorvClientT* client, const ZorvClientNotificationT* notification);
ZorvClientResultT zorvClientClear(ZorvClientT* client, const ZorvClientNotificationT* notification);
ZorvClientResultT zorvClientAlert(ZorvClientT* client, const ZorvClientNotificationT* notification);

/**
 * Waits until all that was queued before the call has an answer, and its outcomes have been told. Cuts the current wait
 * between two tries short.
 * @param timeoutMs 0 only looks.
 */
ZorvClientResultT zorvClientFlush(ZorvClientT* client, uint32_t timeoutMs);

/** Reads the counters, all at one moment. */
ZorvClientResultT zorvClientCounters(ZorvClientT* client, ZorvClientCountersT* counters);

/**
 * Flushes, gives up what has no answer then, ends the thread and frees the client.
 * @param client null does nothing.
 * @return ZORV_CLIENT_TIMEOUT when notifications were given up. Only with ZORV_CLIENT_WRONG_THREAD the client lives on.
 */
ZorvClientResultT zorvClientClose(ZorvClientT* client, uint32_t timeoutMs);

/** A few words for people. Never null. */
const char* zorvClientResultText(ZorvClientResultT result);

#ifdef __cplusplus
}
#endif

#endif
