/// Function tables of the second framework's interfaces whose plain calls reach an object.
///
/// Each binder publishes one table for one implementer class; the calls find the object through _instance, so there is one
/// binder per implementer.
///
/// Threads:   calls arrive on any thread of the middleware; the implementer locks.
/// Ownership: the implementer outlives its binder.
/// Failure:   exceptions never reach the middleware: they are logged and answered with -1.
#pragma once

#include "Guarded.hpp"
#include "SingleInstanceAssert.hpp"
#include "YaltOamSpiManagedObject_3.h"
#include "YaltOamSpiTransactionalResource_1.h"

namespace Zorv {

/// Publishes YaltOamSpiManagedObject_3T.
template <class ImplementerT>
class ManagedObject3Binder {
public:
    explicit ManagedObject3Binder(ImplementerT& implementer)
    {
        ZORV_ASSERT(!_instance);
        _instance = &implementer;
    }

    ~ManagedObject3Binder() { _instance = nullptr; }

    ManagedObject3Binder(const ManagedObject3Binder&) = delete;
    ManagedObject3Binder& operator=(const ManagedObject3Binder&) = delete;

    const YaltOamSpiManagedObject_3T& getInterface() const { return table; }

private:
    /// One forwarder for each operation, made from the member function's own signature.
    template <auto operation>
    struct Forward;

    template <class... ArgumentsT, YaltReturnT (ImplementerT::*operation)(ArgumentsT...)>
    struct Forward<operation> {
        static YaltReturnT call(ArgumentsT... arguments)
        {
            return guarded("Managed object call", [&] { return (_instance->*operation)(arguments...); });
        }
    };

    static inline ImplementerT* _instance = nullptr;

    const YaltOamSpiManagedObject_3T table{&Forward<&ImplementerT::newMoIterator>::call,
                                           &Forward<&ImplementerT::nextMo>::call,
                                           &Forward<&ImplementerT::finalizeMoIterator>::call,
                                           &Forward<&ImplementerT::existsMo>::call,
                                           &Forward<&ImplementerT::countMoChildren>::call,
                                           &Forward<&ImplementerT::getMoAttribute>::call,
                                           &Forward<&ImplementerT::getMoAttributes>::call,
                                           &Forward<&ImplementerT::setMoAttribute>::call,
                                           &Forward<&ImplementerT::createMo>::call,
                                           &Forward<&ImplementerT::deleteMo>::call,
                                           &Forward<&ImplementerT::action>::call};
};

/// Publishes YaltOamSpiTransactionalResource_1T.
template <class ImplementerT>
class TransactionalResource1Binder {
public:
    explicit TransactionalResource1Binder(ImplementerT& implementer)
    {
        ZORV_ASSERT(!_instance);
        _instance = &implementer;
    }

    ~TransactionalResource1Binder() { _instance = nullptr; }

    TransactionalResource1Binder(const TransactionalResource1Binder&) = delete;
    TransactionalResource1Binder& operator=(const TransactionalResource1Binder&) = delete;

    const YaltOamSpiTransactionalResource_1T& getInterface() const { return table; }

private:
    template <YaltReturnT (ImplementerT::*operation)(unsigned long)>
    static YaltReturnT forward(unsigned long txHandle)
    {
        return guarded("Transactional resource call", [txHandle] { return (_instance->*operation)(txHandle); });
    }

    static inline ImplementerT* _instance = nullptr;

    const YaltOamSpiTransactionalResource_1T table{&forward<&ImplementerT::join>, &forward<&ImplementerT::prepare>,
                                                   &forward<&ImplementerT::commit>, &forward<&ImplementerT::abort>,
                                                   &forward<&ImplementerT::finish>};
};

}  // namespace Zorv
