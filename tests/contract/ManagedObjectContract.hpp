/// What every implementation of managed objects (YaltOamSpiManagedObject_3T) and transactions promises. An implementation
/// joins by giving a provider to INSTANTIATE_TEST_SUITE_P (ObjectProviders.cpp).
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "EventJournal.hpp"
#include "MoValue.hpp"
#include "YaltOamSpiManagedObject_3.h"
#include "YaltOamSpiTransaction_1.h"
#include "ZorvMgmtSpiComponent_1.h"
#include "ZorvOamSpiTransactionMaster_1.h"

namespace ZorvTest {

/// Objects and transactions, alive as long as this object.
///
/// At first there are "Node=1" (attributes "number" uint32 without a value, "names" a sequence 'one', 'two'), its ports
/// "Port=1" ("number" 7) and "Port=2" ("number" 9), and "Sample=1" with an attribute of every type.
class ObjectImplementation {
public:
    virtual ~ObjectImplementation() = default;
    virtual const YaltOamSpiManagedObject_3T* objects() const = 0;
    virtual const ZorvOamSpiTransactionMaster_1T* master() const = 0;
    virtual const YaltOamSpiTransaction_1T* participants() const = 0;
};

/// An implementation that also has a model, time limits and components that implement classes.
///
/// In the model, "number" goes up to 100, "state" of a port is a read-only string, ports are in nodes, a created port has
/// the number 7, and component "AlarmComponent" implements class "Alarm" in nodes. There are at most 20 transactions.
class FullObjectImplementation : public ObjectImplementation {
public:
    static constexpr std::size_t transactionBound = 20;

    virtual void passTime(std::chrono::seconds time) = 0;

    /// From now on the implementation looks at the real time by itself.
    virtual void startTimer() = 0;

    /// A transaction on behalf of management.
    virtual unsigned long beginManagement() = 0;

    virtual void install(const ZorvMgmtSpiComponent_1T* component) = 0;
};

struct ObjectProvider {
    std::string name;
    std::function<std::unique_ptr<ObjectImplementation>()> make;
};

class ManagedObjectContractTest : public testing::TestWithParam<ObjectProvider> {
protected:
    using MoValue = ZorvFakes::MoValue;
    using NamesT = std::vector<std::string>;
    using AttributesT = std::vector<std::pair<std::string, MoValue>>;

    unsigned long begin(std::int32_t lockPolicy = ZORV_LOCK_POLICY_OPTIMISTIC, std::uint32_t timeout = 60);
    ZorvReturnT commit(unsigned long tx) { return master->commitTransaction(tx); }
    ZorvReturnT abort(unsigned long tx) { return master->abortTransaction(tx); }

    /// Type and value: "uint32 7", "string none", "int16 [1, -2]", "struct {name='a' number=5}"; the code of a failure.
    std::string get(unsigned long tx, const std::string& dn, const std::string& attribute);

    /// Several attributes by one call; one text with the code of a failure.
    NamesT get(unsigned long tx, const std::string& dn, const NamesT& attributes);

    /// What a transaction that begins now sees.
    std::string committed(const std::string& dn, const std::string& attribute);
    NamesT committedPorts();

    ZorvReturnT set(unsigned long tx, const std::string& dn, const std::string& attribute, const MoValue& value);

    /// Sets a "number".
    ZorvReturnT set(unsigned long tx, const std::string& dn, std::uint32_t number);

    ZorvReturnT create(unsigned long tx, const std::string& parentDn, const std::string& className,
                       const std::string& key, const AttributesT& attributes = {});

    ZorvReturnT remove(unsigned long tx, const std::string& dn) { return objects->deleteMo(tx, dn.c_str()); }

    /// "true", "false" or the code of a failure.
    std::string exists(unsigned long tx, const std::string& dn);

    /// The number of children or the code of a failure.
    std::string count(unsigned long tx, const std::string& dn, const std::string& className);

    /// One whole iteration; the code of a failure instead.
    NamesT children(unsigned long tx, const std::string& parentDn, const std::string& className);
    NamesT ports(unsigned long tx) { return children(tx, "Node=1", "Port"); }

    const std::unique_ptr<ObjectImplementation> implementation = GetParam().make();
    const YaltOamSpiManagedObject_3T* const objects = implementation->objects();
    const ZorvOamSpiTransactionMaster_1T* const master = implementation->master();
    const YaltOamSpiTransaction_1T* const participants = implementation->participants();
};

/// The same with participants 1 to 3, whose calls write the journal: "r1 prepare TX".
class TransactionContractTest : public ManagedObjectContractTest {
protected:
    TransactionContractTest() { instance = this; }
    ~TransactionContractTest() override { instance = nullptr; }

    static const YaltOamSpiTransactionalResource_1T& resource(int number);

    ZorvReturnT takePart(unsigned long tx, int number)
    {
        return participants->registerParticipant(tx, &resource(number));
    }

    /// A transaction in which the participants up to a number take part.
    unsigned long beginWith(int numberOfParticipants);

    /// What the participants heard of a transaction since the last look, without its handle.
    EventJournal::LinesT heard(unsigned long tx);

    EventJournal journal;

    /// What a participant does in a call, and answers.
    std::function<ZorvReturnT(int number, const std::string& call)> reaction = [](int, const std::string&) {
        return 0;
    };

private:
    template <int number>
    struct Resource;

    ZorvReturnT called(int number, const std::string& call, unsigned long tx);

    static TransactionContractTest* instance;
};

/// Implementations that also have a model, time limits and components that implement classes.
class FullObjectContractTest : public TransactionContractTest {
protected:
    FullObjectImplementation& full = dynamic_cast<FullObjectImplementation&>(*implementation);
};

}  // namespace ZorvTest
