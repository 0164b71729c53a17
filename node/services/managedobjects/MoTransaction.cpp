#include "services/managedobjects/MoTransaction.hpp"

#include <algorithm>
#include <utility>

#include "files/InputError.hpp"
#include "model/Dn.hpp"
#include "model/ObjectReader.hpp"
#include "model/ValueConversion.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

/// Turns what is wrong with a value into a refusal.
template <class CheckT>
void refuseWrong(CheckT check)
{
    try {
        check();
    } catch (const ValueError& e) {
        throw MoError(ZORV_RETURN_FAILED, e.what());
    }
}

}  // namespace

MoTransaction::MoTransaction(MoStore& moStore, std::int32_t policy, TransactionOrigin transactionOrigin)
    : store(moStore),
      lockPolicy(policy),
      origin(transactionOrigin),
      base(moStore.snapshot())
{
}

const ClassDescription& MoTransaction::classNamed(const std::string& className) const
{
    const ClassDescription* description = base.model->findClass(className);
    if (description == nullptr) {
        throw MoError(ZORV_RETURN_FAILED, "unknown class, \"" + className + "\"");
    }
    return *description;
}

MoInstanceT MoTransaction::objectNamed(const std::string& dn) const
{
    MoInstanceT instance = state().find(dn);
    if (!instance) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "no such object, \"" + dn + "\"");
    }
    return instance;
}

const AttributeDescription& MoTransaction::attributeOf(const std::string& dn, const std::string& attribute) const
{
    const AttributeDescription* description = classNamed(classOf(dn)).findAttribute(attribute);
    if (description == nullptr) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "class " + classOf(dn) + " has no attribute, \"" + attribute + "\"");
    }
    return *description;
}

std::vector<std::string> MoTransaction::childrenOf(const std::string& parentDn, const std::string& className) const
{
    if (!exists(parentDn)) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "no such object, \"" + parentDn + "\"");
    }
    return state().childrenOf(parentDn, className);
}

std::shared_ptr<const MoValue> MoTransaction::get(const std::string& dn, const std::string& attribute) const
{
    const MoInstanceT instance = objectNamed(dn);
    const AttributeDescription& description = attributeOf(dn, attribute);
    const auto found = instance->attributes.find(attribute);
    if (found == instance->attributes.end()) {
        return std::make_shared<const MoValue>(MoValue{description.type, {}});
    }
    return {instance, &found->second};  // shares the instance
}

void MoTransaction::set(const std::string& dn, const std::string& attribute, MoValue value)
{
    objectNamed(dn);
    const AttributeDescription& description = attributeOf(dn, attribute);
    refuseReadOnly(description);
    refuseWrong([&] {
        checkValue(description, value);
        if (description.isMandatory && value.values.empty()) {
            throw ValueError("no value for attribute " + attribute, dn);
        }
    });
    write({dn, nullptr, {attribute, std::move(value)}, description.isReadOnly});
}

void MoTransaction::create(const std::string& parentDn, const std::string& className, const std::string& keyValue,
                           const std::vector<MoNamedValue>& attributes)
{
    const ClassDescription& description = classNamed(className);
    const std::string dn = joinDn(parentDn, className + "=" + keyValue);
    if (!exists(parentDn)) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "no parent object, \"" + parentDn + "\"");
    }
    if (!isKeyValue(keyValue) || !description.canBeIn(classOf(parentDn))) {
        throw MoError(ZORV_RETURN_FAILED, "not allowed here, \"" + dn + "\"");
    }
    if (exists(dn)) {
        throw MoError(ZORV_RETURN_EXISTS, "object exists already, \"" + dn + "\"");
    }
    auto instance = std::make_shared<MoInstance>();
    instance->dn = dn;
    for (const MoNamedValue& given : attributes) {
        const AttributeDescription& attribute = attributeOf(dn, given.name);
        refuseReadOnly(attribute);
        refuseWrong([&] { checkValue(attribute, given.value); });
        instance->attributes[given.name] = given.value;
    }
    refuseWrong([&] { completeAttributes(description, *instance); });
    write({dn, std::move(instance), {}, false});
}

void MoTransaction::remove(const std::string& dn)
{
    objectNamed(dn);
    write({dn, nullptr, {}, false});
}

void MoTransaction::refuseReadOnly(const AttributeDescription& attribute) const
{
    if (attribute.isReadOnly && origin == TransactionOrigin::management) {
        throw MoError(ZORV_RETURN_FAILED, "read-only attribute, \"" + attribute.name + "\"");
    }
}

void MoTransaction::write(MoWrite change)
{
    if (!written) {
        written = *base.state;
    }
    apply(change, *written);
    writes.push_back(std::move(change));
}

bool MoTransaction::hasWritten(const std::string& className, const std::string& attribute) const
{
    return std::any_of(writes.begin(), writes.end(), [&](const MoWrite& write) {
        return write.bySystem && write.attribute.name == attribute && classOf(write.dn) == className;
    });
}

bool MoTransaction::commit(const std::function<void(std::vector<MoChange>)>& inOrder)
{
    return writes.empty() || store.commit(base, writes, lockPolicy == ZORV_LOCK_POLICY_OPTIMISTIC, inOrder);
}

}  // namespace ZorvNode
