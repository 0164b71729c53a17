#include "Options.hpp"

#include <sys/un.h>

#include <cstdlib>

namespace ZorvClient {

namespace {

/// A privileged program is not told by its user's environment where to connect.
const char* pathFromEnvironment()
{
    const char* path = ::secure_getenv(ZORV_CLIENT_SOCKET_VARIABLE);
    return path != nullptr && *path != '\0' ? path : ZORV_CLIENT_DEFAULT_SOCKET;
}

bool isCapacity(std::uint32_t capacity)
{
    return capacity >= ZORV_CLIENT_MIN_QUEUE_CAPACITY && capacity <= ZORV_CLIENT_MAX_QUEUE_CAPACITY;
}

}  // namespace

ZorvClientResultT readOptions(const ZorvClientOptionsT* options, Settings& settings)
{
    const ZorvClientOptionsT given = options != nullptr ? *options : ZorvClientOptionsT{};
    if (given.reserved != 0 || (given.queueCapacity != 0 && !isCapacity(given.queueCapacity))) {
        return ZORV_CLIENT_BAD_ARGUMENT;
    }
    settings.socketPath = given.socketPath != nullptr ? given.socketPath : pathFromEnvironment();
    if (settings.socketPath.empty()) {
        return ZORV_CLIENT_BAD_TEXT;
    }
    if (settings.socketPath.size() >= sizeof(sockaddr_un::sun_path)) {
        return ZORV_CLIENT_TOO_LONG;
    }
    if (given.queueCapacity != 0) {
        settings.queueCapacity = given.queueCapacity;
    }
    settings.outcome = given.outcome;
    settings.callbackContext = given.callbackContext;
    return ZORV_CLIENT_OK;
}

}  // namespace ZorvClient
