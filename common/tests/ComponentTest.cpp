#include "Component.hpp"

#include <stdexcept>

#include "CommonTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace Zorv {
namespace {

/// A component of the first framework that tells what it is asked; one class for each test, because its object lives as
/// long as the process.
template <int testNumber>
class Probe : public Component<Probe<testNumber>> {
public:
    Probe() : Component<Probe>("ProbeComponent")
    {
        this->offered = {{"ProbeComponent", "ZorvMgmtSpiComponent", "1"}};
        this->required = {{nullptr, "ZorvMwSpiLog", "1"}, {nullptr, "YaltMwSpiTrace", nullptr}};
    }

    int initialize(const char* config) override
    {
        told.push_back(std::string("initialize ") + config);
        return initializeResult;
    }

    void terminate() override { told.emplace_back("terminate"); }

    int start(ZorvStateChangeReason reason) override
    {
        told.push_back("start " + std::to_string(reason));
        if (reason == ZORV_STATE_CHANGE_FAIL_OVER) {
            throw std::runtime_error("%s cannot");
        }
        return 0;
    }

    int stop(ZorvStateChangeReason reason) override
    {
        told.push_back("stop " + std::to_string(reason));
        if (reason == ZORV_STATE_CHANGE_FAIL_OVER) {
            throw 5;
        }
        return -1;
    }

    const void* getInterface(const ZorvMgmtSpiInterface_1& identity) const override
    {
        return identity.interfaceName == std::string("ZorvMgmtSpiComponent") ? this : nullptr;
    }

    bool isMarkedStarted() const { return this->started; }
    void markStarted() { this->started = true; }

    std::vector<std::string> told;
    int initializeResult = 0;
};

class ComponentTest : public CommonTest {
protected:
    const ZorvMgmtSpiComponent_1T& descriptor() { return *middleware.portal.component("ProbeComponent"); }
};

std::vector<std::string> texts(const ZorvMgmtSpiInterface_1* const* identities)
{
    const auto shown = [](const char* text) { return std::string(text ? text : "-"); };
    std::vector<std::string> all;
    for (; *identities; ++identities) {
        all.push_back(shown((*identities)->componentName) + " " + shown((*identities)->interfaceName) + " " +
                      shown((*identities)->interfaceVersion));
    }
    return all;
}

TEST_F(ComponentTest, openRegistersWithThePortalOfVersion3AndInitializes)
{
    auto& probe = Probe<1>::instance();

    EXPECT_TRUE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 3", "registerComponent 3 ProbeComponent -> 0"));
    EXPECT_THAT(probe.told, ElementsAre("initialize file.xml"));
}

TEST_F(ComponentTest, theDescriptorShowsNameAndInterfaces)
{
    Probe<2>::instance().open(*middleware.accessor(), "");

    EXPECT_STREQ("ProbeComponent", descriptor().componentName);
    EXPECT_THAT(texts(descriptor().offeredInterfaces), ElementsAre("ProbeComponent ZorvMgmtSpiComponent 1"));
    EXPECT_THAT(texts(descriptor().requiredInterfaces), ElementsAre("- ZorvMwSpiLog 1", "- YaltMwSpiTrace -"));
    EXPECT_THAT(texts(descriptor().optionalInterfaces), IsEmpty());
}

TEST_F(ComponentTest, theDescriptorsCallbacksReachTheObject)
{
    auto& probe = Probe<3>::instance();
    probe.open(*middleware.accessor(), "");
    probe.told.clear();

    EXPECT_EQ(0, descriptor().start(ZORV_STATE_CHANGE_ACTIVATE));
    EXPECT_EQ(-1, descriptor().stop(ZORV_STATE_CHANGE_SWITCH_OVER));
    const ZorvMgmtSpiInterface_1 unknown{nullptr, "Unknown", "1"};
    EXPECT_EQ(&probe, descriptor().getInterface(descriptor().offeredInterfaces[0]));
    EXPECT_EQ(nullptr, descriptor().getInterface(&unknown));

    EXPECT_THAT(probe.told, ElementsAre("start 1", "stop 4"));
}

TEST_F(ComponentTest, exceptionsNeverReachTheMiddleware)
{
    Probe<4>::instance().open(*middleware.accessor(), "");
    journal();

    EXPECT_EQ(-1, descriptor().start(ZORV_STATE_CHANGE_FAIL_OVER));
    EXPECT_EQ(-1, descriptor().stop(ZORV_STATE_CHANGE_FAIL_OVER));

    EXPECT_THAT(journal(), ElementsAre("log 3 Component start: %s cannot", "log 3 Component stop: unknown exception"));
}

TEST_F(ComponentTest, registrationClearsTheStartedMark)
{
    auto& probe = Probe<5>::instance();
    probe.markStarted();

    probe.open(*middleware.accessor(), "");

    EXPECT_FALSE(probe.isMarkedStarted());
}

TEST_F(ComponentTest, withoutAPortalOfVersion3ThatOfVersion1IsUsed)
{
    middleware.portal.setPresent("3", false);
    auto& probe = Probe<6>::instance();

    EXPECT_TRUE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 3", "registerComponent 1 ProbeComponent -> 0"));
    EXPECT_THAT(probe.told, ElementsAre("initialize file.xml"));
}

TEST_F(ComponentTest, withoutAPortalOfVersion1NothingIsRegistered)
{
    middleware.portal.setPresent("1", false);
    auto& probe = Probe<7>::instance();

    EXPECT_FALSE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 3"));
    EXPECT_THAT(probe.told, IsEmpty());
}

TEST_F(ComponentTest, aRefusedRegistrationFailsWithoutInitializing)
{
    middleware.portal.failNext("registerComponent", ZORV_RETURN_EXISTS);
    auto& probe = Probe<8>::instance();

    EXPECT_FALSE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(probe.told, IsEmpty());
}

TEST_F(ComponentTest, aFailedInitializationFails)
{
    auto& probe = Probe<9>::instance();
    probe.initializeResult = -1;

    EXPECT_FALSE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(middleware.portal.components(), ElementsAre("ProbeComponent"));
}

TEST_F(ComponentTest, closeUnregistersOnce)
{
    auto& probe = Probe<10>::instance();
    probe.open(*middleware.accessor(), "");
    journal();

    probe.close();
    probe.close();

    EXPECT_THAT(journal(), ElementsAre("unregisterComponent 3 ProbeComponent -> 0"));
}

TEST_F(ComponentTest, aRegistrationWithVersion1IsNotTakenBack)
{
    middleware.portal.setPresent("3", false);
    auto& probe = Probe<11>::instance();
    probe.open(*middleware.accessor(), "");
    journal();

    probe.close();

    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_THAT(middleware.portal.components(), ElementsAre("ProbeComponent"));
}

TEST_F(ComponentTest, canBeOpenedAgainAfterItsClose)
{
    auto& probe = Probe<12>::instance();
    probe.open(*middleware.accessor(), "a.xml");
    probe.close();
    journal();

    EXPECT_TRUE(probe.open(*middleware.accessor(), "b.xml"));

    EXPECT_THAT(journal(), ElementsAre("getPortal 1", "getPortal 3", "registerComponent 3 ProbeComponent -> 0"));
    EXPECT_THAT(texts(descriptor().requiredInterfaces), ElementsAre("- ZorvMwSpiLog 1", "- YaltMwSpiTrace -"));
}

}  // namespace
}  // namespace Zorv
