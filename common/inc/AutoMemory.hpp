/// A pool that owns what is handed out to the middleware until all of it is released at once. Small things stand side by
/// side in larger blocks.
///
/// Threads:   an object belongs to one thread at a time.
/// Ownership: everything that comes from the pool, or was given to it, is the pool's. Objects are destroyed in reverse
///            order of arrival.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Zorv {

class AutoMemory {
public:
    AutoMemory() = default;
    ~AutoMemory();

    AutoMemory(const AutoMemory&) = delete;
    AutoMemory& operator=(const AutoMemory&) = delete;

    /// Takes over an object made with new.
    template <class ObjectT>
    ObjectT* own(ObjectT* object)
    {
        try {
            objects.push_back({object, [](void* owned) { delete static_cast<ObjectT*>(owned); }});
        } catch (...) {
            delete object;
            throw;
        }
        return object;
    }

    /// Zero-filled raw memory for count values of a plain C type.
    template <class ValueT>
    ValueT* allocateArray(std::size_t count)
    {
        return static_cast<ValueT*>(allocate(count, sizeof(ValueT)));  // NOLINT: pointers too
    }

    /// A C string with the text up to its first zero byte.
    char* strdup(const std::string& text);

    /// Releases everything.
    void free();

private:
    struct OwnedObject {
        void* object;
        void (*destroy)(void*);
    };

    void* allocate(std::size_t count, std::size_t size);
    void* takeRoom(std::size_t size);
    void* newBlock(std::size_t size);

    std::vector<OwnedObject> objects;
    std::vector<void*> blocks;
    char* place = nullptr;      // in the latest block for small things
    std::size_t room = 0;       // bytes from there on
    std::size_t blockSize = 0;  // bytes of the next one
};

}  // namespace Zorv
