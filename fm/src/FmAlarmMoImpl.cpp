#include "FmAlarmMoImpl.hpp"

#include <cstring>
#include <optional>

#include "FmAlarmAttributes.hpp"
#include "Logging.hpp"

namespace ZorvFm {
namespace {

constexpr char className[] = "FmAlarm";
constexpr char namePrefix[] = "FmAlarm=";

/// The results stay in the transaction's memory.
YaltReturnT releaseAttribute(YaltOamSpiMoAttributeResult_3T* /*result*/)
{
    return ZORV_RETURN_OK;
}

YaltReturnT releaseAttributes(YaltOamSpiMoAttributesResult_3T* /*results*/)
{
    return ZORV_RETURN_OK;
}

/// What follows the last "FmAlarm="; empty when there is none.
std::string_view identityOf(std::string_view dn)
{
    const std::size_t prefix = dn.rfind(namePrefix);
    return prefix == std::string_view::npos ? std::string_view() : dn.substr(prefix + sizeof(namePrefix) - 1);
}

void traceTransaction(const char* operation, std::uint32_t line, unsigned long txHandle)
{
    if (Zorv::Logging::traceAdmits(YALT_TRACE_DETAILED)) {
        Zorv::Logging::trace(YALT_TRACE_DETAILED, __FILE__, line, operation, " >> txHandle='%lu'", txHandle);
    }
}

}  // namespace

void FmAlarmMoImpl::setTxService(const YaltOamSpiTransaction_1* service)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    txService = service;
}

void FmAlarmMoImpl::setTxResource(const YaltOamSpiTransactionalResource_1* resource)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    txResource = resource;
}

YaltReturnT FmAlarmMoImpl::join(unsigned long txHandle)
{
    traceTransaction("FmAlarmMoImpl.join", __LINE__, txHandle);
    const YaltOamSpiTransaction_1* service = nullptr;
    const YaltOamSpiTransactionalResource_1* resource = nullptr;
    {
        const Poco::FastMutex::ScopedLock lock(mutex);
        service = txService;
        resource = txResource;
    }
    const YaltReturnT result =
        service == nullptr ? ZORV_RETURN_FAILED : service->registerParticipant(txHandle, resource);
    if (result != ZORV_RETURN_OK) {
        ZORV_ERROR("Failed to registerParticipant");
    }
    return result;
}

YaltReturnT FmAlarmMoImpl::prepare(unsigned long txHandle)
{
    traceTransaction("FmAlarmMoImpl.prepare", __LINE__, txHandle);
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::commit(unsigned long txHandle)
{
    traceTransaction("FmAlarmMoImpl.commit", __LINE__, txHandle);
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::abort(unsigned long txHandle)
{
    traceTransaction("FmAlarmMoImpl.abort", __LINE__, txHandle);
    drop(txHandle);
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::finish(unsigned long txHandle)
{
    traceTransaction("FmAlarmMoImpl.finish", __LINE__, txHandle);
    drop(txHandle);
    return ZORV_RETURN_OK;
}

void FmAlarmMoImpl::drop(unsigned long txHandle)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    snapshots.erase(txHandle);
    renewedSnapshots.erase(txHandle);
    resultMemory.erase(txHandle);
    for (auto iterator = iterators.begin(); iterator != iterators.end();) {
        iterator = iterator->second.txHandle == txHandle ? iterators.erase(iterator) : std::next(iterator);
    }
}

YaltReturnT FmAlarmMoImpl::newMoIterator(unsigned long txHandle, const char* /*parentDn*/, const char* name,
                                         std::uint64_t* iteratorId)
{
    if (std::strcmp(name, className) != 0) {
        ZORV_TRACE("RPC (%s) call failed: className %s is not correct", "newMoIterator", name);
        return ZORV_RETURN_FAILED;
    }
    const Poco::FastMutex::ScopedLock lock(mutex);
    SnapshotT& snapshot = snapshots[txHandle];
    if (snapshot) {
        renewedSnapshots.emplace(txHandle, snapshot);
    }
    snapshot = std::make_shared<const AlarmSnapshot>();
    *iteratorId = ++lastIteratorId;
    iterators.emplace(*iteratorId, IndexContainer{txHandle, 0});
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::nextMo(std::uint64_t iteratorId, const char** name)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    const auto iterator = iterators.find(iteratorId);
    if (iterator == iterators.end()) {
        ZORV_TRACE("RPC (%s) call failed: iterator does not exist", "nextMo");
        return ZORV_RETURN_NOT_FOUND;
    }
    IndexContainer& place = iterator->second;
    const auto snapshot = snapshots.find(place.txHandle);
    if (snapshot == snapshots.end()) {
        ZORV_ERROR("RPC (%s) call failed: Iterator has no matching transaction", "nextMo");
        return ZORV_RETURN_FAILED;
    }
    const AlarmSnapshot& alarms = *snapshot->second;
    if (place.position >= alarms.size()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    *name = resultMemory[place.txHandle].strdup(namePrefix + std::to_string(alarms.getAlarmId(place.position++)));
    return ZORV_RETURN_OK;
}

/// Iterators live until their transaction ends.
YaltReturnT FmAlarmMoImpl::finalizeMoIterator(std::uint64_t /*iteratorId*/)
{
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::existsMo(unsigned long txHandle, const char* dn, bool* exists)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    *exists = lookupAlarm(txHandle, dn) != nullptr;
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::countMoChildren(unsigned long /*txHandle*/, const char* /*dn*/, const char* /*className*/,
                                           std::uint64_t* count)
{
    *count = 0;
    return ZORV_RETURN_OK;
}

/// The caller holds the mutex.
const AlarmSnapshot& FmAlarmMoImpl::snapshotOf(unsigned long txHandle)
{
    SnapshotT& snapshot = snapshots[txHandle];
    if (!snapshot) {
        snapshot = std::make_shared<const AlarmSnapshot>();
    }
    return *snapshot;
}

/// The caller holds the mutex.
const AlarmData* FmAlarmMoImpl::lookupAlarm(unsigned long txHandle, const char* dn)
{
    return snapshotOf(txHandle).find(identityOf(dn));
}

/// The caller holds the mutex.
FmAlarmMoImpl::Reading FmAlarmMoImpl::beginReading(unsigned long txHandle, const char* dn)
{
    return {txHandle, dn, lookupAlarm(txHandle, dn), resultMemory[txHandle], 0};
}

YaltReturnT FmAlarmMoImpl::read(Reading& from, const char* attributeName, YaltOamSpiMoAttribute_3T& attribute)
{
    ZORV_TRACE(" >> '%lu', '%s', '%s'", from.txHandle, from.dn, attributeName);
    YaltReturnT result = ZORV_RETURN_NOT_FOUND;
    if (from.alarm != nullptr &&
        FmAlarmAttributes::read(*from.alarm, attributeName, from.nextAttribute, from.memory, attribute)) {
        result = ZORV_RETURN_OK;
    }
    ZORV_TRACE(" << Retval: %s", std::to_string(result).c_str());
    return result;
}

YaltReturnT FmAlarmMoImpl::getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                                          YaltOamSpiMoAttributeResult_3T* result)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    YaltOamSpiMoAttribute_3T attribute{};
    Reading from = beginReading(txHandle, dn);
    const YaltReturnT code = read(from, attributeName, attribute);
    if (code == ZORV_RETURN_OK) {
        auto* kept = from.memory.allocateArray<YaltOamSpiMoAttribute_3T>(1);
        *kept = attribute;
        *result = {kept, &releaseAttribute};
    }
    return code;
}

YaltReturnT FmAlarmMoImpl::getMoAttributes(unsigned long txHandle, const char* dn, const char* const* attributeNames,
                                           YaltOamSpiMoAttributesResult_3T* results)
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    std::uint32_t count = 0;
    while (attributeNames[count] != nullptr) {
        ++count;
    }
    auto* attributes = resultMemory[txHandle].allocateArray<YaltOamSpiMoAttribute_3T>(count);
    std::optional<Reading> from = count == 0 ? std::nullopt : std::optional(beginReading(txHandle, dn));
    for (std::uint32_t i = 0; i < count; ++i) {
        const YaltReturnT code = read(*from, attributeNames[i], attributes[i]);
        if (code != ZORV_RETURN_OK) {
            return code;
        }
    }
    *results = {count, attributes, &releaseAttributes};
    return ZORV_RETURN_OK;
}

YaltReturnT FmAlarmMoImpl::setMoAttribute(unsigned long /*txHandle*/, const char* /*dn*/, const char* /*attributeName*/,
                                          const YaltOamSpiMoAttribute_3T* /*attribute*/)
{
    return ZORV_RETURN_FAILED;
}

YaltReturnT FmAlarmMoImpl::createMo(unsigned long /*txHandle*/, const char* /*parentDn*/, const char* /*className*/,
                                    const char* /*keyValue*/, const YaltOamSpiMoNamedAttribute_3T* /*attributes*/,
                                    std::uint32_t /*numberOfAttributes*/)
{
    return ZORV_RETURN_FAILED;
}

YaltReturnT FmAlarmMoImpl::deleteMo(unsigned long /*txHandle*/, const char* /*dn*/)
{
    return ZORV_RETURN_FAILED;
}

YaltReturnT FmAlarmMoImpl::action(unsigned long /*txHandle*/, const char* /*dn*/, const char* /*actionName*/,
                                  const YaltOamSpiMoNamedAttribute_3T* /*parameters*/,
                                  std::uint32_t /*numberOfParameters*/, YaltOamSpiMoAttributeResult_3T* /*result*/)
{
    return ZORV_RETURN_NOT_FOUND;
}

}  // namespace ZorvFm
