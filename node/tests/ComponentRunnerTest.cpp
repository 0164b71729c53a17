#include "lifecycle/ComponentRunner.hpp"

#include <gmock/gmock.h>

#include "LogRecorder.hpp"

namespace ZorvNode {

using ::testing::ElementsAre;

namespace {

std::vector<std::string> calls;
ZorvReturnT secondStarts = 0;
bool throws = false;

const ZorvMgmtSpiInterface_1* const none[] = {nullptr};

template <int number>
ZorvReturnT start(ZorvStateChangeReason reason)
{
    calls.push_back("start " + std::to_string(number) + " " + std::to_string(reason));
    if (throws && number == 2) {
        throw std::runtime_error("no thread");
    }
    return number == 2 ? secondStarts : 0;
}

template <int number>
ZorvReturnT stop(ZorvStateChangeReason reason)
{
    calls.push_back("stop " + std::to_string(number) + " " + std::to_string(reason));
    if (throws && number == 1) {
        throw 7;
    }
    return 0;
}

const void* offerNothing(const ZorvMgmtSpiInterface_1*)
{
    return nullptr;
}

template <int number>
const ZorvMgmtSpiComponent_1T component = {
    number == 1 ? "First" : "Second", none, none, none, &start<number>, &stop<number>, &offerNothing};

}  // namespace

class ComponentRunnerTest : public ::testing::Test {
protected:
    ComponentRunnerTest()
    {
        calls.clear();
        secondStarts = 0;
        throws = false;
        portal.registerComponent(&component<1>);
        portal.registerComponent(&component<2>);
    }

    std::string startFailure()
    {
        try {
            runner.start(ZORV_STATE_CHANGE_ACTIVATE);
        } catch (const StartError& e) {
            return e.what();
        }
        return "started";
    }

    LogRecorder log;
    InterfacePortal portal;
    ComponentRunner runner{portal, log.sink()};
};

TEST_F(ComponentRunnerTest, componentsStartInTheOrderOfRegistrationAndStopInReverse)
{
    runner.start(ZORV_STATE_CHANGE_FAIL_OVER);
    runner.stop(ZORV_STATE_CHANGE_SWITCH_OVER);

    EXPECT_THAT(calls, ElementsAre("start 1 3", "start 2 3", "stop 2 4", "stop 1 4"));
    EXPECT_THAT(log.lines(), ElementsAre("6 component First started", "6 component Second started",
                                         "6 component Second stopped", "6 component First stopped"));
}

TEST_F(ComponentRunnerTest, aFailingStartStopsWhatHadStarted)
{
    secondStarts = -1;

    EXPECT_EQ("component Second: start returned -1", startFailure());

    EXPECT_THAT(calls, ElementsAre("start 1 1", "start 2 1", "stop 1 2"));
}

TEST_F(ComponentRunnerTest, aThrowingStartIsContained)
{
    throws = true;

    EXPECT_EQ("component Second: start threw: no thread", startFailure());

    EXPECT_THAT(log.lines(),
                ElementsAre("6 component First started", "3 component First: stop threw: unknown exception"));
}

TEST_F(ComponentRunnerTest, stopTwiceStopsOnce)
{
    runner.start(ZORV_STATE_CHANGE_ACTIVATE);
    runner.stop(ZORV_STATE_CHANGE_DEACTIVATE);
    calls.clear();

    runner.stop(ZORV_STATE_CHANGE_DEACTIVATE);

    EXPECT_THAT(calls, ElementsAre());
}

TEST_F(ComponentRunnerTest, aRequiredInterfaceThatNobodyProvidesRefusesTheStart)
{
    const ZorvMgmtSpiInterface_1 wanted = {nullptr, "ZorvMwSpiLog", "1"};
    const ZorvMgmtSpiInterface_1* const required[] = {&wanted, nullptr};
    ZorvMgmtSpiComponent_1T demanding = component<1>;
    demanding.componentName = "Demanding";
    demanding.requiredInterfaces = required;
    portal.registerComponent(&demanding);

    EXPECT_EQ("component Demanding requires interface ZorvMwSpiLog, which nobody provides", startFailure());

    EXPECT_THAT(calls, ElementsAre("start 1 1", "start 2 1", "stop 2 2", "stop 1 2"));
}

TEST_F(ComponentRunnerTest, aRequiredInterfaceMayComeFromAComponentThatStartsLater)
{
    const ZorvMgmtSpiInterface_1 wanted = {"Offering", "ZorvMwSpiLog", "1"};
    const ZorvMgmtSpiInterface_1* const one[] = {&wanted, nullptr};
    ZorvMgmtSpiComponent_1T demanding = component<1>;
    demanding.componentName = "Demanding";
    demanding.requiredInterfaces = one;
    ZorvMgmtSpiComponent_1T offering = component<2>;
    offering.componentName = "Offering";
    offering.offeredInterfaces = one;
    offering.getInterface = [](const ZorvMgmtSpiInterface_1* identity) -> const void* { return identity; };
    portal.registerComponent(&demanding);
    portal.registerComponent(&offering);

    EXPECT_EQ("started", startFailure());
}

TEST_F(ComponentRunnerTest, anOptionalInterfaceMayBeMissing)
{
    const ZorvMgmtSpiInterface_1 wanted = {nullptr, "ZorvMwSpiLog", "1"};
    const ZorvMgmtSpiInterface_1* const optional[] = {&wanted, nullptr};
    ZorvMgmtSpiComponent_1T modest = component<1>;
    modest.componentName = "Modest";
    modest.optionalInterfaces = optional;
    portal.registerComponent(&modest);

    EXPECT_EQ("started", startFailure());
}

TEST_F(ComponentRunnerTest, aFailedStartMayBeTriedAgain)
{
    secondStarts = -1;
    startFailure();
    secondStarts = 0;
    calls.clear();

    EXPECT_EQ("started", startFailure());

    EXPECT_THAT(calls, ElementsAre("start 1 1", "start 2 1"));
}

}  // namespace ZorvNode
