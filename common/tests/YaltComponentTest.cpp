#include "YaltComponent.hpp"

#include <stdexcept>

#include "CommonTest.hpp"
#include "Portal.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace Zorv {
namespace {

/// A component of the second framework that tells what it is asked; one class for each test, because its object lives as
/// long as the process.
template <int testNumber>
class YaltProbe : public YaltComponent<YaltProbe<testNumber>> {
public:
    YaltProbe() : YaltComponent<YaltProbe>("YaltProbeComponent")
    {
        this->offered = {{"YaltProbeComponent", "YaltOamSpiManagedObject", "3"}};
    }

    YaltReturnT initialize(const char* config) override
    {
        told.push_back(std::string("initialize ") + config);
        return initializeResult;
    }

    YaltReturnT start(YaltStateChangeReason reason) override
    {
        told.push_back("start " + std::to_string(reason));
        return 0;
    }

    YaltReturnT stop(YaltStateChangeReason) override { throw std::runtime_error("cannot"); }

    YaltReturnT terminate() override
    {
        told.emplace_back("terminate");
        return -7;
    }

    const void* getInterface(const ZorvMgmtSpiInterface_1& identity) const override
    {
        return identity.interfaceName == std::string("YaltOamSpiManagedObject") ? this : nullptr;
    }

    std::vector<std::string> told;
    YaltReturnT initializeResult = 0;
};

using YaltComponentTest = CommonTest;

TEST_F(YaltComponentTest, openRegistersWithThePortalOfVersion3AndInitializes)
{
    auto& probe = YaltProbe<1>::instance();

    EXPECT_TRUE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(journal(), ElementsAre("getPortal 3", "getPortal 1", "registerComponent 3 YaltProbeComponent -> 0"));
    EXPECT_THAT(probe.told, ElementsAre("initialize file.xml"));
}

TEST_F(YaltComponentTest, itsInterfacesAreFoundThroughThePortal)
{
    auto& probe = YaltProbe<2>::instance();
    probe.open(*middleware.accessor(), "");

    EXPECT_EQ(&probe, Portal::instance().getInterface("YaltProbeComponent", "YaltOamSpiManagedObject", "3"));
    EXPECT_EQ(nullptr, Portal::instance().getInterface("YaltProbeComponent", "YaltOamSpiManagedObject", "2"));
}

TEST_F(YaltComponentTest, theCallbacksReachTheObjectAndLetNoExceptionOut)
{
    auto& probe = YaltProbe<3>::instance();
    probe.open(*middleware.accessor(), "");
    journal();
    const ZorvMgmtSpiComponent_1T& descriptor = *middleware.portal.component("YaltProbeComponent");

    EXPECT_EQ(0, descriptor.start(ZORV_STATE_CHANGE_SWITCH_OVER));
    EXPECT_EQ(-1, descriptor.stop(ZORV_STATE_CHANGE_DEACTIVATE));

    EXPECT_THAT(probe.told, ElementsAre("initialize ", "start 4"));
    EXPECT_THAT(journal(), ElementsAre("log 3 Component stop: cannot"));
}

TEST_F(YaltComponentTest, withoutAPortalOfVersion3NothingIsRegistered)
{
    middleware.portal.setPresent("3", false);
    auto& probe = YaltProbe<4>::instance();

    EXPECT_FALSE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(journal(), ElementsAre("getPortal 3", "getPortal 1"));
    EXPECT_THAT(probe.told, IsEmpty());
}

TEST_F(YaltComponentTest, aRefusedRegistrationFailsWithoutInitializing)
{
    middleware.portal.failNext("registerComponent", ZORV_RETURN_EXISTS);
    auto& probe = YaltProbe<5>::instance();

    EXPECT_FALSE(probe.open(*middleware.accessor(), "file.xml"));

    EXPECT_THAT(probe.told, IsEmpty());
}

TEST_F(YaltComponentTest, aFailedInitializationFails)
{
    auto& probe = YaltProbe<6>::instance();
    probe.initializeResult = -1;

    EXPECT_FALSE(probe.open(*middleware.accessor(), "file.xml"));
}

TEST_F(YaltComponentTest, closeTerminatesAndAnswersWithTheUnregistration)
{
    auto& probe = YaltProbe<7>::instance();
    probe.open(*middleware.accessor(), "");
    journal();
    middleware.portal.failNext("unregisterComponent", ZORV_RETURN_NOT_FOUND);

    EXPECT_EQ(-2, probe.close());

    EXPECT_THAT(journal(), ElementsAre("unregisterComponent 3 YaltProbeComponent -> -2"));
    EXPECT_THAT(probe.told, ElementsAre("initialize ", "terminate"));
}

TEST_F(YaltComponentTest, aSecondCloseOnlyTerminates)
{
    auto& probe = YaltProbe<8>::instance();
    probe.open(*middleware.accessor(), "");
    EXPECT_EQ(0, probe.close());
    journal();

    EXPECT_EQ(-7, probe.close());

    EXPECT_THAT(journal(), IsEmpty());
    EXPECT_THAT(probe.told, ElementsAre("initialize ", "terminate", "terminate"));
}

}  // namespace
}  // namespace Zorv
