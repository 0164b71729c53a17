#include "RefCounter.hpp"

namespace Zorv {

void RefCounter::addRef()
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    ++references;
}

void RefCounter::releaseRef()
{
    bool last = false;
    {
        const Poco::FastMutex::ScopedLock lock(mutex);
        last = --references == 0;
    }
    if (last) {
        delete this;
    }
}

}  // namespace Zorv
