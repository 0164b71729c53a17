/// Keeps what a part of the node tells, as "level text" lines.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "LogSink.hpp"

namespace ZorvNode {

class LogRecorder {
public:
    LogSinkT sink()
    {
        return [this](std::int32_t level, const std::string& text) {
            const std::lock_guard<std::mutex> lock(mutex);
            written.push_back(std::to_string(level) + " " + text);
        };
    }

    std::vector<std::string> lines()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return written;
    }

private:
    std::mutex mutex;
    std::vector<std::string> written;
};

}  // namespace ZorvNode
