/// The process-wide logging wrapper: log lines with a level, traces with a source location.
///
/// Arguments of a line are evaluated only when its level is admitted; a line that nobody wants costs one atomic load.
///
/// Threads:   any.
/// Ownership: the services are the middleware's.
/// Failure:   never throws; a line that cannot be written is lost. Before open, and when the middleware has no log, log
///            lines go to standard error, so that the reason for a failed start is seen; traces are dropped.
#pragma once

#include <cstdint>

#include "YaltMwSpiTrace_1.h"
#include "ZorvMwSpiLog_1.h"

namespace Zorv {

class Portal;

class Logging {
public:
    /// Finds log and trace services and the level of the trace group, which all traces of this library belong to.
    static void open(const Portal& portal, const char* traceGroup);

    /// Back to standard error.
    static void close();

    static bool logAdmits(std::int32_t level) noexcept;
    static bool traceAdmits(std::int32_t level) noexcept;

    static void log(std::int32_t level, const char* format, ...) noexcept __attribute__((format(printf, 2, 3)));
    static void trace(std::int32_t level, const char* file, std::uint32_t line, const char* function,
                      const char* format, ...) noexcept __attribute__((format(printf, 5, 6)));

    Logging() = delete;
};

}  // namespace Zorv

#define ZORV_LOG(level, ...)                          \
    do {                                              \
        if (::Zorv::Logging::logAdmits(level)) {      \
            ::Zorv::Logging::log(level, __VA_ARGS__); \
        }                                             \
    } while (false)

#define ZORV_TRACE_AT(level, ...)                                                     \
    do {                                                                              \
        if (::Zorv::Logging::traceAdmits(level)) {                                    \
            ::Zorv::Logging::trace(level, __FILE__, __LINE__, __func__, __VA_ARGS__); \
        }                                                                             \
    } while (false)

#define ZORV_LOG_AND_TRACE(level, ...)     \
    do {                                   \
        ZORV_LOG(level, __VA_ARGS__);      \
        ZORV_TRACE_AT(level, __VA_ARGS__); \
    } while (false)

#define ZORV_ERROR(...) ZORV_LOG(ZORV_LOG_ERROR, __VA_ARGS__)
#define ZORV_WARNING(...) ZORV_LOG(ZORV_LOG_WARNING, __VA_ARGS__)
#define ZORV_NOTICE(...) ZORV_LOG(ZORV_LOG_NOTICE, __VA_ARGS__)
#define ZORV_INFORMATION(...) ZORV_LOG(ZORV_LOG_INFORMATION, __VA_ARGS__)
#define ZORV_TRACE(...) ZORV_TRACE_AT(YALT_TRACE_DETAILED, __VA_ARGS__)
