/// Typed access to managed objects, inside one transaction.
///
/// The transaction begins with the first access, so that an accessor that turns out not to be needed costs nothing; it ends
/// with commit, or without effect with close or the destructor.
///
/// Threads:   an object belongs to one thread at a time.
/// Ownership: everything read is copied.
/// Failure:   reads throw ZorvException, writes answer with the middleware's return code and log it. Without the services,
///            or when no transaction can be had, the first access throws.
#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>

#include "Transaction.hpp"
#include "YaltOamSpiManagedObject_3.h"

namespace Zorv {

/// A value of an enumeration type of the model.
struct Enumeration {
    std::int32_t value = 0;
};

class MoAccessor {
public:
    /// @param lockPolicyValue a ZorvOamSpiLockPolicyT. @param timeoutSeconds the transaction's time limit.
    MoAccessor(std::int32_t lockPolicyValue, std::uint32_t timeoutSeconds);

    /// The first object at the end of a comma-separated class path from the root, depth first. 0, or -2 when there is none.
    ZorvReturnT getFirstMoInstance(const std::string& classPath, std::string& dn);

    /// Appends the DNs of the children of one class, in the model's order.
    void getChildren(const std::string& parentDn, const std::string& className, std::list<std::string>& children);

    /// ValueT: std::uint32_t, std::uint64_t, bool, Enumeration or std::string.
    template <class ValueT>
    ValueT getAttr(const std::string& dn, const std::string& attribute);

    /// No value where the attribute has none; any other failure throws, as it does in getAttr.
    template <class ValueT>
    std::optional<ValueT> getOptionalAttr(const std::string& dn, const std::string& attribute);

    /// ValueT: std::uint32_t, std::uint64_t or std::string.
    template <class ValueT>
    ZorvReturnT setAttr(const std::string& dn, const std::string& attribute, const ValueT& value);

    /// Makes the writes take effect. 0 also when there was nothing to commit.
    ZorvReturnT commit();

    /// Ends the transaction without effect.
    void close();

private:
    void open();
    ZorvReturnT findBelow(const std::string& parentDn, const std::string& classPath, std::string& dn);
    ZorvReturnT listChildren(const std::string& parentDn, const std::string& className,
                             std::list<std::string>& children);
    template <class ValueT>
    std::optional<ValueT> read(const std::string& dn, const std::string& attribute);

    const std::int32_t lockPolicy;
    const std::uint32_t timeout;
    const ZorvOamSpiManagedObject_3T* moSpi = nullptr;  // not owned; null until open
    std::optional<Transaction> transaction;
};

}  // namespace Zorv
