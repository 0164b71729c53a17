#include "portal/InterfacePortal.hpp"

#include <gmock/gmock.h>

#include "ZorvMgmtSpiPortal_1.h"
#include "ZorvMgmtSpiPortal_3.h"
#include "portal/PortalTables.hpp"

namespace ZorvNode {

namespace {

int logService = 0;
int offeredTable = 0;

const ZorvMgmtSpiInterface_1 objects = {"Fm", "YaltOamSpiManagedObject", "3"};
const ZorvMgmtSpiInterface_1 broken = {"Fm", "Broken", "1"};
const ZorvMgmtSpiInterface_1* const offered[] = {&objects, &broken, nullptr};
const ZorvMgmtSpiInterface_1* const none[] = {nullptr};

ZorvReturnT startOrStop(ZorvStateChangeReason)
{
    return 0;
}

const void* getInterface(const ZorvMgmtSpiInterface_1* identity)
{
    if (identity == &broken) {
        throw 7;
    }
    return &offeredTable;
}

const ZorvMgmtSpiComponent_1T component = {"Fm", offered, none, none, &startOrStop, &startOrStop, &getInterface};

}  // namespace

class InterfacePortalTest : public ::testing::Test {
protected:
    const void* find(const char* name, const char* interface, const char* version)
    {
        const void* table = &portal;
        const ZorvReturnT code = portal.getInterface(name, interface, version, &table);
        EXPECT_EQ(table != nullptr ? 0 : -2, code);
        return table;
    }

    InterfacePortal portal;
};

TEST_F(InterfacePortalTest, aServiceIsFoundByNameByAnyNameAndByItsOnlyVersion)
{
    portal.provide("ZorvNode", "ZorvMwSpiLog", "1", &logService);

    EXPECT_EQ(&logService, find("ZorvNode", "ZorvMwSpiLog", "1"));
    EXPECT_EQ(&logService, find(nullptr, "ZorvMwSpiLog", "1"));
    EXPECT_EQ(&logService, find(nullptr, "ZorvMwSpiLog", nullptr));
}

TEST_F(InterfacePortalTest, anotherProviderInterfaceOrVersionIsNotFound)
{
    portal.provide("ZorvNode", "ZorvMwSpiLog", "1", &logService);

    EXPECT_EQ(nullptr, find("Another", "ZorvMwSpiLog", "1"));
    EXPECT_EQ(nullptr, find(nullptr, "ZorvMwSpiTrace", "1"));
    EXPECT_EQ(nullptr, find(nullptr, "ZorvMwSpiLog", "2"));
}

TEST_F(InterfacePortalTest, aComponentsOfferIsAskedFromItsDescriptor)
{
    portal.registerComponent(&component);

    EXPECT_EQ(&offeredTable, find("Fm", "YaltOamSpiManagedObject", "3"));
    EXPECT_EQ(nullptr, find("Fm", "YaltOamSpiManagedObject", "2"));
}

TEST_F(InterfacePortalTest, aComponentThatThrowsWhenAskedProvidesNothing)
{
    portal.registerComponent(&component);

    EXPECT_EQ(nullptr, find("Fm", "Broken", "1"));
}

TEST_F(InterfacePortalTest, aNameIsRegisteredOnce)
{
    EXPECT_EQ(0, portal.registerComponent(&component));
    EXPECT_EQ(-3, portal.registerComponent(&component));
    EXPECT_EQ(0, portal.unregisterComponent(&component));
    EXPECT_EQ(-2, portal.unregisterComponent(&component));
}

TEST_F(InterfacePortalTest, incompleteDescriptorsAreRefused)
{
    ZorvMgmtSpiComponent_1T incomplete = component;
    incomplete.requiredInterfaces = nullptr;

    EXPECT_EQ(-1, portal.registerComponent(nullptr));
    EXPECT_EQ(-1, portal.registerComponent(&incomplete));
}

TEST_F(InterfacePortalTest, theAccessorKnowsVersionsOneAndThree)
{
    const PortalTables tables(portal);
    const auto* accessor = PortalTables::accessor();

    EXPECT_NE(nullptr, accessor->getPortal("1"));
    EXPECT_NE(nullptr, accessor->getPortal("3"));
    EXPECT_EQ(nullptr, accessor->getPortal("2"));
    EXPECT_EQ(nullptr, accessor->getPortal(nullptr));
}

TEST_F(InterfacePortalTest, bothPortalsSeeTheSameComponents)
{
    const PortalTables tables(portal);
    const auto* one = static_cast<const ZorvMgmtSpiPortal_1T*>(PortalTables::accessor()->getPortal("1"));
    const auto* three = static_cast<const ZorvMgmtSpiPortal_3T*>(PortalTables::accessor()->getPortal("3"));
    const void* table = nullptr;

    EXPECT_EQ(0, three->registerComponent(&component));
    EXPECT_EQ(-3, one->registerComponent(&component));
    EXPECT_EQ(0, one->getInterface("Fm", "YaltOamSpiManagedObject", nullptr, &table));
    EXPECT_EQ(-1, one->getInterface("Fm", nullptr, nullptr, &table));
}

}  // namespace ZorvNode
