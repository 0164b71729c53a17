#include "stores/FailureReport.hpp"

#include <utility>

#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

using LockT = std::lock_guard<std::mutex>;

FailureReport::FailureReport(LogSinkT logSink, std::string operation, std::chrono::milliseconds calm)
    : log(std::move(logSink)),
      what(std::move(operation)),
      calmTime(calm)
{
}

void FailureReport::failed(const std::string& reason)
{
    const LockT lock(mutex);
    lastFailed = ClockT::now();
    if (!std::exchange(failing, true)) {
        log(ZORV_LOG_ERROR, what + " fails: " + reason);
        if (notice) {
            notice();
        }
    }
}

void FailureReport::worked()
{
    const LockT lock(mutex);
    if (failing && ClockT::now() - lastFailed >= calmTime) {
        failing = false;
        log(ZORV_LOG_NOTICE, what + " works again");
    }
}

bool FailureReport::isFailing() const
{
    const LockT lock(mutex);
    return failing;
}

void FailureReport::whenFailing(std::function<void()> call)
{
    const LockT lock(mutex);
    notice = std::move(call);
}

}  // namespace ZorvNode
