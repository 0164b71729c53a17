#include "FakeManagedObjects.hpp"

#include <algorithm>
#include <utility>

namespace ZorvFakes {

namespace {

const YaltOamSpiManagedObject_3T theTable = {forward<&FakeManagedObjects::newMoIterator>,
                                             forward<&FakeManagedObjects::nextMo>,
                                             forward<&FakeManagedObjects::finalizeMoIterator>,
                                             forward<&FakeManagedObjects::existsMo>,
                                             forward<&FakeManagedObjects::countMoChildren>,
                                             forward<&FakeManagedObjects::getMoAttribute>,
                                             forward<&FakeManagedObjects::getMoAttributes>,
                                             forward<&FakeManagedObjects::setMoAttribute>,
                                             forward<&FakeManagedObjects::createMo>,
                                             forward<&FakeManagedObjects::deleteMo>,
                                             forward<&FakeManagedObjects::action>};

int32_t releaseOne(YaltOamSpiMoAttributeResult_3T* result)
{
    return forward<&FakeManagedObjects::release>(result->attribute);
}

int32_t releaseAll(YaltOamSpiMoAttributesResult_3T* result)
{
    return forward<&FakeManagedObjects::release>(result->attributes);
}

}  // namespace

// --- For the test

FakeManagedObjects::FakeManagedObjects(Journal& theJournal, FakeTransactions& theTransactions)
    : Fake(theJournal, Topic::Model),
      transactions(theTransactions)
{
    transactions.onEnd([this](unsigned long txHandle, bool committed) { endTransaction(txHandle, committed); });
}

const YaltOamSpiManagedObject_3T* FakeManagedObjects::table()
{
    return &theTable;
}

void FakeManagedObjects::plant(const std::string& dn, const MoAttributes& attributes)
{
    const std::lock_guard<std::mutex> lock(mutex);
    tree.plant(dn, attributes);
}

void FakeManagedObjects::remove(const std::string& dn)
{
    const std::lock_guard<std::mutex> lock(mutex);
    tree.remove(dn);
}

void FakeManagedObjects::removeAttribute(const std::string& dn, const std::string& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    tree.removeAttribute(dn, name);
}

std::optional<MoValue> FakeManagedObjects::value(const std::string& dn, const std::string& name) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const MoValue* found = tree.value(dn, name);
    return found ? std::optional<MoValue>(*found) : std::nullopt;
}

size_t FakeManagedObjects::openIterators() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return iterators.size();
}

unsigned FakeManagedObjects::unreleased() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return unreleasedCount;
}

unsigned FakeManagedObjects::wrongReleases() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return wrongReleaseCount;
}

// --- Transactions

template <class OperationT>
int32_t FakeManagedObjects::inTransaction(const std::string& callText, unsigned long txHandle, OperationT operation)
{
    return answer(callText, [&](std::string& outcome) -> int32_t {
        if (!transactions.isOpen(txHandle)) {
            return ZORV_RETURN_NOT_FOUND;
        }
        const std::lock_guard<std::mutex> lock(mutex);
        return operation(outcome);
    });
}

MoTree& FakeManagedObjects::viewOf(unsigned long txHandle)
{
    const auto work = works.find(txHandle);
    return work == works.end() || work->second.changes.empty() ? tree : work->second.view;
}

void FakeManagedObjects::change(unsigned long txHandle, const Change& step)
{
    Work& work = works[txHandle];
    if (work.changes.empty()) {
        work.view = tree;
    }
    step(work.view);
    work.changes.push_back(step);
}

void FakeManagedObjects::endTransaction(unsigned long txHandle, bool committed)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (committed) {
        for (const Change& step : works[txHandle].changes) {
            step(tree);
        }
    }
    works.erase(txHandle);
    for (auto iterator = iterators.begin(); iterator != iterators.end();) {
        iterator = iterator->second.txHandle == txHandle ? iterators.erase(iterator) : std::next(iterator);
    }
    const auto rest = std::remove_if(results.begin(), results.end(),
                                     [&](const auto& result) { return result->txHandle == txHandle; });
    unreleasedCount += static_cast<unsigned>(results.end() - rest);
    results.erase(rest, results.end());
}

const YaltOamSpiMoAttribute_3T* FakeManagedObjects::handOut(unsigned long txHandle, const std::vector<MoValue>& values)
{
    auto result = std::make_unique<Result>();
    result->txHandle = txHandle;
    for (const MoValue& value : values) {
        result->owned.emplace_back(value);
        result->forms.push_back(result->owned.back().get());
    }
    results.push_back(std::move(result));
    return results.back()->forms.data();
}

int32_t FakeManagedObjects::release(const YaltOamSpiMoAttribute_3T* attributes)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = std::find_if(results.begin(), results.end(),
                                    [&](const auto& result) { return result->forms.data() == attributes; });
    if (found == results.end()) {
        ++wrongReleaseCount;
        return ZORV_RETURN_FAILED;
    }
    results.erase(found);
    return ZORV_RETURN_OK;
}

// --- Behind the table

int32_t FakeManagedObjects::newMoIterator(unsigned long txHandle, const char* parentDn, const char* className,
                                          uint64_t* iteratorId)
{
    const std::string call = std::string("newMoIterator ") + parentDn + " " + className;
    return inTransaction(call, txHandle, [&](std::string&) -> int32_t {
        const auto names = viewOf(txHandle).children(parentDn, className);
        *iteratorId = ++lastIterator;
        iterators[lastIterator] = {txHandle, {names.begin(), names.end()}};
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::nextMo(uint64_t iteratorId, const char** name)
{
    return answer("nextMo", [&](std::string& outcome) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto iterator = iterators.find(iteratorId);
        if (iterator == iterators.end() || iterator->second.names.empty()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        auto& handedOut = works[iterator->second.txHandle].names;
        handedOut.splice(handedOut.end(), iterator->second.names, iterator->second.names.begin());
        outcome = handedOut.back();
        *name = handedOut.back().c_str();
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::finalizeMoIterator(uint64_t iteratorId)
{
    return answer("finalizeMoIterator", [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        return iterators.erase(iteratorId) != 0 ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
    });
}

int32_t FakeManagedObjects::existsMo(unsigned long txHandle, const char* dn, bool* exists)
{
    return inTransaction(std::string("existsMo ") + dn, txHandle, [&](std::string& outcome) -> int32_t {
        *exists = viewOf(txHandle).exists(dn);
        outcome = *exists ? "true" : "false";
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::countMoChildren(unsigned long txHandle, const char* dn, const char* className,
                                            uint64_t* count)
{
    const std::string call = std::string("countMoChildren ") + dn + " " + className;
    return inTransaction(call, txHandle, [&](std::string& outcome) -> int32_t {
        *count = viewOf(txHandle).children(dn, className).size();
        outcome = std::to_string(*count);
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                                           YaltOamSpiMoAttributeResult_3T* result)
{
    const std::string call = std::string("getMoAttribute ") + dn + " " + attributeName;
    return inTransaction(call, txHandle, [&](std::string&) -> int32_t {
        const MoValue* value = viewOf(txHandle).value(dn, attributeName);
        if (!value) {
            return ZORV_RETURN_NOT_FOUND;
        }
        *result = {handOut(txHandle, {*value}), &releaseOne};
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::getMoAttributes(unsigned long txHandle, const char* dn, const char* const* attributeNames,
                                            YaltOamSpiMoAttributesResult_3T* result)
{
    std::string call = std::string("getMoAttributes ") + dn;
    for (auto name = attributeNames; *name; ++name) {
        call += std::string(" ") + *name;
    }
    return inTransaction(call, txHandle, [&](std::string&) -> int32_t {
        std::vector<MoValue> values;
        for (auto name = attributeNames; *name; ++name) {
            const MoValue* value = viewOf(txHandle).value(dn, *name);
            if (!value) {
                return ZORV_RETURN_NOT_FOUND;
            }
            values.push_back(*value);
        }
        *result = {static_cast<uint32_t>(values.size()), handOut(txHandle, values), &releaseAll};
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::setMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                                           const YaltOamSpiMoAttribute_3T* attribute)
{
    const MoValue value = MoValue::fromC(*attribute);
    const std::string call = std::string("setMoAttribute ") + dn + " " + attributeName + " " + value.toString();
    return inTransaction(call, txHandle, [&](std::string&) -> int32_t {
        const MoValue* present = viewOf(txHandle).value(dn, attributeName);
        if (!present) {
            return ZORV_RETURN_NOT_FOUND;
        }
        if (present->type != value.type) {
            return ZORV_RETURN_FAILED;
        }
        change(txHandle, [dn = std::string(dn), name = std::string(attributeName), value](MoTree& changed) {
            changed.plant(dn, {{name, value}});
        });
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::createMo(unsigned long txHandle, const char* parentDn, const char* className,
                                     const char* keyValue, const YaltOamSpiMoNamedAttribute_3T* attributes,
                                     uint32_t numberOfAttributes)
{
    const std::string name = std::string(className) + "=" + keyValue;
    return inTransaction(std::string("createMo ") + parentDn + " " + name, txHandle, [&](std::string&) -> int32_t {
        const std::string dn = *parentDn ? std::string(parentDn) + "," + name : name;
        if (*parentDn && !viewOf(txHandle).exists(parentDn)) {
            return ZORV_RETURN_NOT_FOUND;
        }
        if (viewOf(txHandle).exists(dn)) {
            return ZORV_RETURN_EXISTS;
        }
        MoAttributes values;
        for (uint32_t i = 0; i < numberOfAttributes; ++i) {
            values[attributes[i].name] = MoValue::fromC(attributes[i].attribute);
        }
        change(txHandle, [dn, values](MoTree& changed) { changed.plant(dn, values); });
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::deleteMo(unsigned long txHandle, const char* dn)
{
    return inTransaction(std::string("deleteMo ") + dn, txHandle, [&](std::string&) -> int32_t {
        if (!viewOf(txHandle).exists(dn)) {
            return ZORV_RETURN_NOT_FOUND;
        }
        change(txHandle, [dn = std::string(dn)](MoTree& changed) { changed.remove(dn); });
        return ZORV_RETURN_OK;
    });
}

int32_t FakeManagedObjects::action(unsigned long txHandle, const char* dn, const char* actionName,
                                   const YaltOamSpiMoNamedAttribute_3T*, uint32_t, YaltOamSpiMoAttributeResult_3T*)
{
    return inTransaction(std::string("action ") + dn + " " + actionName, txHandle,
                         [](std::string&) -> int32_t { return ZORV_RETURN_NOT_FOUND; });
}

}  // namespace ZorvFakes
