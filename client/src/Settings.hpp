/// What one client works with. Applications choose path and capacity; the tests choose the times too.
#pragma once

#include "zorv_client.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace ZorvClient {

struct Settings {
    std::string socketPath = ZORV_CLIENT_DEFAULT_SOCKET;
    std::size_t queueCapacity = ZORV_CLIENT_DEFAULT_QUEUE_CAPACITY;
    std::size_t batchLimit = 100;
    std::size_t batchBytes = std::size_t{256} * 1024;
    std::chrono::milliseconds shortestWait{50};
    std::chrono::milliseconds longestWait{5000};
    std::chrono::milliseconds answerTimeout{10000};
    ZorvClientOutcomeCallbackT outcome = nullptr;
    void* callbackContext = nullptr;
};

}  // namespace ZorvClient
