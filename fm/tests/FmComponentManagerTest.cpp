#include "FmComponentManager.hpp"

#include "FmTest.hpp"

using testing::ElementsAre;
using ZorvFakes::Topic;

namespace ZorvFm {
namespace {

const int table = 0;

/// Fills the table and refuses it all the same.
ZorvReturnT refuse(const char*, const char*, const char*, const void** interfaceTable)
{
    *interfaceTable = &table;
    return ZORV_RETURN_FAILED;
}

class FmComponentManagerTest : public FmTest {
protected:
    FmComponentManagerTest()
    {
        middleware.portal.offer("Service", "Interface", "2", &table);
        middleware.journal.show({Topic::Trace, Topic::Lookup});
    }

    FmComponentManager& manager = FmComponentManager::instance();
};

TEST_F(FmComponentManagerTest, findsAnInterfaceByComponentNameAndVersion)
{
    EXPECT_EQ(&table, manager.getInterface({"Service", "Interface", "2"}));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Try to get interface Interface",
                                       "getInterface Service Interface 2 -> 0", "trace 8 FM  << "));
}

TEST_F(FmComponentManagerTest, leavesOpenWhatIsNull)
{
    EXPECT_EQ(&table, manager.getInterface({nullptr, "Interface", nullptr}));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Try to get interface Interface",
                                       "getInterface - Interface - -> 0", "trace 8 FM  << "));
}

TEST_F(FmComponentManagerTest, anInterfaceThatNobodyProvidesIsNull)
{
    EXPECT_EQ(nullptr, manager.getInterface({"Service", "Interface", "1"}));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Try to get interface Interface",
                                       "getInterface Service Interface 1 -> -2", "trace 8 FM  << "));
}

TEST_F(FmComponentManagerTest, aTableThatComesWithAnErrorCodeIsNotUsed)
{
    const ZorvMgmtSpiPortal_1T portal{nullptr, nullptr, &refuse};
    manager.setPortal(&portal);

    EXPECT_EQ(nullptr, manager.getInterface({"Service", "Interface", "2"}));
}

TEST_F(FmComponentManagerTest, withoutAPortalNothingIsFound)
{
    manager.setPortal(nullptr);

    EXPECT_EQ(nullptr, manager.getInterface({"Service", "Interface", "2"}));

    EXPECT_THAT(journal(), ElementsAre("trace 8 FM  >> Try to get interface Interface", "trace 8 FM  << "));
}

}  // namespace
}  // namespace ZorvFm
