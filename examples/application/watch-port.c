/*
 * An application in C: the agent of a port that loses its signal, gets it back, and restarts its card in between.
 *
 *     watch-port [SOCKET]
 *
 * Ends with 0 when the node has taken everything.
 */
#include "zorv_client.h"

#include <stdio.h>
#include <stdlib.h>

/* Alarm types have two numbers: whose type it is, and which. 32473 is reserved for examples; take your company's. */
#define MAJOR_TYPE 32473
#define LOSS_OF_SIGNAL 101
#define LINE_CARD_RESTARTED 215

#define LONGEST_WAIT_MS 5000

/* Runs in the client's thread, once for each notification, as soon as the node has answered. */
static void tellOutcome(const ZorvClientOutcomeT* outcome, void* callbackContext)
{
    const char* const what = outcome->context;
    (void)callbackContext;
    if (outcome->kind == ZORV_CLIENT_SENT) {
        printf("%s: taken by the node\n", what);
    } else if (outcome->kind == ZORV_CLIENT_REJECTED) {
        printf("%s: rejected, %s: %s\n", what, outcome->field, outcome->reason);
    } else {
        printf("%s: given up\n", what);
    }
}

/* A call only queues; whether the node is there does not matter to it. */
static int queued(const char* what, ZorvClientResultT result)
{
    if (result != ZORV_CLIENT_OK) {
        fprintf(stderr, "%s: %s\n", what, zorvClientResultText(result));
    }
    return result == ZORV_CLIENT_OK;
}

static int loseAndRegainSignal(ZorvClientT* client)
{
    const ZorvClientInfoT info[] = {{"receivedPower", "-40 dBm"}, {"wavelength", "1310 nm"}};
    ZorvClientNotificationT signal = {
        .dn = "ManagedElement=1,Slot=2,Port=4",
        .majorType = MAJOR_TYPE,
        .minorType = LOSS_OF_SIGNAL,
        .severity = ZORV_CLIENT_MAJOR,
        .additionalText = "no light at the receiver",
        .info = info,
        .infoCount = 2,
        .context = "raise",
    };
    const ZorvClientNotificationT restart = {
        .dn = "ManagedElement=1,Slot=2",
        .majorType = MAJOR_TYPE,
        .minorType = LINE_CARD_RESTARTED,
        .severity = ZORV_CLIENT_WARNING,
        .additionalText = "restarted by its watchdog",
        .context = "alert",
    };
    int allQueued = queued("raise", zorvClientRaise(client, &signal));
    allQueued &= queued("alert", zorvClientAlert(client, &restart));

    /* The same resource and type end what they have begun. */
    signal.context = "clear";
    allQueued &= queued("clear", zorvClientClear(client, &signal));
    return allQueued;
}

int main(int argumentCount, char** arguments)
{
    /* Without a path the client takes the one of ZORV_SOCKET, or that of the node that runs as a service. */
    const ZorvClientOptionsT options = {
        .socketPath = argumentCount > 1 ? arguments[1] : NULL,
        .outcome = tellOutcome,
    };
    ZorvClientT* client = NULL;
    ZorvClientCountersT counters = {0};
    if (!queued("open", zorvClientOpen(&options, &client))) {
        return EXIT_FAILURE;
    }
    const int allQueued = loseAndRegainSignal(client);

    /* A program that goes on for long needs no flush; one that ends soon waits here for the answers. */
    const ZorvClientResultT flushed = zorvClientFlush(client, LONGEST_WAIT_MS);
    if (flushed != ZORV_CLIENT_OK) {
        fprintf(stderr, "flush: %s\n", zorvClientResultText(flushed));
    }
    zorvClientCounters(client, &counters);
    printf("sent %llu, rejected %llu\n", (unsigned long long)counters.sent, (unsigned long long)counters.rejected);
    zorvClientClose(client, 0);
    return allQueued && flushed == ZORV_CLIENT_OK && counters.rejected == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
