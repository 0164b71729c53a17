#include "AutoMemory.hpp"

#include <cstdlib>
#include <cstring>
#include <new>

namespace Zorv {

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
}

char* AutoMemory::strdup(const std::string& text)
{
    const std::size_t length = std::strlen(text.c_str());
    char* copy = allocateArray<char>(length + 1);
    std::memcpy(copy, text.data(), length);
    return copy;
}

void* AutoMemory::allocate(std::size_t count, std::size_t size)
{
    blocks.push_back(nullptr);  // first, so that a block is never without an owner
    blocks.back() = std::calloc(count == 0 ? 1 : count, size);
    if (blocks.back() == nullptr) {
        throw std::bad_alloc();
    }
    return blocks.back();
}

}  // namespace Zorv
