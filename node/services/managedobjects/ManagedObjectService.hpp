/// Managed objects for every client and for all classes: the node's own from the model file, and those of components.
///
/// Calls for a class with an implementer are passed on to it, after it has joined the transaction. Own objects are read and
/// written on what the transaction sees, and committed with it.
///
/// Threads:   any, for several transactions at once.
/// Ownership: results as in YaltOamSpiManagedObject_3T.
/// Failure:   MoError with the interface's return code. A transaction that does not exist, or has ended, is -2.
#pragma once

#include <atomic>

#include "services/managedobjects/MoImplementers.hpp"
#include "services/managedobjects/MoResults.hpp"
#include "services/managedobjects/MoTransaction.hpp"

namespace ZorvNode {

/// Is told what was committed, in the order of the commits.
class MoChangeListener {
public:
    virtual ~MoChangeListener() = default;

    /// Inside the commit: only notes it down.
    virtual void onChanged(unsigned long txHandle, std::vector<MoChange> changes) = 0;

    /// After the transaction is over: tells what was noted down.
    virtual void onFinished() = 0;
};

class ManagedObjectService : public OwnParticipant {
public:
    ManagedObjectService(MoStore& moStore, TransactionService& transactionService,
                         const InterfacePortal& interfacePortal, MoChangeListener& changeListener);
    ~ManagedObjectService() override;

    std::uint64_t newIterator(unsigned long txHandle, const std::string& parentDn, const std::string& className);

    /// The next "Class=value", null at the end. Every few objects it lets other threads run first: whoever reads many does
    /// not keep the alarms waiting.
    const char* next(std::uint64_t iteratorId);
    void finalizeIterator(std::uint64_t iteratorId);

    bool exists(unsigned long txHandle, const std::string& dn);
    std::uint64_t countChildren(unsigned long txHandle, const std::string& dn, const std::string& className);

    void getAttribute(unsigned long txHandle, const std::string& dn, const std::string& attribute,
                      YaltOamSpiMoAttributeResult_3T& result);
    void getAttributes(unsigned long txHandle, const std::string& dn, const char* const* attributes,
                       YaltOamSpiMoAttributesResult_3T& results);
    void setAttribute(unsigned long txHandle, const std::string& dn, const std::string& attribute,
                      const YaltOamSpiMoAttribute_3T& value);
    void create(unsigned long txHandle, const std::string& parentDn, const std::string& className,
                const std::string& keyValue, const YaltOamSpiMoNamedAttribute_3T* attributes,
                std::uint32_t numberOfAttributes);
    void remove(unsigned long txHandle, const std::string& dn);
    void action(unsigned long txHandle, const std::string& dn, const std::string& actionName,
                const YaltOamSpiMoNamedAttribute_3T* parameters, std::uint32_t numberOfParameters,
                YaltOamSpiMoAttributeResult_3T& result);

    /// Rereads nothing itself: takes a checked file into use and tells the differences.
    void replaceModel(ModelFile file);

    bool commit(unsigned long txHandle) override;
    void finish(unsigned long txHandle) override;

    std::uint64_t getNumberOfCommits() const { return numberOfCommits; }

    /// Those of them that wrote something.
    std::uint64_t getNumberOfChanges() const { return numberOfChanges; }

    /// Commits in which a component wrote the read-only attribute of an object of the class.
    struct Watched {
        std::string className;
        std::string attribute;
    };
    void watch(Watched attribute) { watched = std::move(attribute); }
    std::uint64_t getNumberOfWatchedCommits() const { return numberOfWatchedCommits; }
    MoResults& getResults() { return results; }

private:
    class Call;

    MoStore& store;
    TransactionService& transactions;
    const MoImplementers implementers;
    MoChangeListener& listener;
    MoResults results;
    std::atomic<std::uint64_t> numberOfCommits{0};
    std::atomic<std::uint64_t> numberOfChanges{0};
    Watched watched;  // set before there is a transaction
    std::atomic<std::uint64_t> numberOfWatchedCommits{0};

    std::mutex mutex;
    std::map<unsigned long, std::shared_ptr<MoTransaction>> views;  // guarded by mutex
};

}  // namespace ZorvNode
