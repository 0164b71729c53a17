#include "AutoMemory.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace Zorv {
namespace {

constexpr std::size_t alignment = alignof(std::max_align_t);
constexpr std::size_t largestShared = 1024;    // bytes; what is larger has a block of its own
constexpr std::size_t smallestBlock = 1024;    // bytes
constexpr std::size_t largestBlock = 1 << 16;  // bytes

}  // namespace

AutoMemory::~AutoMemory()
{
    free();
}

void AutoMemory::free()
{
    for (auto owned = objects.rbegin(); owned != objects.rend(); ++owned) {
        owned->destroy(owned->object);
    }
    objects.clear();
    for (void* block : blocks) {
        std::free(block);
    }
    blocks.clear();
    place = nullptr;
    room = 0;
    blockSize = 0;
}

char* AutoMemory::strdup(const std::string& text)
{
    const std::size_t length = std::strlen(text.c_str());
    return static_cast<char*>(std::memcpy(takeRoom(length + 1), text.c_str(), length + 1));
}

void* AutoMemory::allocate(std::size_t count, std::size_t size)
{
    const std::size_t bytes = __builtin_mul_overflow(count, size, &size) ? SIZE_MAX : size;
    return std::memset(takeRoom(bytes), 0, bytes);
}

void* AutoMemory::takeRoom(std::size_t size)
{
    if (size > largestShared) {
        return newBlock(size);
    }
    const std::size_t needed = (std::max<std::size_t>(size, 1) + alignment - 1) / alignment * alignment;
    if (needed > room) {
        blockSize = std::clamp(2 * blockSize, smallestBlock, largestBlock);
        place = static_cast<char*>(newBlock(blockSize));
        room = blockSize;
    }
    room -= needed;
    return std::exchange(place, place + needed);
}

void* AutoMemory::newBlock(std::size_t size)
{
    blocks.push_back(nullptr);  // first, so that a block is never without an owner
    blocks.back() = std::malloc(size);
    if (blocks.back() == nullptr) {
        blocks.pop_back();
        throw std::bad_alloc();
    }
    return blocks.back();
}

}  // namespace Zorv
