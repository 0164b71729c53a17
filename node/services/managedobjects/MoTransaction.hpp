/// What one transaction sees and writes of the node's own objects: the state at its first use, and its own writes.
///
/// Threads:   the calls of one transaction come one by one.
/// Failure:   MoError.
#pragma once

#include <optional>

#include "services/managedobjects/MoError.hpp"
#include "services/managedobjects/MoStore.hpp"
#include "services/transactions/TransactionService.hpp"

namespace ZorvNode {

class MoTransaction {
public:
    MoTransaction(MoStore& moStore, std::int32_t policy, TransactionOrigin transactionOrigin);

    const Model& getModel() const { return *base.model; }

    /// The class; -1 when there is none of that name.
    const ClassDescription& classNamed(const std::string& className) const;

    bool exists(const std::string& dn) const { return state().exists(dn); }
    std::vector<std::string> childrenOf(const std::string& parentDn, const std::string& className) const;

    /// -2 no such object or attribute; an attribute without a value is an empty value.
    std::shared_ptr<const MoValue> get(const std::string& dn, const std::string& attribute) const;

    void set(const std::string& dn, const std::string& attribute, MoValue value);
    void create(const std::string& parentDn, const std::string& className, const std::string& keyValue,
                const std::vector<MoNamedValue>& attributes);
    void remove(const std::string& dn);

    /// False when it does not fit what was committed meanwhile.
    bool commit(const std::function<void(std::vector<MoChange>)>& inOrder);

    bool hasWritten() const { return !writes.empty(); }

    /// Whether a component has written this read-only attribute of an object of the class.
    bool hasWritten(const std::string& className, const std::string& attribute) const;

    /// The attribute's description. -2 no such attribute.
    const AttributeDescription& attributeOf(const std::string& dn, const std::string& attribute) const;

private:
    const MoState& state() const { return written ? *written : *base.state; }
    MoInstanceT objectNamed(const std::string& dn) const;
    void refuseReadOnly(const AttributeDescription& attribute) const;
    void write(MoWrite change);

    MoStore& store;
    const std::int32_t lockPolicy;
    const TransactionOrigin origin;
    const MoSnapshot base;
    std::optional<MoState> written;  // base with the writes
    std::vector<MoWrite> writes;
};

}  // namespace ZorvNode
