/// Managed objects, version "3": a small tree of instances that tests plant, read and write in transactions.
///
/// A transaction sees its own writes; others see them after its commit. Results and names are freed as early as the
/// published interface allows, so that a sanitizer finds a use after that.
///
/// Entries: "newMoIterator PARENT CLASS -> 0", "nextMo -> 0 FmAlarmModel=1", "finalizeMoIterator -> 0",
/// "existsMo DN -> 0 true", "countMoChildren DN CLASS -> 0 2", "getMoAttribute DN NAME -> 0",
/// "getMoAttributes DN NAME NAME -> 0", "setMoAttribute DN NAME VALUE -> 0" (values as MoValue::toString shows them),
/// "createMo PARENT CLASS=KEY -> 0", "deleteMo DN -> 0", "action DN NAME -> -2". A missing parent reads "".
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Fake.hpp"
#include "FakeTransactions.hpp"
#include "MoTree.hpp"
#include "MoValue.hpp"
#include "YaltOamSpiManagedObject_3.h"

namespace ZorvFakes {

class FakeManagedObjects : public Fake<FakeManagedObjects> {
public:
    FakeManagedObjects(Journal& journal, FakeTransactions& transactions);

    static const YaltOamSpiManagedObject_3T* table();

    /// Plants an instance, or gives an instance further attributes. Instances of one parent keep the order of planting.
    void plant(const std::string& dn, const MoAttributes& attributes = {});

    /// Removes an instance and what is below it.
    void remove(const std::string& dn);

    /// Removes one attribute: reading it then answers -2.
    void removeAttribute(const std::string& dn, const std::string& name);

    /// The committed value, or nothing.
    std::optional<MoValue> value(const std::string& dn, const std::string& name) const;

    /// Iterators not yet closed, in open transactions.
    size_t openIterators() const;

    /// Results that were not released when their transaction ended, and releases of results that are not out.
    unsigned unreleased() const;
    unsigned wrongReleases() const;

    // The operations behind the table.
    int32_t newMoIterator(unsigned long txHandle, const char* parentDn, const char* className, uint64_t* iteratorId);
    int32_t nextMo(uint64_t iteratorId, const char** name);
    int32_t finalizeMoIterator(uint64_t iteratorId);
    int32_t existsMo(unsigned long txHandle, const char* dn, bool* exists);
    int32_t countMoChildren(unsigned long txHandle, const char* dn, const char* className, uint64_t* count);
    int32_t getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                           YaltOamSpiMoAttributeResult_3T* result);
    int32_t getMoAttributes(unsigned long txHandle, const char* dn, const char* const* attributeNames,
                            YaltOamSpiMoAttributesResult_3T* result);
    int32_t setMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                           const YaltOamSpiMoAttribute_3T* attribute);
    int32_t createMo(unsigned long txHandle, const char* parentDn, const char* className, const char* keyValue,
                     const YaltOamSpiMoNamedAttribute_3T* attributes, uint32_t numberOfAttributes);
    int32_t deleteMo(unsigned long txHandle, const char* dn);
    int32_t action(unsigned long txHandle, const char* dn, const char* actionName,
                   const YaltOamSpiMoNamedAttribute_3T* parameters, uint32_t numberOfParameters,
                   YaltOamSpiMoAttributeResult_3T* result);
    int32_t release(const YaltOamSpiMoAttribute_3T* attributes);

private:
    using Change = std::function<void(MoTree&)>;

    struct Iterator {
        unsigned long txHandle;
        std::list<std::string> names;  // those still to come
    };

    /// Attributes handed out by one call.
    struct Result {
        unsigned long txHandle = 0;
        std::vector<MoCForm> owned;
        std::vector<YaltOamSpiMoAttribute_3T> forms;
    };

    /// What an open transaction has done so far.
    struct Work {
        MoTree view;
        std::vector<Change> changes;
        std::list<std::string> names;  // handed out by nextMo
    };

    template <class OperationT>
    int32_t inTransaction(const std::string& call, unsigned long txHandle, OperationT operation);

    MoTree& viewOf(unsigned long txHandle);
    void change(unsigned long txHandle, const Change& step);
    const YaltOamSpiMoAttribute_3T* handOut(unsigned long txHandle, const std::vector<MoValue>& values);
    void endTransaction(unsigned long txHandle, bool committed);

    FakeTransactions& transactions;

    mutable std::mutex mutex;
    MoTree tree;  // guarded by mutex, as all below
    std::map<unsigned long, Work> works;
    std::map<uint64_t, Iterator> iterators;
    std::vector<std::unique_ptr<Result>> results;  // handed out
    uint64_t lastIterator = 0;
    unsigned unreleasedCount = 0;
    unsigned wrongReleaseCount = 0;
};

}  // namespace ZorvFakes
