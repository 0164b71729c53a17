#include "stores/FailureReport.hpp"

#include <utility>

#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

FailureReport::FailureReport(LogSinkT logSink, std::string operation, std::chrono::milliseconds calm)
    : log(std::move(logSink)),
      what(std::move(operation)),
      calmTime(calm)
{
}

void FailureReport::failed(const std::string& reason)
{
    const std::lock_guard<std::mutex> lock(mutex);
    lastFailed = ClockT::now();
    if (!failing) {
        failing = true;
        log(ZORV_LOG_ERROR, what + " fails: " + reason);
    }
}

void FailureReport::worked()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (failing && ClockT::now() - lastFailed >= calmTime) {
        failing = false;
        log(ZORV_LOG_NOTICE, what + " works again");
    }
}

bool FailureReport::isFailing() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return failing;
}

}  // namespace ZorvNode
