/// What this process holds at present.
#pragma once

#include <malloc.h>

#include <cstddef>
#include <filesystem>
#include <iterator>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZORV_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZORV_SANITIZED 1
#endif
#endif

#ifdef ZORV_SANITIZED
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace ZorvTest {

/// Bytes that were allocated and not freed.
inline std::size_t allocatedBytes()
{
#ifdef ZORV_SANITIZED
    return __sanitizer_get_current_allocated_bytes();
#else
    const auto figures = mallinfo2();
    return figures.uordblks + figures.hblkhd;
#endif
}

inline std::size_t numberOfEntries(const std::filesystem::path& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

inline std::size_t openDescriptors()
{
    return numberOfEntries("/proc/self/fd");
}

inline std::size_t runningThreads()
{
    return numberOfEntries("/proc/self/task");
}

/// Bytes of the files in a folder.
inline std::size_t bytesIn(const std::filesystem::path& folder)
{
    std::size_t bytes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        bytes += entry.is_regular_file() ? entry.file_size() : 0;
    }
    return bytes;
}

}  // namespace ZorvTest
