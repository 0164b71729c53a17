#include "Logging.hpp"

#include <atomic>
#include <cstdio>
#include <exception>
#include <string>

#include "Format.hpp"
#include "Portal.hpp"

namespace Zorv {
namespace {

constexpr std::int32_t levelWithoutLog = ZORV_LOG_NOTICE;

std::atomic<const ZorvMwSpiLog_1T*> logSpi{nullptr};
std::atomic<const std::int32_t*> logLevel{nullptr};
std::atomic<const YaltMwSpiTrace_1T*> traceSpi{nullptr};
std::atomic<const std::int32_t*> traceLevel{nullptr};
std::atomic<const char*> group{""};

/// The level stands in the middleware's memory and may change at any time.
std::int32_t present(const std::int32_t* level) noexcept
{
    return __atomic_load_n(level, __ATOMIC_RELAXED);
}

void openLog(const Portal& portal)
{
    const auto* service = portal.get<ZorvMwSpiLog_1T>(nullptr, "ZorvMwSpiLog", "1");
    const std::int32_t* level = nullptr;
    if (service != nullptr && service->getLevel(ZORV_LOG_SYSTEM, &level) == ZORV_RETURN_OK) {
        logLevel = level;
        logSpi = service;
    }
}

void openTrace(const Portal& portal, const char* traceGroup)
{
    const auto* service = portal.get<YaltMwSpiTrace_1T>(nullptr, "YaltMwSpiTrace", nullptr);
    const std::int32_t* level = nullptr;
    if (service != nullptr && service->getLevel(traceGroup, &level) == ZORV_RETURN_OK) {
        group = traceGroup;
        traceSpi = service;
        traceLevel = level;
    }
}

void writeLog(std::int32_t level, const std::string& text)
{
    if (const ZorvMwSpiLog_1T* service = logSpi) {
        service->write(ZORV_LOG_SYSTEM, level, text.c_str());
    } else {
        std::fprintf(stderr, "zorv: %s\n", text.c_str());
    }
}

}  // namespace

void Logging::open(const Portal& portal, const char* traceGroup)
{
    close();
    openLog(portal);
    openTrace(portal, traceGroup);
}

void Logging::close()
{
    traceLevel = nullptr;
    traceSpi = nullptr;
    logSpi = nullptr;
    logLevel = nullptr;
}

bool Logging::logAdmits(std::int32_t level) noexcept
{
    const std::int32_t* admitted = logLevel.load(std::memory_order_acquire);
    return level <= (admitted == nullptr ? levelWithoutLog : present(admitted));
}

bool Logging::traceAdmits(std::int32_t level) noexcept
{
    const std::int32_t* admitted = traceLevel.load(std::memory_order_acquire);
    return admitted != nullptr && level <= present(admitted);
}

void Logging::log(std::int32_t level, const char* format, ...) noexcept
{
    va_list arguments;
    va_start(arguments, format);
    try {
        writeLog(level, formatText(format, arguments));
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zorv: log line lost: %s\n", e.what());
    }
    va_end(arguments);
}

void Logging::trace(std::int32_t level, const char* file, std::uint32_t line, const char* function, const char* format,
                    ...) noexcept
{
    const YaltMwSpiTrace_1T* service = traceSpi;
    if (service == nullptr) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    try {
        service->write(group, level, file, line, function, formatText(format, arguments).c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zorv: trace lost: %s\n", e.what());
    }
    va_end(arguments);
}

}  // namespace Zorv
