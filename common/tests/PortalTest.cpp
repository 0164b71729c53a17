#include "Portal.hpp"

#include "CommonTest.hpp"
#include "ZorvMwSpiLog_1.h"

using testing::ElementsAre;
using testing::IsEmpty;
using ZorvFakes::FakeLog;
using ZorvFakes::FakeTransactions;
using ZorvFakes::Topic;

namespace Zorv {
namespace {

class PortalTest : public CommonTest {
protected:
    PortalTest() { middleware.journal.show({Topic::Lookup}); }

    Portal& portal = Portal::instance();
};

TEST_F(PortalTest, openTakesThePortalOfVersion1)
{
    portal.open(middleware.accessor());

    EXPECT_THAT(journal(), ElementsAre("getPortal 1"));
}

TEST_F(PortalTest, givesTheTableThatThePortalGives)
{
    EXPECT_EQ(FakeLog::table(), portal.get<ZorvMwSpiLog_1T>(nullptr, "ZorvMwSpiLog", "1"));
    EXPECT_EQ(FakeTransactions::masterTable(),
              portal.getInterface("ZorvOamSpiTransactionService", "ZorvOamSpiTransactionMaster", "1"));
    EXPECT_NE(nullptr, portal.getInterface(nullptr, "YaltMwSpiTrace", nullptr));

    EXPECT_THAT(journal(), ElementsAre("getInterface - ZorvMwSpiLog 1 -> 0",
                                       "getInterface ZorvOamSpiTransactionService ZorvOamSpiTransactionMaster 1 -> 0",
                                       "getInterface - YaltMwSpiTrace - -> 0"));
}

TEST_F(PortalTest, anInterfaceThatNobodyProvidesIsNull)
{
    EXPECT_EQ(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "2"));
    EXPECT_EQ(nullptr, portal.getInterface("SomebodyElse", "ZorvMwSpiLog", "1"));
    EXPECT_EQ(nullptr, portal.getInterface(nullptr, "Unknown", "1"));
}

TEST_F(PortalTest, aFailingLookUpIsNull)
{
    middleware.portal.failNext("getInterface", ZORV_RETURN_FAILED);

    EXPECT_EQ(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "1"));
    EXPECT_NE(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "1"));
}

TEST_F(PortalTest, interfacesAreLookedUpAnewEachTime)
{
    middleware.portal.withdraw("ZorvMwSpiLog");
    EXPECT_EQ(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "1"));

    middleware.offerAll();
    EXPECT_NE(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "1"));
}

TEST_F(PortalTest, withoutAPortalEverythingIsNull)
{
    middleware.portal.setPresent("1", false);
    portal.open(middleware.accessor());

    EXPECT_EQ(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "1"));
    EXPECT_THAT(journal(), ElementsAre("getPortal 1"));
}

TEST_F(PortalTest, aClosedPortalIsNotAsked)
{
    portal.open(nullptr);

    EXPECT_EQ(nullptr, portal.getInterface(nullptr, "ZorvMwSpiLog", "1"));
    EXPECT_THAT(journal(), IsEmpty());
}

}  // namespace
}  // namespace Zorv
