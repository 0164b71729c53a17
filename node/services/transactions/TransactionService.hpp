/// Transactions: who takes part in each, and how it ends - with everybody's changes, or with nobody's.
///
/// At a commit all participants prepare, then the node's own objects commit or refuse (the last word, so that nothing has to
/// be taken back), then all participants commit; at the first refusal all abort. Either way all finish.
///
/// Threads:   any; a transaction belongs to one thread at a time. No lock is held while a participant is called.
/// Ownership: participants' tables stay theirs until their finish has returned.
/// Failure:   return codes of ZorvReturn.h; a participant that throws has refused.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "YaltOamSpiTransactionalResource_1.h"
#include "ZorvOamSpiTransactionMaster_1.h"

namespace ZorvNode {

/// On whose behalf a transaction runs: management may not write what the model calls read-only.
enum class TransactionOrigin { component, management };

/// The node's own objects, as the transaction service sees them.
class OwnParticipant {
public:
    virtual ~OwnParticipant() = default;

    /// Makes the changes take effect, all or none. False: refused.
    virtual bool commit(unsigned long txHandle) = 0;

    /// The transaction is over.
    virtual void finish(unsigned long txHandle) = 0;
};

class TransactionService {
public:
    using ResourceT = const YaltOamSpiTransactionalResource_1T*;
    using TimeT = std::chrono::steady_clock::time_point;
    using ClockT = std::function<TimeT()>;

    explicit TransactionService(std::size_t transactionBound, ClockT steadyClock = &std::chrono::steady_clock::now);
    ~TransactionService();

    TransactionService(const TransactionService&) = delete;
    TransactionService& operator=(const TransactionService&) = delete;

    /// Before the first transaction; null from then on means that there are no own objects.
    void setOwnParticipant(OwnParticipant* participant) { own = participant; }

    ZorvReturnT create(std::int32_t lockPolicy, std::uint32_t timeout, TransactionOrigin origin,
                       unsigned long& txHandle);
    ZorvReturnT commit(unsigned long txHandle);
    ZorvReturnT abort(unsigned long txHandle);
    ZorvReturnT registerParticipant(unsigned long txHandle, ResourceT resource);

    /// Calls the resource's join, once in each transaction. A failing join makes the transaction fail.
    ZorvReturnT joinOnce(unsigned long txHandle, ResourceT resource);

    /// Keeps a transaction from ending for the time of one call. false when there is none to keep.
    class Use {
    public:
        Use(TransactionService& transactionService, unsigned long handle);
        ~Use();
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

        explicit operator bool() const { return held; }

        std::int32_t lockPolicy = ZORV_LOCK_POLICY_NONE;
        TransactionOrigin origin = TransactionOrigin::component;

    private:
        TransactionService& service;
        const unsigned long txHandle;
        bool held = false;
    };

    /// Aborts the transactions whose time is up; one that is in use is aborted after that use.
    void abortExpired();

    /// Calls abortExpired when it is time, on a thread of its own, until stopTimer or the destructor.
    void startTimer();
    void stopTimer();

    std::size_t getNumberOfTransactions() const;

private:
    struct Transaction {
        std::int32_t lockPolicy = ZORV_LOCK_POLICY_NONE;
        TransactionOrigin origin = TransactionOrigin::component;
        TimeT deadline;
        std::vector<ResourceT> participants;
        std::set<ResourceT> joined;
        unsigned uses = 0;
        bool failed = false;
        bool expired = false;
        bool ending = false;
    };

    using TransactionsT = std::map<unsigned long, Transaction>;

    ZorvReturnT beginEnd(unsigned long txHandle, std::vector<ResourceT>& participants, bool& failed);
    bool tryCommit(unsigned long txHandle, const std::vector<ResourceT>& participants);
    void endAborted(unsigned long txHandle, const std::vector<ResourceT>& participants);
    void finish(unsigned long txHandle, const std::vector<ResourceT>& participants);
    void release(unsigned long txHandle);
    void runTimer();

    const std::size_t bound;
    const ClockT clock;
    OwnParticipant* own = nullptr;  // not owned

    mutable std::mutex mutex;
    TransactionsT transactions;    // guarded by mutex
    unsigned long lastHandle = 0;  // guarded by mutex
    std::condition_variable timerChanged;
    TimeT timerWaitsFor = TimeT::max();  // guarded by mutex
    bool stopping = false;               // guarded by mutex
    std::thread timer;
};

}  // namespace ZorvNode
