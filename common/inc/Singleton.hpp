/// One object of a class per library, created at its first use and destroyed when the library is unloaded.
///
/// Threads:   instance() from any thread; the object decides for itself what else is safe.
/// Ownership: nobody deletes the object.
/// Failure:   an exception from the constructor passes through; the next use tries again.
#pragma once

namespace Zorv {

template <class ObjectT>
class Singleton {
public:
    static ObjectT& instance()
    {
        static ObjectT object;
        return object;
    }

    Singleton(const Singleton&) = delete;
    Singleton& operator=(const Singleton&) = delete;

protected:
    Singleton() = default;
    ~Singleton() = default;
};

}  // namespace Zorv
