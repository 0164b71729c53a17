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
    if (!isFailing) {
        isFailing = true;
        log(ZORV_LOG_ERROR, what + " fails: " + reason);
    }
}

void FailureReport::worked()
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (isFailing && ClockT::now() - lastFailed >= calmTime) {
        isFailing = false;
        log(ZORV_LOG_NOTICE, what + " works again");
    }
}

}  // namespace ZorvNode
