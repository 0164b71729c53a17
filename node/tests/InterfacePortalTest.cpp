#include "portal/InterfacePortal.hpp"

#include <gmock/gmock.h>

#include <thread>

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
    std::vector<ZorvMgmtSpiComponent_1T> incomplete(8, component);
    incomplete[0].componentName = nullptr;
    incomplete[1].componentName = "";
    incomplete[2].offeredInterfaces = nullptr;
    incomplete[3].requiredInterfaces = nullptr;
    incomplete[4].optionalInterfaces = nullptr;
    incomplete[5].start = nullptr;
    incomplete[6].stop = nullptr;
    incomplete[7].getInterface = nullptr;

    EXPECT_EQ(-1, portal.registerComponent(nullptr));
    for (const ZorvMgmtSpiComponent_1T& descriptor : incomplete) {
        EXPECT_EQ(-1, portal.registerComponent(&descriptor));
    }
    EXPECT_THAT(portal.getComponents(), ::testing::IsEmpty());
}

TEST_F(InterfacePortalTest, onlyTheDescriptorItselfIsUnregistered)
{
    const ZorvMgmtSpiComponent_1T equal = component;
    portal.registerComponent(&component);

    EXPECT_EQ(-2, portal.unregisterComponent(&equal));
    EXPECT_EQ(-2, portal.unregisterComponent(nullptr));

    EXPECT_THAT(portal.getComponents(), ::testing::ElementsAre(&component));
}

TEST_F(InterfacePortalTest, componentsKeepTheOrderOfTheirRegistration)
{
    ZorvMgmtSpiComponent_1T second = component;
    second.componentName = "A";
    ZorvMgmtSpiComponent_1T third = component;
    third.componentName = "B";
    portal.registerComponent(&component);
    portal.registerComponent(&second);
    portal.registerComponent(&third);

    portal.unregisterComponent(&second);
    portal.registerComponent(&second);

    EXPECT_THAT(portal.getComponents(), ::testing::ElementsAre(&component, &third, &second));
}

TEST_F(InterfacePortalTest, refusedNamesAreToldOnce)
{
    portal.registerComponent(&component);
    portal.registerComponent(&component);

    EXPECT_THAT(portal.takeRefusedNames(), ::testing::ElementsAre("Fm"));
    EXPECT_THAT(portal.takeRefusedNames(), ::testing::IsEmpty());
}

TEST_F(InterfacePortalTest, aComponentThatIsGoneOffersNothing)
{
    portal.registerComponent(&component);
    portal.unregisterComponent(&component);

    EXPECT_EQ(nullptr, find("Fm", "YaltOamSpiManagedObject", "3"));
    EXPECT_EQ(nullptr, find(nullptr, "YaltOamSpiManagedObject", nullptr));
}

TEST_F(InterfacePortalTest, whoeverHasNoTableIsPassedOver)
{
    ZorvMgmtSpiComponent_1T silent = component;
    silent.componentName = "Silent";
    silent.getInterface = [](const ZorvMgmtSpiInterface_1*) -> const void* { return nullptr; };
    portal.registerComponent(&silent);
    portal.registerComponent(&component);

    EXPECT_EQ(nullptr, find("Silent", "YaltOamSpiManagedObject", "3"));
    EXPECT_EQ(&offeredTable, find(nullptr, "YaltOamSpiManagedObject", "3"));
}

TEST_F(InterfacePortalTest, aComponentMayUseThePortalWhenItIsAsked)
{
    const PortalTables tables(portal);
    ZorvMgmtSpiComponent_1T curious = component;
    curious.componentName = "Curious";
    curious.getInterface = [](const ZorvMgmtSpiInterface_1*) {
        const auto* one = static_cast<const ZorvMgmtSpiPortal_1T*>(PortalTables::accessor()->getPortal("1"));
        const void* table = nullptr;
        EXPECT_EQ(0, one->getInterface("ZorvNode", "ZorvMwSpiLog", "1", &table));
        return table;
    };
    portal.provide("ZorvNode", "ZorvMwSpiLog", "1", &logService);
    portal.registerComponent(&curious);

    EXPECT_EQ(&logService, find("Curious", "YaltOamSpiManagedObject", "3"));
}

TEST_F(InterfacePortalTest, interfacesAreFoundWhileComponentsComeAndGo)
{
    portal.provide("ZorvNode", "ZorvMwSpiLog", "1", &logService);
    std::thread registering([this] {
        for (int round = 0; round < 500; ++round) {
            EXPECT_EQ(0, portal.registerComponent(&component));
            EXPECT_EQ(0, portal.unregisterComponent(&component));
        }
    });

    for (int round = 0; round < 500; ++round) {
        EXPECT_EQ(&logService, find(nullptr, "ZorvMwSpiLog", "1"));
        find("Fm", "YaltOamSpiManagedObject", "3");
    }

    registering.join();
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
