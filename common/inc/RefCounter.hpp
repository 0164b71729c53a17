/// Reference-counted base of every published event: it lives until its creator and every consumer are done with it.
///
/// Threads:   references are taken and released on any thread.
/// Ownership: the creator holds the first reference; the last release destroys the object.
#pragma once

#include <atomic>
#include <cstdint>

namespace Zorv {

class RefCounter {
public:
    RefCounter() = default;

    RefCounter(const RefCounter&) = delete;
    RefCounter& operator=(const RefCounter&) = delete;

    void addRef() { references.fetch_add(1, std::memory_order_relaxed); }

    /// Destroys the object when this was the last reference.
    void releaseRef();

protected:
    virtual ~RefCounter() = default;

private:
    std::atomic<std::uint32_t> references{1};
};

}  // namespace Zorv
