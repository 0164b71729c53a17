#include "services/managedobjects/ManagementClient.hpp"

#include "model/Dn.hpp"

namespace ZorvNode {

using namespace ZorvInput;

void ManagementClient::change(const std::vector<MoRequest>& requests)
{
    transact([&](unsigned long txHandle) {
        for (const MoRequest& request : requests) {
            change(txHandle, request);
        }
    });
}

void ManagementClient::change(unsigned long txHandle, const MoRequest& request)
{
    switch (request.kind) {
    case MoRequest::Kind::set:
        set(txHandle, request);
        break;
    case MoRequest::Kind::create:
        create(txHandle, request);
        break;
    default:
        objects.remove(txHandle, request.dn);
        break;
    }
}

void ManagementClient::set(unsigned long txHandle, const MoRequest& request)
{
    for (const MoNamedValue& attribute : request.attributes) {
        CValues value;
        value.add(std::make_shared<const MoValue>(attribute.value));
        objects.setAttribute(txHandle, request.dn, attribute.name, *value.data());
    }
}

void ManagementClient::create(unsigned long txHandle, const MoRequest& request)
{
    CValues values;
    for (const MoNamedValue& attribute : request.attributes) {
        values.add(std::make_shared<const MoValue>(attribute.value));
    }
    std::vector<YaltOamSpiMoNamedAttribute_3T> named;
    for (std::size_t index = 0; index < request.attributes.size(); ++index) {
        named.push_back({request.attributes[index].name.c_str(), values.data()[index]});
    }
    const std::string part = lastPartOf(request.dn);
    objects.create(txHandle, parentOf(request.dn), classOf(request.dn), part.substr(part.find('=') + 1), named.data(),
                   static_cast<std::uint32_t>(named.size()));
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
    } catch (...) {
        transactions.abort(txHandle);
        throw;
    }
    const ZorvReturnT committed = transactions.commit(txHandle);
    if (committed != ZORV_RETURN_OK) {
        throw MoError(committed, "the transaction could not be committed");
    }
}

}  // namespace ZorvNode
