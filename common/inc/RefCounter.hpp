/// Reference-counted base of every published event: it lives until its creator and every consumer are done with it.
///
/// Threads:   references are taken and released on any thread.
/// Ownership: the creator holds the first reference; the last release destroys the object.
#pragma once

#include <Poco/Mutex.h>

#include <cstdint>

namespace Zorv {

class RefCounter {
public:
    RefCounter() = default;

    RefCounter(const RefCounter&) = delete;
    RefCounter& operator=(const RefCounter&) = delete;

    void addRef();

    /// Destroys the object when this was the last reference.
    void releaseRef();

protected:
    virtual ~RefCounter() = default;

private:
    Poco::FastMutex mutex;
    std::uint32_t references = 1;  // guarded by mutex
};

}  // namespace Zorv
