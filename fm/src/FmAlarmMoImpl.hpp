/// The read-only managed objects "FmAlarm": the active alarms as management clients see them.
///
/// Each transaction reads from one snapshot of the active alarm list, taken at its first look-up and renewed whenever an
/// iterator is created: alarms raised or cleared meanwhile are not seen.
///
/// Threads:   calls arrive on any thread of the middleware, for several transactions at once; one mutex guards it all.
/// Ownership: results live in the transaction's memory until abort or finish, also when the snapshot has been renewed.
/// Failure:   -1 for refused writes, -2 for what does not exist; no exception of its own.
#pragma once

#include <Poco/Mutex.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "AlarmSnapshot.hpp"
#include "AutoMemory.hpp"
#include "YaltOamSpiManagedObject_3.h"
#include "YaltOamSpiTransaction_1.h"
#include "YaltOamSpiTransactionalResource_1.h"

namespace ZorvFm {

class FmAlarmMoImpl {
public:
    /// Null when the component is not started.
    void setTxService(const YaltOamSpiTransaction_1* service);
    void setTxResource(const YaltOamSpiTransactionalResource_1* resource);

    // Transactional resource
    YaltReturnT join(unsigned long txHandle);
    YaltReturnT prepare(unsigned long txHandle);
    YaltReturnT commit(unsigned long txHandle);
    YaltReturnT abort(unsigned long txHandle);
    YaltReturnT finish(unsigned long txHandle);

    // Managed object
    YaltReturnT newMoIterator(unsigned long txHandle, const char* parentDn, const char* className,
                              std::uint64_t* iteratorId);
    YaltReturnT nextMo(std::uint64_t iteratorId, const char** name);
    YaltReturnT finalizeMoIterator(std::uint64_t iteratorId);
    YaltReturnT existsMo(unsigned long txHandle, const char* dn, bool* exists);
    YaltReturnT countMoChildren(unsigned long txHandle, const char* dn, const char* className, std::uint64_t* count);
    YaltReturnT getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                               YaltOamSpiMoAttributeResult_3T* result);
    YaltReturnT getMoAttributes(unsigned long txHandle, const char* dn, const char* const* attributeNames,
                                YaltOamSpiMoAttributesResult_3T* results);
    YaltReturnT setMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                               const YaltOamSpiMoAttribute_3T* attribute);
    YaltReturnT createMo(unsigned long txHandle, const char* parentDn, const char* className, const char* keyValue,
                         const YaltOamSpiMoNamedAttribute_3T* attributes, std::uint32_t numberOfAttributes);
    YaltReturnT deleteMo(unsigned long txHandle, const char* dn);
    YaltReturnT action(unsigned long txHandle, const char* dn, const char* actionName,
                       const YaltOamSpiMoNamedAttribute_3T* parameters, std::uint32_t numberOfParameters,
                       YaltOamSpiMoAttributeResult_3T* result);

private:
    using SnapshotT = std::shared_ptr<const AlarmSnapshot>;

    struct IndexContainer {
        unsigned long txHandle;
        std::size_t position;  // of the next alarm in the transaction's snapshot
    };

    /// One alarm, of which attributes are read.
    struct Reading {
        unsigned long txHandle;
        const char* dn;
        const AlarmData* alarm;  // null when there is none
        Zorv::AutoMemory& memory;
        std::size_t nextAttribute;
    };

    const AlarmSnapshot& snapshotOf(unsigned long txHandle);
    const AlarmData* lookupAlarm(unsigned long txHandle, const char* dn);
    Reading beginReading(unsigned long txHandle, const char* dn);
    static YaltReturnT read(Reading& from, const char* attributeName, YaltOamSpiMoAttribute_3T& attribute);
    void drop(unsigned long txHandle);

    Poco::FastMutex mutex;
    const YaltOamSpiTransaction_1* txService = nullptr;             // not owned; guarded by mutex
    const YaltOamSpiTransactionalResource_1* txResource = nullptr;  // not owned; guarded by mutex
    std::map<unsigned long, SnapshotT> snapshots;                   // guarded by mutex
    std::multimap<unsigned long, SnapshotT> renewedSnapshots;       // results may point into them; guarded by mutex
    std::map<unsigned long, Zorv::AutoMemory> resultMemory;         // guarded by mutex
    std::map<std::uint64_t, IndexContainer> iterators;              // guarded by mutex
    std::uint64_t lastIteratorId = 0;                               // guarded by mutex
};

}  // namespace ZorvFm
