#include "services/managedobjects/ManagementClient.hpp"

#include "model/Dn.hpp"

namespace ZorvNode {

using namespace ZorvInput;

void ManagementClient::set(const std::string& dn, const std::vector<MoNamedValue>& attributes)
{
    transact([&](unsigned long txHandle) {
        for (const MoNamedValue& attribute : attributes) {
            CValues value;
            value.add(std::make_shared<const MoValue>(attribute.value));
            objects.setAttribute(txHandle, dn, attribute.name, *value.data());
        }
    });
}

void ManagementClient::create(const std::string& dn, const std::vector<MoNamedValue>& attributes)
{
    CValues values;
    std::vector<YaltOamSpiMoNamedAttribute_3T> named;
    for (const MoNamedValue& attribute : attributes) {
        values.add(std::make_shared<const MoValue>(attribute.value));
        named.push_back({attribute.name.c_str(), values.data()[values.size() - 1]});
    }
    const std::string part = lastPartOf(dn);
    transact([&](unsigned long txHandle) {
        objects.create(txHandle, parentOf(dn), classOf(dn), part.substr(part.find('=') + 1), named.data(),
                       static_cast<std::uint32_t>(named.size()));
    });
}

void ManagementClient::remove(const std::string& dn)
{
    transact([&](unsigned long txHandle) { objects.remove(txHandle, dn); });
}

void ManagementClient::transact(const std::function<void(unsigned long txHandle)>& operation)
{
    unsigned long txHandle = 0;
    const ZorvReturnT created =
        transactions.create(ZORV_LOCK_POLICY_NONE, timeoutSeconds, TransactionOrigin::management, txHandle);
    if (created != ZORV_RETURN_OK) {
        throw MoError(created, "no transaction to be had");
    }
    try {
        operation(txHandle);
    } catch (const MoError&) {
        transactions.abort(txHandle);
        throw;
    }
    const ZorvReturnT committed = transactions.commit(txHandle);
    if (committed != ZORV_RETURN_OK) {
        throw MoError(committed, "the transaction could not be committed");
    }
}

}  // namespace ZorvNode
