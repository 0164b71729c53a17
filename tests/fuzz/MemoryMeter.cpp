#include "MemoryMeter.hpp"

#include <malloc.h>

#include <atomic>
#include <cerrno>

#include "FuzzTarget.hpp"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZORV_SANITIZERS_ALLOCATOR 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZORV_SANITIZERS_ALLOCATOR 1
#endif

namespace {

std::atomic<bool> counting{false};
std::atomic<long> taken{0};  // bytes, since the counting began; what was there before can go meanwhile
std::atomic<long> peak{0};

void countAllocation(std::size_t size)
{
    if (!counting) {
        return;
    }
    const long now = taken += static_cast<long>(size);
    for (long highest = peak; now > highest && !peak.compare_exchange_weak(highest, now);) {}
}

void countRelease(std::size_t size)
{
    if (counting) {
        taken -= static_cast<long>(size);
    }
}

}  // namespace

#ifdef ZORV_SANITIZERS_ALLOCATOR

// The sanitizer's allocator tells of each allocation. Not every compiler brings the header for it.

extern "C" {

int __sanitizer_install_malloc_and_free_hooks(void (*onAllocation)(const volatile void* memory, std::size_t size),
                                              void (*onRelease)(const volatile void* memory));
std::size_t __sanitizer_get_allocated_size(const volatile void* memory);

}  // extern "C"

namespace {

void onAllocation(const volatile void*, std::size_t size)
{
    countAllocation(size);
}

void onRelease(const volatile void* memory)
{
    if (counting && memory != nullptr) {
        countRelease(__sanitizer_get_allocated_size(memory));
    }
}

constexpr bool inPlace = false;
const bool isInstalled = __sanitizer_install_malloc_and_free_hooks(&onAllocation, &onRelease) > 0;

}  // namespace

#else

// The C library's functions under their other names; everything in the process finds these here first.

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);

static void* counted(void* memory)
{
    countAllocation(memory != nullptr ? malloc_usable_size(memory) : 0);
    return memory;
}

void* malloc(std::size_t size)
{
    return counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size)
{
    return counted(__libc_calloc(count, size));
}

void* realloc(void* memory, std::size_t size)
{
    countRelease(memory != nullptr ? malloc_usable_size(memory) : 0);
    return counted(__libc_realloc(memory, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    *memory = counted(__libc_memalign(alignment, size));
    return *memory != nullptr ? 0 : ENOMEM;
}

void free(void* memory)
{
    countRelease(memory != nullptr ? malloc_usable_size(memory) : 0);
    __libc_free(memory);
}

}  // extern "C"

namespace {

constexpr bool inPlace = true;
const bool isInstalled = true;

}  // namespace

#endif

namespace ZorvFuzz {

MemoryMeter::MemoryMeter()
{
    require(isInstalled, "allocations can be counted");
    taken = 0;
    peak = 0;
    counting = true;
}

MemoryMeter::~MemoryMeter()
{
    counting = false;
}

std::size_t MemoryMeter::getPeak() const
{
    return static_cast<std::size_t>(peak);
}

bool MemoryMeter::doBlocksGrowInPlace()
{
    return inPlace;
}

}  // namespace ZorvFuzz
