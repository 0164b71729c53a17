#include "FakeTransactions.hpp"

#include <algorithm>
#include <utility>

namespace ZorvFakes {

namespace {

constexpr uint32_t longestTimeout = 86400;

const ZorvOamSpiTransactionMaster_1T theMasterTable = {forward<&FakeTransactions::createTransaction>,
                                                       forward<&FakeTransactions::commitTransaction>,
                                                       forward<&FakeTransactions::abortTransaction>};

const YaltOamSpiTransaction_1T theParticipantTable = {forward<&FakeTransactions::registerParticipant>};

}  // namespace

FakeTransactions::FakeTransactions(Journal& theJournal) : Fake(theJournal, Topic::Transaction)
{
}

const ZorvOamSpiTransactionMaster_1T* FakeTransactions::masterTable()
{
    return &theMasterTable;
}

const YaltOamSpiTransaction_1T* FakeTransactions::participantTable()
{
    return &theParticipantTable;
}

void FakeTransactions::onEnd(EndWatcher theWatcher)
{
    const std::lock_guard<std::mutex> lock(mutex);
    watcher = std::move(theWatcher);
}

unsigned long FakeTransactions::open()
{
    const std::lock_guard<std::mutex> lock(mutex);
    ++begunCount;
    openOnes[++lastHandle] = {};
    return lastHandle;
}

bool FakeTransactions::isOpen(unsigned long txHandle) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return openOnes.count(txHandle) != 0;
}

unsigned FakeTransactions::begun() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return begunCount;
}

unsigned FakeTransactions::committed() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return committedCount;
}

unsigned FakeTransactions::aborted() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return abortedCount;
}

int32_t FakeTransactions::createTransaction(int32_t lockPolicy, uint32_t timeout, unsigned long* txHandle)
{
    const std::string call = "createTransaction " + std::to_string(lockPolicy) + " " + std::to_string(timeout);
    return answer(call, [&](std::string&) -> int32_t {
        const bool knownPolicy = lockPolicy == ZORV_LOCK_POLICY_NONE || lockPolicy == ZORV_LOCK_POLICY_OPTIMISTIC;
        if (!knownPolicy || timeout == 0 || timeout > longestTimeout) {
            return ZORV_RETURN_FAILED;
        }
        *txHandle = open();
        return ZORV_RETURN_OK;
    });
}

int32_t FakeTransactions::commitTransaction(unsigned long txHandle)
{
    Participants participants;
    bool ended = false;
    const int32_t code = answer("commitTransaction", [&](std::string&) -> int32_t {
        ended = takeOut(txHandle, participants);
        if (!ended) {
            return ZORV_RETURN_NOT_FOUND;
        }
        const bool agreed = std::all_of(participants.begin(), participants.end(),
                                        [&](const auto* resource) { return resource->prepare(txHandle) == 0; });
        return agreed ? ZORV_RETURN_OK : ZORV_RETURN_FAILED;
    });
    // A commit that fails by plan ends the transaction as a failed one does.
    if (ended || takeOut(txHandle, participants)) {
        end(txHandle, participants, code == ZORV_RETURN_OK);
    }
    return code;
}

int32_t FakeTransactions::abortTransaction(unsigned long txHandle)
{
    Participants participants;
    const int32_t code = answer("abortTransaction", [&](std::string&) -> int32_t {
        return takeOut(txHandle, participants) ? ZORV_RETURN_OK : ZORV_RETURN_NOT_FOUND;
    });
    if (code == ZORV_RETURN_OK) {
        end(txHandle, participants, false);
    }
    return code;
}

int32_t FakeTransactions::registerParticipant(unsigned long txHandle,
                                              const YaltOamSpiTransactionalResource_1T* resource)
{
    return answer("registerParticipant", [&](std::string&) -> int32_t {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto found = openOnes.find(txHandle);
        if (found == openOnes.end()) {
            return endingOnes.count(txHandle) != 0 ? ZORV_RETURN_FAILED : ZORV_RETURN_NOT_FOUND;
        }
        Participants& participants = found->second;
        if (std::find(participants.begin(), participants.end(), resource) == participants.end()) {
            participants.push_back(resource);
        }
        return ZORV_RETURN_OK;
    });
}

bool FakeTransactions::takeOut(unsigned long txHandle, Participants& participants)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = openOnes.find(txHandle);
    if (found == openOnes.end()) {
        return false;
    }
    participants = std::move(found->second);
    openOnes.erase(found);
    endingOnes.insert(txHandle);
    return true;
}

void FakeTransactions::end(unsigned long txHandle, const Participants& participants, bool commit)
{
    for (const auto* resource : participants) {
        (commit ? resource->commit : resource->abort)(txHandle);
    }
    for (const auto* resource : participants) {
        resource->finish(txHandle);
    }
    EndWatcher told;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        endingOnes.erase(txHandle);
        ++(commit ? committedCount : abortedCount);
        told = watcher;
    }
    if (told) {
        told(txHandle, commit);
    }
}

}  // namespace ZorvFakes
