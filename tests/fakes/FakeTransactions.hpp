/// The transaction service: owner's side, and participant's side under both of its names.
///
/// Handles count from 1. At the end of a transaction its participants are driven (prepare, commit, finish, or abort,
/// finish), then those who watch are told.
///
/// Entries: "createTransaction 1 60 -> 0" (lock policy, timeout), "commitTransaction -> 0", "abortTransaction -> 0",
/// "registerParticipant -> 0". A call for an unknown transaction answers -2.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <vector>

#include "Fake.hpp"
#include "YaltOamSpiTransaction_1.h"
#include "ZorvOamSpiTransactionMaster_1.h"

namespace ZorvFakes {

class FakeTransactions : public Fake<FakeTransactions> {
public:
    /// Told of the end of a transaction: committed or not.
    using EndWatcher = std::function<void(unsigned long txHandle, bool committed)>;

    explicit FakeTransactions(Journal& journal);

    static const ZorvOamSpiTransactionMaster_1T* masterTable();
    static const YaltOamSpiTransaction_1T* participantTable();

    void onEnd(EndWatcher watcher);

    /// Opens a transaction without any call or entry, for tests that play the management side.
    unsigned long open();

    bool isOpen(unsigned long txHandle) const;
    unsigned begun() const;
    unsigned committed() const;
    unsigned aborted() const;

    // The operations behind the tables.
    int32_t createTransaction(int32_t lockPolicy, uint32_t timeout, unsigned long* txHandle);
    int32_t commitTransaction(unsigned long txHandle);
    int32_t abortTransaction(unsigned long txHandle);
    int32_t registerParticipant(unsigned long txHandle, const YaltOamSpiTransactionalResource_1T* resource);

private:
    using Participants = std::vector<const YaltOamSpiTransactionalResource_1T*>;

    bool takeOut(unsigned long txHandle, Participants& participants);
    void end(unsigned long txHandle, const Participants& participants, bool commit);

    mutable std::mutex mutex;
    std::map<unsigned long, Participants> openOnes;  // guarded by mutex, as all below
    std::set<unsigned long> endingOnes;
    EndWatcher watcher;
    unsigned long lastHandle = 0;
    unsigned begunCount = 0;
    unsigned committedCount = 0;
    unsigned abortedCount = 0;
};

}  // namespace ZorvFakes
