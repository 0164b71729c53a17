/// A consumer that keeps what it makes of each event.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "services/eventrouter/EventRouter.hpp"

namespace ZorvNode {

class RecordingConsumer : public RouterConsumer {
public:
    using ReaderT = std::function<std::string(const std::string& eventType, const void* value)>;

    explicit RecordingConsumer(ReaderT eventReader) : reader(std::move(eventReader)) {}

    ZorvReturnT onEvent(unsigned long, const char* eventType, YaltNameValuePair**, void* value) override
    {
        const std::string made = reader(eventType, value);
        const std::lock_guard<std::mutex> lock(mutex);
        seen.push_back(made);
        return ZORV_RETURN_OK;
    }

    /// Everything so far, when the router has delivered all.
    std::vector<std::string> events(EventRouter& router)
    {
        router.waitUntilIdle(std::chrono::seconds(10));
        const std::lock_guard<std::mutex> lock(mutex);
        return seen;
    }

private:
    const ReaderT reader;
    std::mutex mutex;
    std::vector<std::string> seen;
};

}  // namespace ZorvNode
