#include "services/managedobjects/MoImplementers.hpp"

#include <gtest/gtest.h>

#include "services/managedobjects/MoError.hpp"

namespace ZorvNode {

namespace {

const ZorvMgmtSpiInterface_1 objects = {"Fm", "YaltOamSpiManagedObject", "3"};
const ZorvMgmtSpiInterface_1 resource = {"Fm", "YaltOamSpiTransactionalResource", "1"};
const ZorvMgmtSpiInterface_1* const offered[] = {&objects, &resource, nullptr};
const ZorvMgmtSpiInterface_1* const none[] = {nullptr};

YaltReturnT agree(unsigned long)
{
    return ZORV_RETURN_OK;
}

ZorvReturnT startOrStop(ZorvStateChangeReason)
{
    return ZORV_RETURN_OK;
}

const YaltOamSpiTransactionalResource_1T participant = {&agree, &agree, &agree, &agree, &agree};
const YaltOamSpiManagedObject_3T first{};
const YaltOamSpiManagedObject_3T second{};
const YaltOamSpiManagedObject_3T* offeredObjects = nullptr;
int timesAsked = 0;

const void* getInterface(const ZorvMgmtSpiInterface_1* identity)
{
    ++timesAsked;
    return identity == &resource ? static_cast<const void*>(&participant) : offeredObjects;
}

const ZorvMgmtSpiComponent_1T component = {"Fm", offered, none, none, &startOrStop, &startOrStop, &getInterface};

}  // namespace

class MoImplementersTest : public ::testing::Test {
protected:
    MoImplementersTest()
    {
        offeredObjects = &first;
        timesAsked = 0;
        portal.registerComponent(&component);
        transactions.create(ZORV_LOCK_POLICY_NONE, 60, TransactionOrigin::management, txHandle);
    }

    const YaltOamSpiManagedObject_3T* get() const { return &implementers.get(txHandle, "Fm"); }

    InterfacePortal portal;
    TransactionService transactions{10};
    const MoImplementers implementers{portal, transactions};
    unsigned long txHandle = 0;
};

TEST_F(MoImplementersTest, aComponentIsAskedForItsTablesOnce)
{
    EXPECT_EQ(&first, get());
    EXPECT_EQ(&first, get());

    EXPECT_EQ(2, timesAsked);
}

TEST_F(MoImplementersTest, aComponentThatWasStartedOrStoppedIsAskedAgain)
{
    get();
    offeredObjects = &second;
    portal.noteChange();

    EXPECT_EQ(&second, get());
}

TEST_F(MoImplementersTest, aComponentThatHasGoneIsNotUsedAnyMore)
{
    get();
    portal.unregisterComponent(&component);

    EXPECT_THROW(get(), MoError);
}

}  // namespace ZorvNode
