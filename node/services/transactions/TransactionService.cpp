#include "services/transactions/TransactionService.hpp"

#include <algorithm>
#include <utility>

#include "Contained.hpp"

namespace ZorvNode {

namespace {

using LockT = std::unique_lock<std::mutex>;

constexpr std::uint32_t longestTimeout = 86400;

template <class OperationT>
bool callEach(const std::vector<TransactionService::ResourceT>& participants, unsigned long txHandle,
              OperationT operation)
{
    bool all = true;
    for (TransactionService::ResourceT participant : participants) {
        all = contained([&] { return (participant->*operation)(txHandle); }).code == ZORV_RETURN_OK && all;
    }
    return all;
}

}  // namespace

TransactionService::TransactionService(std::size_t transactionBound, ClockT steadyClock)
    : bound(transactionBound),
      clock(std::move(steadyClock))
{
}

TransactionService::~TransactionService()
{
    stopTimer();
}

ZorvReturnT TransactionService::create(std::int32_t lockPolicy, std::uint32_t timeout, TransactionOrigin origin,
                                       unsigned long& txHandle)
{
    const bool knownPolicy = lockPolicy == ZORV_LOCK_POLICY_NONE || lockPolicy == ZORV_LOCK_POLICY_OPTIMISTIC;
    if (!knownPolicy || timeout < 1 || timeout > longestTimeout) {
        return ZORV_RETURN_FAILED;
    }
    const LockT lock(mutex);
    if (transactions.size() >= bound) {
        return ZORV_RETURN_NO_RESOURCES;
    }
    txHandle = ++lastHandle;
    Transaction& created = transactions[txHandle];
    created.lockPolicy = lockPolicy;
    created.origin = origin;
    created.deadline = clock() + std::chrono::seconds(timeout);
    if (created.deadline < timerWaitsFor) {
        timerChanged.notify_all();
    }
    return ZORV_RETURN_OK;
}

ZorvReturnT TransactionService::commit(unsigned long txHandle)
{
    std::vector<ResourceT> participants;
    bool failed = false;
    const ZorvReturnT begun = beginEnd(txHandle, participants, failed);
    if (begun != ZORV_RETURN_OK) {
        return begun;
    }
    if (failed || !tryCommit(txHandle, participants)) {
        endAborted(txHandle, participants);
        return ZORV_RETURN_FAILED;
    }
    callEach(participants, txHandle, &YaltOamSpiTransactionalResource_1T::commit);
    finish(txHandle, participants);
    return ZORV_RETURN_OK;
}

bool TransactionService::tryCommit(unsigned long txHandle, const std::vector<ResourceT>& participants)
{
    const bool prepared = std::all_of(participants.begin(), participants.end(), [txHandle](ResourceT participant) {
        return contained([&] { return participant->prepare(txHandle); }).code == ZORV_RETURN_OK;
    });
    return prepared && (own == nullptr || own->commit(txHandle));
}

ZorvReturnT TransactionService::abort(unsigned long txHandle)
{
    std::vector<ResourceT> participants;
    bool failed = false;
    const ZorvReturnT begun = beginEnd(txHandle, participants, failed);
    if (begun == ZORV_RETURN_OK) {
        endAborted(txHandle, participants);
    }
    return begun;
}

/// Nobody can use the transaction or take part in it any more. -1 when it is in use, or ending already.
ZorvReturnT TransactionService::beginEnd(unsigned long txHandle, std::vector<ResourceT>& participants, bool& failed)
{
    const LockT lock(mutex);
    const auto found = transactions.find(txHandle);
    if (found == transactions.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    Transaction& transaction = found->second;
    if (transaction.uses > 0 || transaction.ending) {
        return ZORV_RETURN_FAILED;
    }
    transaction.ending = true;
    participants = transaction.participants;
    failed = transaction.failed || transaction.expired;
    return ZORV_RETURN_OK;
}

void TransactionService::endAborted(unsigned long txHandle, const std::vector<ResourceT>& participants)
{
    callEach(participants, txHandle, &YaltOamSpiTransactionalResource_1T::abort);
    finish(txHandle, participants);
}

void TransactionService::finish(unsigned long txHandle, const std::vector<ResourceT>& participants)
{
    callEach(participants, txHandle, &YaltOamSpiTransactionalResource_1T::finish);
    if (own != nullptr) {
        own->finish(txHandle);
    }
    const LockT lock(mutex);
    transactions.erase(txHandle);
}

ZorvReturnT TransactionService::registerParticipant(unsigned long txHandle, ResourceT resource)
{
    const LockT lock(mutex);
    const auto found = transactions.find(txHandle);
    if (found == transactions.end()) {
        return ZORV_RETURN_NOT_FOUND;
    }
    if (found->second.ending || found->second.expired) {
        return ZORV_RETURN_FAILED;
    }
    auto& participants = found->second.participants;
    if (std::find(participants.begin(), participants.end(), resource) == participants.end()) {
        participants.push_back(resource);
    }
    return ZORV_RETURN_OK;
}

ZorvReturnT TransactionService::joinOnce(unsigned long txHandle, ResourceT resource)
{
    {
        const LockT lock(mutex);
        const auto found = transactions.find(txHandle);
        if (found == transactions.end()) {
            return ZORV_RETURN_NOT_FOUND;
        }
        if (!found->second.joined.insert(resource).second) {
            return found->second.failed ? ZORV_RETURN_FAILED : ZORV_RETURN_OK;
        }
    }
    if (contained([&] { return resource->join(txHandle); }).code == ZORV_RETURN_OK) {
        return ZORV_RETURN_OK;
    }
    const LockT lock(mutex);
    const auto found = transactions.find(txHandle);
    if (found != transactions.end()) {
        found->second.failed = true;
    }
    return ZORV_RETURN_FAILED;
}

TransactionService::Use::Use(TransactionService& transactionService, unsigned long handle)
    : service(transactionService),
      txHandle(handle)
{
    const LockT lock(service.mutex);
    const auto found = service.transactions.find(txHandle);
    if (found == service.transactions.end() || found->second.ending || found->second.expired) {
        return;
    }
    ++found->second.uses;
    lockPolicy = found->second.lockPolicy;
    origin = found->second.origin;
    held = true;
}

TransactionService::Use::~Use()
{
    if (held) {
        service.release(txHandle);
    }
}

void TransactionService::release(unsigned long txHandle)
{
    bool abortNow = false;
    {
        const LockT lock(mutex);
        Transaction& transaction = transactions.find(txHandle)->second;
        abortNow = --transaction.uses == 0 && transaction.expired;
    }
    if (abortNow) {
        abort(txHandle);
    }
}

void TransactionService::abortExpired()
{
    std::vector<unsigned long> expired;
    {
        const LockT lock(mutex);
        const TimeT now = clock();
        for (auto& [txHandle, transaction] : transactions) {
            if (transaction.deadline > now || transaction.ending) {
                continue;
            }
            transaction.expired = true;
            if (transaction.uses == 0) {
                expired.push_back(txHandle);
            }
        }
    }
    for (const unsigned long txHandle : expired) {
        abort(txHandle);
    }
}

void TransactionService::startTimer()
{
    timer = std::thread([this] { runTimer(); });
}

void TransactionService::stopTimer()
{
    {
        const LockT lock(mutex);
        stopping = true;
        timerChanged.notify_all();
    }
    if (timer.joinable()) {
        timer.join();
    }
}

void TransactionService::runTimer()
{
    LockT lock(mutex);
    while (!stopping) {
        timerWaitsFor = TimeT::max();
        for (const auto& [txHandle, transaction] : transactions) {
            if (!transaction.expired) {
                timerWaitsFor = std::min(timerWaitsFor, transaction.deadline);
            }
        }
        if (timerWaitsFor == TimeT::max()) {
            timerChanged.wait(lock);
        } else {
            timerChanged.wait_until(lock, timerWaitsFor);
        }
        lock.unlock();
        abortExpired();
        lock.lock();
    }
}

std::size_t TransactionService::getNumberOfTransactions() const
{
    const LockT lock(mutex);
    return transactions.size();
}

}  // namespace ZorvNode
