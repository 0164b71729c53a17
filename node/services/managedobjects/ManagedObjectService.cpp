#include "services/managedobjects/ManagedObjectService.hpp"

#include <thread>
#include <utility>

#include "Contained.hpp"
#include "files/InputError.hpp"
#include "model/Dn.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

constexpr std::size_t objectsAtATurn = 16;

using LockT = std::lock_guard<std::mutex>;

/// A component's answer, passed on.
/// @param what   it was asked to do; "it" is the object.
/// @param object its DN, or its class when there are many.
void expectOk(ZorvReturnT code, const char* what, const std::string& object)
{
    if (code != ZORV_RETURN_OK) {
        throw MoError(code, "the object's component refuses to " + std::string(what) + ", \"" + object + "\"");
    }
}

YaltReturnT releaseResult(YaltOamSpiMoAttributeResult_3T* result);
YaltReturnT releaseResults(YaltOamSpiMoAttributesResult_3T* results);

MoValue converted(const AttributeDescription& attribute, const YaltOamSpiMoAttribute_3T& value)
{
    try {
        return fromC(attribute, value);
    } catch (const ValueError& e) {
        throw MoError(ZORV_RETURN_FAILED, e.what());
    }
}

MoResults* resultsInUse = nullptr;  // the release callbacks carry no object

YaltReturnT releaseAt(const YaltOamSpiMoAttribute_3T* place)
{
    const bool released = resultsInUse != nullptr && resultsInUse->release(place);
    return released ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
}

YaltReturnT releaseResult(YaltOamSpiMoAttributeResult_3T* result)
{
    return releaseAt(std::exchange(result->attribute, nullptr));
}

YaltReturnT releaseResults(YaltOamSpiMoAttributesResult_3T* results)
{
    return releaseAt(std::exchange(results->attributes, nullptr));
}

}  // namespace

/// One call: keeps the transaction from ending, and finds what it sees.
class ManagedObjectService::Call {
public:
    Call(ManagedObjectService& called, unsigned long handle)
        : service(called),
          txHandle(handle),
          use(called.transactions, handle)
    {
        if (!use) {
            throw MoError(ZORV_RETURN_NOT_FOUND, "no such transaction, \"" + std::to_string(txHandle) + "\"");
        }
        const LockT lock(service.mutex);
        auto& found = service.views[txHandle];
        if (!found) {
            found = std::make_shared<MoTransaction>(service.store, use.lockPolicy, use.origin);
        }
        view = found;
    }

    /// The component that implements the class; null when the node does itself. -1 no such class.
    const YaltOamSpiManagedObject_3T* implementerOf(const std::string& className) const
    {
        const std::string& component = view->classNamed(className).implementer;
        return component.empty() ? nullptr : &service.implementers.get(txHandle, component);
    }

    /// Likewise for an object; -2 when its class is unknown.
    const YaltOamSpiManagedObject_3T* implementerOfObject(const std::string& dn) const
    {
        if (view->getModel().findClass(classOf(dn)) == nullptr) {
            throw MoError(ZORV_RETURN_NOT_FOUND, "no such object, \"" + dn + "\"");
        }
        return implementerOf(classOf(dn));
    }

    MoTransaction* operator->() const { return view.get(); }

private:
    ManagedObjectService& service;
    const unsigned long txHandle;
    const TransactionService::Use use;
    std::shared_ptr<MoTransaction> view;
};

ManagedObjectService::ManagedObjectService(MoStore& moStore, TransactionService& transactionService,
                                           const InterfacePortal& interfacePortal, MoChangeListener& changeListener)
    : store(moStore),
      transactions(transactionService),
      implementers(interfacePortal, transactionService),
      listener(changeListener)
{
    transactions.setOwnParticipant(this);
    resultsInUse = &results;
}

ManagedObjectService::~ManagedObjectService()
{
    transactions.setOwnParticipant(nullptr);
    resultsInUse = nullptr;
}

std::uint64_t ManagedObjectService::newIterator(unsigned long txHandle, const std::string& parentDn,
                                                const std::string& className)
{
    const Call call(*this, txHandle);
    MoIteration iteration;
    iteration.txHandle = txHandle;
    iteration.className = className;
    iteration.implementer = call.implementerOf(className);
    if (iteration.implementer == nullptr) {
        for (const std::string& dn : call->childrenOf(parentDn, className)) {
            iteration.names.push_back(lastPartOf(dn));
        }
    } else {
        expectOk(
            iteration.implementer->newMoIterator(txHandle, parentDn.c_str(), className.c_str(), &iteration.innerId),
            "list objects of its class", className);
    }
    return results.open(std::move(iteration));
}

const char* ManagedObjectService::next(std::uint64_t iteratorId)
{
    const auto iteration = results.find(iteratorId);
    if (!iteration || iteration->closed) {
        return nullptr;
    }
    if (++iteration->asked % objectsAtATurn == 0) {
        std::this_thread::yield();
    }
    const Call call(*this, iteration->txHandle);
    if (iteration->implementer == nullptr) {
        return iteration->next < iteration->names.size() ? iteration->names[iteration->next++].c_str() : nullptr;
    }
    const char* name = nullptr;
    const ZorvReturnT code = iteration->implementer->nextMo(iteration->innerId, &name);
    if (code == ZORV_RETURN_NOT_FOUND) {
        return nullptr;
    }
    expectOk(code, "list objects of its class", iteration->className);
    return name;
}

void ManagedObjectService::finalizeIterator(std::uint64_t iteratorId)
{
    const auto iteration = results.find(iteratorId);
    if (!iteration || std::exchange(iteration->closed, true)) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "no such iterator, \"" + std::to_string(iteratorId) + "\"");
    }
    if (iteration->implementer != nullptr) {
        expectOk(iteration->implementer->finalizeMoIterator(iteration->innerId), "end a list of its class",
                 iteration->className);
    }
}

bool ManagedObjectService::exists(unsigned long txHandle, const std::string& dn)
{
    const Call call(*this, txHandle);
    if (call->getModel().findClass(classOf(dn)) == nullptr) {
        return false;
    }
    const auto* implementer = call.implementerOfObject(dn);
    if (implementer == nullptr) {
        return call->exists(dn);
    }
    bool exists = false;
    expectOk(implementer->existsMo(txHandle, dn.c_str(), &exists), "find it", dn);
    return exists;
}

std::uint64_t ManagedObjectService::countChildren(unsigned long txHandle, const std::string& dn,
                                                  const std::string& className)
{
    const Call call(*this, txHandle);
    if (call.implementerOf(className) == nullptr) {
        return call->childrenOf(dn, className).size();
    }
    const std::uint64_t iterator = newIterator(txHandle, dn, className);
    std::uint64_t count = 0;
    while (next(iterator) != nullptr) {
        ++count;
    }
    finalizeIterator(iterator);
    return count;
}

void ManagedObjectService::getAttribute(unsigned long txHandle, const std::string& dn, const std::string& attribute,
                                        YaltOamSpiMoAttributeResult_3T& result)
{
    const Call call(*this, txHandle);
    if (const auto* implementer = call.implementerOfObject(dn)) {
        expectOk(implementer->getMoAttribute(txHandle, dn.c_str(), attribute.c_str(), &result), "read it", dn);
        return;
    }
    auto values = std::make_unique<CValues>();
    values->add(call->get(dn, attribute));
    result = {results.keep(txHandle, std::move(values)), &releaseResult};
}

void ManagedObjectService::getAttributes(unsigned long txHandle, const std::string& dn, const char* const* attributes,
                                         YaltOamSpiMoAttributesResult_3T& result)
{
    const Call call(*this, txHandle);
    if (const auto* implementer = call.implementerOfObject(dn)) {
        expectOk(implementer->getMoAttributes(txHandle, dn.c_str(), attributes, &result), "read it", dn);
        return;
    }
    auto values = std::make_unique<CValues>();
    for (; *attributes != nullptr; ++attributes) {
        values->add(call->get(dn, *attributes));
    }
    const std::uint32_t size = values->size();
    result = {size, results.keep(txHandle, std::move(values)), &releaseResults};
}

void ManagedObjectService::setAttribute(unsigned long txHandle, const std::string& dn, const std::string& attribute,
                                        const YaltOamSpiMoAttribute_3T& value)
{
    const Call call(*this, txHandle);
    if (const auto* implementer = call.implementerOfObject(dn)) {
        expectOk(implementer->setMoAttribute(txHandle, dn.c_str(), attribute.c_str(), &value), "change it", dn);
        return;
    }
    call->set(dn, attribute, converted(call->attributeOf(dn, attribute), value));
}

void ManagedObjectService::create(unsigned long txHandle, const std::string& parentDn, const std::string& className,
                                  const std::string& keyValue, const YaltOamSpiMoNamedAttribute_3T* attributes,
                                  std::uint32_t numberOfAttributes)
{
    const Call call(*this, txHandle);
    if (const auto* implementer = call.implementerOf(className)) {
        expectOk(implementer->createMo(txHandle, parentDn.c_str(), className.c_str(), keyValue.c_str(), attributes,
                                       numberOfAttributes),
                 "create it", joinDn(parentDn, className + "=" + keyValue));
        return;
    }
    std::vector<MoNamedValue> values;
    for (std::uint32_t index = 0; index < numberOfAttributes; ++index) {
        const AttributeDescription& attribute = call->attributeOf(className + "=", attributes[index].name);
        values.push_back({attribute.name, converted(attribute, attributes[index].attribute)});
    }
    call->create(parentDn, className, keyValue, values);
}

void ManagedObjectService::remove(unsigned long txHandle, const std::string& dn)
{
    const Call call(*this, txHandle);
    if (const auto* implementer = call.implementerOfObject(dn)) {
        expectOk(implementer->deleteMo(txHandle, dn.c_str()), "delete it", dn);
        return;
    }
    call->remove(dn);
}

void ManagedObjectService::action(unsigned long txHandle, const std::string& dn, const std::string& actionName,
                                  const YaltOamSpiMoNamedAttribute_3T* parameters, std::uint32_t numberOfParameters,
                                  YaltOamSpiMoAttributeResult_3T& result)
{
    const Call call(*this, txHandle);
    const auto* implementer = call.implementerOfObject(dn);
    if (implementer == nullptr) {
        throw MoError(ZORV_RETURN_NOT_FOUND, "no such action, \"" + actionName + "\"");
    }
    expectOk(implementer->action(txHandle, dn.c_str(), actionName.c_str(), parameters, numberOfParameters, &result),
             "act on it", dn);
}

void ManagedObjectService::replaceModel(ModelFile file)
{
    ++numberOfChanges;
    store.replace(std::move(file),
                  [this](std::vector<MoChange> changes) { listener.onChanged(0, std::move(changes)); });
    ++numberOfCommits;
    listener.onFinished();
}

bool ManagedObjectService::commit(unsigned long txHandle)
{
    std::shared_ptr<MoTransaction> view;
    {
        const LockT lock(mutex);
        const auto found = views.find(txHandle);
        if (found == views.end()) {
            return true;
        }
        view = found->second;
    }
    ++numberOfCommits;
    const bool isDone = view->commit(
        [this, txHandle](std::vector<MoChange> changes) { listener.onChanged(txHandle, std::move(changes)); });
    numberOfChanges += view->hasWritten() ? 1 : 0;
    if (isDone && view->hasWritten(watched.className, watched.attribute)) {
        ++numberOfWatchedCommits;
    }
    return isDone;
}

void ManagedObjectService::finish(unsigned long txHandle)
{
    {
        const LockT lock(mutex);
        views.erase(txHandle);
    }
    results.finish(txHandle);
    listener.onFinished();
}

}  // namespace ZorvNode
