/* The header from C: an alarm raised with one call. Called by EntryPointsTest. */
#include "zorv_client.h"

#include <stddef.h>

ZorvClientResultT raiseFromC(const char* socketPath, uint64_t* sent);

ZorvClientResultT raiseFromC(const char* socketPath, uint64_t* sent)
{
    const ZorvClientOptionsT options = {.socketPath = socketPath};
    const ZorvClientInfoT info[] = {{"interface", "eth4"}};
    const ZorvClientNotificationT linkDown = {
        .dn = "Equipment=1,Slot=2,Port=4",
        .majorType = 32473,
        .minorType = 9,
        .severity = ZORV_CLIENT_MAJOR,
        .additionalText = "no light",
        .info = info,
        .infoCount = 1,
        .eventTime = 5,
    };
    ZorvClientT* client = NULL;
    ZorvClientCountersT counters;
    ZorvClientResultT result = zorvClientOpen(&options, &client);
    if (result == ZORV_CLIENT_OK) {
        result = zorvClientRaise(client, &linkDown);
    }
    if (result == ZORV_CLIENT_OK) {
        result = zorvClientFlush(client, 10000);
    }
    if (result == ZORV_CLIENT_OK) {
        result = zorvClientCounters(client, &counters);
        *sent = counters.sent;
    }
    zorvClientClose(client, 0);
    return result;
}
